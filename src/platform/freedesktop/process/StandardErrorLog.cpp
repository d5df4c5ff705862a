#include "platform/freedesktop/process/StandardErrorLog.h"

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <ctime>

namespace lumatile {

namespace {

constexpr char harmless = '?';

void appendHarmless(std::string& line, std::string_view text) {
    constexpr unsigned char firstPrintable = 0x20;
    constexpr unsigned char del = 0x7f;
    // The second set of control characters, 0x80 to 0x9f, takes two bytes in UTF-8.
    constexpr unsigned char leadOfSecondSet = 0xc2;
    constexpr unsigned char firstOfSecondSet = 0x80;
    constexpr unsigned char lastOfSecondSet = 0x9f;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0U;
        if (byte == leadOfSecondSet && next >= firstOfSecondSet && next <= lastOfSecondSet) {
            line += harmless;
            ++i;
        } else {
            line += byte < firstPrintable || byte == del ? harmless : text[i];
        }
    }
}

/// Keeps the signal of a reader that has gone (a journal that restarts) from ending the process.
class BrokenPipeIsNoEnd {
public:
    BrokenPipeIsNoEnd() {
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        sigemptyset(&signal_);
        sigaddset(&signal_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &signal_, &former_);
    }
    BrokenPipeIsNoEnd(const BrokenPipeIsNoEnd&) = delete;
    BrokenPipeIsNoEnd& operator=(const BrokenPipeIsNoEnd&) = delete;
    ~BrokenPipeIsNoEnd() {
        if (!wasPending_) {
            const timespec atOnce{};
            sigtimedwait(&signal_, nullptr, &atOnce);
        }
        pthread_sigmask(SIG_SETMASK, &former_, nullptr);
    }

private:
    bool wasPending_ = false;
    sigset_t signal_{};
    sigset_t former_{};
};

}  // namespace

StandardErrorLog::StandardErrorLog() {
    if (fcntl(STDERR_FILENO, F_GETFD) >= 0 || errno != EBADF) {
        return;
    }
    const int nowhere = open("/dev/null", O_WRONLY);
    if (nowhere >= 0 && nowhere != STDERR_FILENO) {
        dup2(nowhere, STDERR_FILENO);
        close(nowhere);
    }
}

void StandardErrorLog::write(std::string_view type, std::string_view message) {
    const BrokenPipeIsNoEnd brokenPipeIsNoEnd;
    const std::string text = line(type, message);
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = ::write(STDERR_FILENO, text.data() + written, text.size() - written);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return;
        }
        written += static_cast<std::size_t>(count);
    }
}

std::string StandardErrorLog::line(std::string_view type, std::string_view message) {
    std::string result;
    appendHarmless(result, type);
    result += ": ";
    appendHarmless(result, message);
    result += '\n';
    return result;
}

}  // namespace lumatile
