#include "tests/desktop/support/session/SessionDesk.h"

#include "tests/support/TemporaryFolder.h"

namespace lumatile::desktop {

bool SessionDesk::settle(SessionWindow& window) {
    const bool answered = settle();
    window.activate();
    return answered;
}

bool SessionDesk::awaitProgram() {
    // It sleeps also while it waits for an answer of the window system, but not again and again:
    // that answers it between two questions of ours.
    constexpr int enoughLooks = 5;
    const std::string path = "/proc/" + std::to_string(program().pid()) + "/stat";
    const Deadline deadline = Deadline::usual();
    for (int looks = 0; looks < enoughLooks;) {
        if (deadline.isOver()) {
            return false;
        }
        // What was done to the mouse is in the program's hands when the window system has answered.
        roundTrip();
        const std::string stat = readFile(path);
        // The program's name stands in brackets and may hold anything.
        const std::size_t name = stat.rfind(") ");
        const bool sleeps = name != std::string::npos && stat.compare(name, 3, ") S") == 0;
        looks = sleeps ? looks + 1 : 0;
    }
    return true;
}

testing::AssertionResult SessionDesk::reaches(SessionWindow& window, const PixelRect& wanted) {
    if (waitUntil([&] { return window.isAt(wanted); })) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure()
           << "the window is at " << window.frame() << " instead of " << wanted;
}

std::string SessionDesk::endProgram() { return complaintAboutEnd(program()); }

}  // namespace lumatile::desktop
