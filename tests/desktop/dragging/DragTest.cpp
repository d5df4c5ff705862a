#include "tests/desktop/dragging/DragTest.h"

#include <string>

namespace lumatile::desktop {

SnapDesktop::Setup DragTest::setupOn(const MonitorLayout& layout) {
    SnapDesktop::Setup setup;
    setup.windowManager = GetParam();
    setup.layout = layout;
    // Metacity's own tile cannot be undone by any message.
    setup.options.ownEdgeTiling = GetParam() != WindowManager::Kind::metacity;
    return setup;
}

void DragTest::start(const SnapDesktop::Setup& setup) {
    desktop_ = std::make_unique<SnapDesktop>(setup);
    window_ = desktop_->desktop().openWindow({});
    highlight_ = std::make_unique<HighlightWatch>(desktop_->desktop().display());
    hand_ = std::make_unique<DragHand>(desktop_->input());
}

bool DragTest::prepare(const PixelRect& frame) {
    const bool answered = desktop().settle(window());
    window().place(frame);
    forget();
    return answered && highlight().waitUntilHidden();
}

void DragTest::forget() {
    desktop().observer().forget();
    highlight().forget();
}

void DragTest::expectDrop(const DropPlace& place, std::size_t monitor, const PixelRect& from) {
    SCOPED_TRACE(std::string(place.command) + " on monitor " + std::to_string(monitor));
    ASSERT_TRUE(prepare(from));
    ASSERT_TRUE(hand().grip(window()));
    hand().moveTo(place.x, place.y);
    hand().letGo();
    EXPECT_TRUE(snaps(area(place.command, monitor)));
}

testing::AssertionResult DragTest::snaps(const PixelRect& wanted) {
    if (const testing::AssertionResult arrived = reaches(window(), wanted); !arrived) {
        return arrived;
    }
    const auto asked = askedFrame(desktop().observer(), window().id(), window().frame());
    if (asked != wanted) {
        return testing::AssertionFailure()
               << "the window manager was asked for " << (asked ? toString(*asked) : "nothing");
    }
    return testing::AssertionSuccess();
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
