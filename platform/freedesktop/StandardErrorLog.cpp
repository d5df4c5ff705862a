#include "platform/freedesktop/StandardErrorLog.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>

namespace lumatile {

namespace {

void appendHarmless(std::string& line, std::string_view text) {
    constexpr unsigned char firstPrintable = 0x20;
    constexpr unsigned char del = 0x7f;
    for (const char each : text) {
        const auto byte = static_cast<unsigned char>(each);
        line += byte < firstPrintable || byte == del ? '?' : each;
    }
}

}  // namespace

void StandardErrorLog::write(std::string_view type, std::string_view message) {
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
