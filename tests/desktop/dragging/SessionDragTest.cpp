#include "tests/desktop/dragging/SessionDragTest.h"

#include <string>

namespace lumatile::desktop {

void SessionDragTest::start(const MonitorLayout& layout, const std::optional<std::size_t>& panel) {
    SessionDesk::Setup setup;
    setup.layout = layout;
    setup.panel = panel;
    setup.isForDrags = true;
    desk_ = GetParam().start(setup);
    window_ = desk_->open(GetParam().windowKinds.front(), usualFrame);
    // The program reads where the window is when it hears of the press. A hand that pulls at once
    // would be ahead of a program that has to wait for its turn.
    hand_ = std::make_unique<PointerHand>(*desk_, std::uint8_t{1},
                                          [this] { return desk_->awaitProgram(); });
}

bool SessionDragTest::prepare(const PixelRect& frame) {
    const bool answered = desk().settle(window());
    window().place(frame);
    const bool isQuiet = highlight().waitUntilHidden();
    desk().forget();
    highlight().forget();
    return answered && isQuiet;
}

bool SessionDragTest::grip(SessionWindow& window) {
    const PixelRect before = window.frame();
    return hand().grip(before, [&] { return window.frame() != before; });
}

testing::AssertionResult SessionDragTest::snaps(const PixelRect& wanted) {
    // The window may come to this place by the window manager's own doing first.
    const auto isSo = [&] {
        return window().isAt(wanted) && window().asked(window().frame()) == wanted;
    };
    if (desk().waitUntil(isSo) && !desk().settle()) {
        return testing::AssertionFailure() << "the program does not answer";
    }
    if (isSo()) {
        return testing::AssertionSuccess();
    }
    const auto asked = window().asked(window().frame());
    return testing::AssertionFailure()
           << "the window is at " << window().frame() << " instead of " << wanted
           << ", the window system was asked for " << (asked ? toString(*asked) : "nothing");
}

testing::AssertionResult SessionDragTest::isLeftAlone(SessionWindow& window) {
    if (!desk().settle()) {
        return testing::AssertionFailure() << "the program does not answer";
    }
    for (const std::string& other : window.otherThanPlaces()) {
        return testing::AssertionFailure() << "the window system was asked for " << other;
    }
    const auto asked = window.asked(window.frame());
    return asked ? testing::AssertionFailure() << "the window system was asked for " << *asked
                 : testing::AssertionSuccess();
}

void SessionDragTest::expectDrop(int x, int y, const PixelRect& becomes, const PixelRect& from) {
    SCOPED_TRACE(std::to_string(x) + ", " + std::to_string(y));
    ASSERT_TRUE(prepare(from));
    ASSERT_TRUE(grip());
    hand().moveTo(x, y);
    hand().letGo();
    EXPECT_TRUE(snaps(becomes));
}

}  // namespace lumatile::desktop
