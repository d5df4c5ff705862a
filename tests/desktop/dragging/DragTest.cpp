#include "tests/desktop/dragging/DragTest.h"

#include <string>
#include <vector>

#include "tests/desktop/support/OuterFrame.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile::desktop {

SnapDesktop::Setup DragTest::setupOn(const MonitorLayout& layout) {
    SnapDesktop::Setup setup;
    setup.windowManager = GetParam();
    setup.layout = layout;
    // Metacity's own tile cannot be undone by any message.
    setup.options.edgeTiling = GetParam() != WindowManager::Kind::metacity;
    return setup;
}

void DragTest::start(const SnapDesktop::Setup& setup) {
    hand_.reset();
    highlight_.reset();
    window_.reset();
    desktop_.reset();
    desktop_ = std::make_unique<SnapDesktop>(setup);
    window_ = desktop_->desktop().openWindow({});
    highlight_ = std::make_unique<HighlightWatch>(desktop_->desktop().display());
    // The program reads where the window is when it hears of the press. A hand that pulls at once
    // would be ahead of a program that has to wait for its turn.
    hand_ = std::make_unique<DragHand>(desktop_->input(), std::uint8_t{1},
                                       [this] { return awaitProgram(); });
}

bool DragTest::prepare(const PixelRect& frame) {
    const bool answered = desktop().settle(window());
    if (GetParam() == WindowManager::Kind::kwin) {
        // A window that it has tiled by itself goes nowhere before it was maximized and restored.
        const std::vector<std::string> maximized{"_NET_WM_STATE_MAXIMIZED_VERT",
                                                 "_NET_WM_STATE_MAXIMIZED_HORZ"};
        window().setState(maximized, true);
        window().setState(maximized, false);
    }
    window().place(frame);
    const bool isQuiet = highlight().waitUntilHidden();
    forget();
    return answered && isQuiet;
}

void DragTest::forget() {
    desktop().observer().forget();
    highlight().forget();
}

bool DragTest::awaitProgram() {
    // It sleeps also while it waits for an answer of the server, but not again and again: the
    // server answers it between two questions of ours.
    constexpr int enoughLooks = 5;
    const std::string path = "/proc/" + std::to_string(desktop().program().pid()) + "/stat";
    const Deadline deadline = Deadline::usual();
    for (int looks = 0; looks < enoughLooks;) {
        if (deadline.isOver()) {
            return false;
        }
        // What was done to the mouse is in the program's hands when the server has answered.
        desktop().observer().roundTrip();
        const std::string stat = readFile(path);
        // The program's name stands in brackets and may hold anything.
        const std::size_t name = stat.rfind(") ");
        const bool sleeps = name != std::string::npos && stat.compare(name, 3, ") S") == 0;
        looks = sleeps ? looks + 1 : 0;
    }
    return true;
}

void DragTest::expectDrop(const DropPlace& place, std::size_t monitor, const PixelRect& from) {
    SCOPED_TRACE(std::string(place.command) + " on monitor " + std::to_string(monitor));
    ASSERT_TRUE(prepare(from));
    ASSERT_TRUE(hand().grip(window()));
    hand().moveTo(place.x, place.y);
    hand().letGo();
    EXPECT_TRUE(snaps(area(place.command, monitor)));
}

testing::AssertionResult DragTest::snaps(XClient& client, xcb_window_t window,
                                         const PixelRect& wanted) {
    const auto frame = [&] { return outerFrame(client, window).value_or(PixelRect{}); };
    const auto asked = [&] { return askedFrame(desktop().observer(), window, frame()); };
    // The window may come to this place by the window manager's own doing first.
    const bool arrived = XClient::waitUntil([&] { return frame() == wanted && asked() == wanted; });
    if (arrived && !desktop().settle()) {
        return testing::AssertionFailure() << "the program does not answer";
    }
    if (frame() == wanted && asked() == wanted) {
        return testing::AssertionSuccess();
    }
    const auto last = asked();
    return testing::AssertionFailure()
           << "the window is at " << frame() << " instead of " << wanted
           << ", the window manager was asked for " << (last ? toString(*last) : "nothing");
}

testing::AssertionResult DragTest::isLeftAlone(xcb_window_t window) {
    if (!desktop().settle()) {
        return testing::AssertionFailure() << "the program does not answer";
    }
    for (const RootMessage& message : desktop().observer().messages(window)) {
        if (message.type == "_NET_MOVERESIZE_WINDOW" || message.type == "_NET_WM_STATE") {
            return testing::AssertionFailure() << "the window manager was asked for " << message;
        }
    }
    return testing::AssertionSuccess();
}

}  // namespace lumatile::desktop
