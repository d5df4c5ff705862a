#pragma once

#include <csignal>
#include <stdexcept>

#include <sys/resource.h>

namespace lumatile {

/// For its lifetime this process can write no file beyond `bytes`: the write that reaches the limit
/// is cut short and the next one fails, as on a disk that fills up.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : previousHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
        if (::getrlimit(RLIMIT_FSIZE, &previous_) != 0) {
            throw std::runtime_error("getrlimit");
        }
        rlimit limited = previous_;
        limited.rlim_cur = bytes;
        if (::setrlimit(RLIMIT_FSIZE, &limited) != 0) {
            throw std::runtime_error("setrlimit");
        }
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &previous_);
        std::signal(SIGXFSZ, previousHandler_);
    }

private:
    using Handler = void (*)(int);

    Handler previousHandler_;
    rlimit previous_{};
};

}  // namespace lumatile
