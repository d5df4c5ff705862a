#include "Lumatile/launch/SessionReturn.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

#include "Lumatile/MainTexts.h"
#include "ports/SystemLog.h"

namespace lumatile {

namespace {

// From one run of the program to the next.
constexpr const char* lostDesktop = "LUMATILE_LOST_DESKTOP";

// A desktop that starts its window system anew has done so within seconds.
constexpr int longestWait = 60'000;   // Milliseconds.
constexpr int betweenAttempts = 100;  // Milliseconds.

std::unique_ptr<PresentSession> find(std::span<const SessionKind> kinds,
                                     const std::string& desktop) {
    for (const SessionKind& kind : kinds) {
        auto present = kind.find();
        if (present && present->facts().desktop == desktop) {
            return present;
        }
    }
    return nullptr;
}

}  // namespace

std::unique_ptr<PresentSession> SessionReturn::await(std::span<const SessionKind> kinds,
                                                     const TerminationSignals& termination,
                                                     SystemLog& log) {
    const char* const lost = std::getenv(lostDesktop);
    if (lost == nullptr) {
        return firstPresent(kinds, log);
    }
    const std::string desktop = lost;
    // Programs that this one starts have lost nothing.
    unsetenv(lostDesktop);
    for (int waited = 0; waited < longestWait; waited += betweenAttempts) {
        if (auto present = find(kinds, desktop)) {
            return present;
        }
        pollfd ended{termination.fileDescriptor(), POLLIN, 0};
        if (poll(&ended, 1, betweenAttempts) > 0) {
            return nullptr;
        }
    }
    log.write(MainTexts::program, MainTexts::notBack);
    return nullptr;
}

void SessionReturn::beginAgain(const std::string& desktop) {
    setenv(lostDesktop, desktop.c_str(), 1);
    // The toolkit and the program take no words.
    std::array<char, 9> name{"lumatile"};
    std::array<char*, 2> words{name.data(), nullptr};
    execv("/proc/self/exe", words.data());
}

}  // namespace lumatile
