#include "tests/desktop/support/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <set>
#include <utility>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {
namespace {

std::vector<char*> pointers(std::vector<std::string>& strings) {
    std::vector<char*> result;
    result.reserve(strings.size() + 1);
    for (std::string& string : strings) {
        result.push_back(string.data());
    }
    result.push_back(nullptr);
    return result;
}

// The programs that were started here and whose end nobody has seen yet.
std::set<pid_t>& startedHere() {
    static std::set<pid_t> pids;
    return pids;
}

}  // namespace

bool ChildProcess::owns(pid_t pid) { return startedHere().contains(pid); }

ChildProcess::ChildProcess(const Start& start) {
    // Everything that allocates happens before the fork.
    std::vector<std::string> command = start.command;
    std::vector<std::string> variables = assignments(start.environment);
    const std::vector<char*> arguments = pointers(command);
    const std::vector<char*> environment = pointers(variables);
    const std::string output = start.output.empty() ? "/dev/null" : start.output.string();
    const pid_t parent = getpid();

    // What a program of ours leaves behind becomes our child, so that it can be ended and reaped.
    prctl(PR_SET_CHILD_SUBREAPER, 1);

    pid_ = fork();
    if (pid_ < 0) {
        throw DesktopError("cannot start " + start.command.front());
    }
    if (pid_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (getppid() != parent) {
            _exit(127);  // The parent ended before the request above took effect.
        }
        const int null = open("/dev/null", O_RDONLY);
        const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        dup2(null, STDIN_FILENO);
        dup2(file, STDOUT_FILENO);
        dup2(file, STDERR_FILENO);
        const int kept = start.keptDescriptor.value_or(-1);
        for (int descriptor = STDERR_FILENO + 1; descriptor < 1024; ++descriptor) {
            if (descriptor != kept) {
                close(descriptor);
            }
        }
        if (kept >= 0) {
            fcntl(kept, F_SETFD, 0);
        }
        execvpe(arguments.front(), arguments.data(), environment.data());
        _exit(127);
    }
    startedHere().insert(pid_);
    descriptor_ = static_cast<int>(syscall(SYS_pidfd_open, pid_, 0));
    if (descriptor_ < 0) {
        stop();
        throw DesktopError("this kernel has no process descriptors");
    }
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : pid_(std::exchange(other.pid_, -1)),
      descriptor_(std::exchange(other.descriptor_, -1)),
      exit_(std::exchange(other.exit_, std::nullopt)) {}

ChildProcess& ChildProcess::operator=(ChildProcess&& other) noexcept {
    std::swap(pid_, other.pid_);
    std::swap(descriptor_, other.descriptor_);
    std::swap(exit_, other.exit_);
    return *this;
}

ChildProcess::~ChildProcess() {
    stop();
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

void ChildProcess::reap(bool block) {
    if (pid_ <= 0 || exit_) {
        return;
    }
    int status = 0;
    pid_t ended = -1;
    do {
        ended = waitpid(pid_, &status, block ? 0 : WNOHANG);
    } while (ended < 0 && errno == EINTR);
    if (ended != pid_) {
        return;
    }
    startedHere().erase(pid_);
    if (WIFEXITED(status)) {
        exit_ = Exit{WEXITSTATUS(status), 0};
    } else {
        exit_ = Exit{std::nullopt, WTERMSIG(status)};
    }
}

bool ChildProcess::isRunning() {
    reap(false);
    return pid_ > 0 && !exit_;
}

void ChildProcess::signal(int number) const {
    if (pid_ > 0 && !exit_) {
        kill(pid_, number);
    }
}

std::optional<ChildProcess::Exit> ChildProcess::wait(Deadline deadline) {
    while (isRunning() && !deadline.isOver()) {
        pollfd ended{descriptor_, POLLIN, 0};
        poll(&ended, 1, deadline.milliseconds(1000));
    }
    return exit_;
}

std::optional<ChildProcess::Exit> ChildProcess::stop(std::chrono::milliseconds patience) {
    if (isRunning()) {
        signal(SIGTERM);
        signal(SIGCONT);  // A stopped program would never see the request.
        if (descriptor_ >= 0) {
            wait(Deadline::in(patience));
        }
    }
    if (isRunning()) {
        signal(SIGKILL);
        reap(true);
    }
    return exit_;
}

}  // namespace lumatile::desktop
