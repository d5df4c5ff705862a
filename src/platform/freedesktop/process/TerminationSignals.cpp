#include "platform/freedesktop/process/TerminationSignals.h"

#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>

namespace lumatile {

namespace {

sigset_t terminationSignals() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGHUP);
    return set;
}

}  // namespace

TerminationSignals::TerminationSignals() {
    const sigset_t set = terminationSignals();
    descriptor_ = signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor_ >= 0) {
        pthread_sigmask(SIG_BLOCK, &set, nullptr);
    }
}

TerminationSignals::~TerminationSignals() {
    if (descriptor_ >= 0) {
        consume();  // Asked twice; the process is ending already.
        close(descriptor_);
        const sigset_t set = terminationSignals();
        pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    }
}

bool TerminationSignals::consume() {
    signalfd_siginfo info{};
    bool any = false;
    while (read(descriptor_, &info, sizeof info) == static_cast<ssize_t>(sizeof info)) {
        any = true;
    }
    return any;
}

}  // namespace lumatile
