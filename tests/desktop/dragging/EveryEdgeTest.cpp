// Windows dragged by their title bars to the edges and corners of monitors, on every session: what
// was asked of the window system, and what the window became.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/desktop/dragging/DropPlace.h"
#include "tests/desktop/support/KeyPosition.h"
#include "tests/desktop/support/PointerHand.h"
#include "tests/desktop/support/session/SessionKinds.h"

namespace lumatile::desktop {
namespace {

constexpr PixelRect usualFrame{500, 300, 700, 450};

class EveryEdge : public OnEverySession {
protected:
    void start(const MonitorLayout& layout,
               const std::optional<std::size_t>& panel = std::nullopt) {
        SessionDesk::Setup setup;
        setup.layout = layout;
        setup.panel = panel;
        setup.isForDrags = true;
        desk_ = GetParam().start(setup);
        window_ = desk_->open(GetParam().windowKinds.front(), usualFrame);
        // The program reads where the window is when it hears of the press. A hand that pulls at
        // once would be ahead of a program that has to wait for its turn.
        hand_ = std::make_unique<PointerHand>(*desk_, std::uint8_t{1},
                                              [this] { return desk_->awaitProgram(); });
    }

    SessionDesk& desk() { return *desk_; }
    SessionWindow& window() { return *window_; }
    PointerHand& hand() { return *hand_; }

    PixelRect area(std::string_view command, std::size_t monitor = 0) {
        return desk().expected().area(defaultShortcut(command), monitor);
    }

    /// Lays the window there, active, and forgets what was asked before.
    /// @return false when the program does not answer
    bool prepare(const PixelRect& frame = usualFrame) {
        const bool answered = desk().settle(window());
        window().place(frame);
        desk().forget();
        return answered;
    }

    bool grip() {
        const PixelRect before = window().frame();
        return hand().grip(before, [&] { return window().frame() != before; });
    }

    /// Whether the window gets to `wanted` and is there still when the program is done, and the
    /// window system was asked for just that.
    testing::AssertionResult snaps(const PixelRect& wanted) {
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

    /// Whether the program has left the window alone, everything that happened so far dealt with.
    testing::AssertionResult isLeftAlone() {
        if (!desk().settle()) {
            return testing::AssertionFailure() << "the program does not answer";
        }
        const auto asked = window().asked(window().frame());
        return asked ? testing::AssertionFailure() << "the window system was asked for " << *asked
                     : testing::AssertionSuccess();
    }

    void expectDrop(int x, int y, const PixelRect& becomes, const PixelRect& from = usualFrame) {
        SCOPED_TRACE(std::to_string(x) + ", " + std::to_string(y));
        ASSERT_TRUE(prepare(from));
        ASSERT_TRUE(grip());
        hand().moveTo(x, y);
        hand().letGo();
        EXPECT_TRUE(snaps(becomes));
    }

    /// Drops at every place of both monitors.
    /// @param from on one of them
    void expectAllDrops(const MonitorLayout& layout, const PixelRect& from) {
        start(layout);
        for (std::size_t monitor = 0; monitor < layout.monitors.size(); ++monitor) {
            SCOPED_TRACE("monitor " + std::to_string(monitor));
            for (const DropPlace& place : dropPlaces(layout.monitors[monitor])) {
                SCOPED_TRACE(place.command);
                expectDrop(place.x, place.y, area(place.command, monitor), from);
            }
        }
        EXPECT_EQ(desk().endProgram(), "");
    }

private:
    std::unique_ptr<SessionDesk> desk_;
    std::unique_ptr<SessionWindow> window_;
    std::unique_ptr<PointerHand> hand_;
};

TEST_P(EveryEdge, ofALandscapeScreen) {
    start(MonitorLayout::landscape());
    struct {
        int x = 0;
        int y = 0;
        PixelRect becomes;
    } const cases[] = {
        {2, 500, {0, 0, 960, 1080}},        {2, 30, {0, 0, 960, 540}},
        {2, 1060, {0, 540, 960, 540}},      {900, 2, {0, 0, 1920, 1080}},
        {300, 1077, {0, 0, 640, 1080}},     {900, 1077, {640, 0, 640, 1080}},
        {1500, 1077, {1280, 0, 640, 1080}}, {1917, 500, {960, 0, 960, 1080}},
        {1917, 30, {960, 0, 960, 540}},     {1917, 1060, {960, 540, 960, 540}},
    };
    for (const auto& [x, y, becomes] : cases) {
        expectDrop(x, y, becomes);
    }
    EXPECT_EQ(desk().endProgram(), "");
}

TEST_P(EveryEdge, ofAPortraitScreen) {
    start(MonitorLayout::portrait());
    struct {
        int x = 0;
        int y = 0;
        PixelRect becomes;
    } const cases[] = {
        {2, 900, {0, 0, 540, 1920}},        {2, 40, {0, 0, 540, 960}},
        {2, 1900, {0, 960, 540, 960}},      {500, 2, {0, 0, 1080, 1920}},
        {120, 1917, {0, 960, 1080, 960}},   {900, 1917, {0, 960, 1080, 960}},
        {1077, 900, {540, 0, 540, 1920}},   {1077, 40, {540, 0, 540, 960}},
        {1077, 1900, {540, 960, 540, 960}},
    };
    for (const auto& [x, y, becomes] : cases) {
        expectDrop(x, y, becomes, {200, 600, 600, 450});
    }
    EXPECT_EQ(desk().endProgram(), "");
}

TEST_P(EveryEdge, aPanelTakesItsRoomAway) {
    start(MonitorLayout::landscape(), 0);
    const PixelRect visible = desk().expected().visible(0);
    ASSERT_EQ(visible.height, 1080 - SessionDesk::panelHeight);
    for (const DropPlace& place : dropPlaces(visible)) {
        SCOPED_TRACE(place.command);
        expectDrop(place.x, place.y, area(place.command));
    }
    // On the panel, where people end up who hurry.
    expectDrop(960, 1079, area("centerThird"));
    expectDrop(1, 1070, area("bottomLeft"));
    EXPECT_EQ(desk().endProgram(), "");
}

TEST_P(EveryEdge, ofTwoMonitors) {
    expectAllDrops(MonitorLayout::landscapeAndPortrait(), {700, 500, 700, 400});
}

TEST_P(EveryEdge, ofTwoMonitorsWhereThePrimaryIsNotFirst) {
    expectAllDrops(MonitorLayout::portraitAndPrimaryLandscape(), {1300, 600, 700, 400});
}

TEST_P(EveryEdge, aReleaseInTheMiddleDoesNothing) {
    start(MonitorLayout::landscape());
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(grip());
    hand().moveTo(900, 600);
    hand().letGo();
    EXPECT_TRUE(isLeftAlone());
    EXPECT_NE(window().frame(), usualFrame) << "it was dragged";
    EXPECT_EQ(window().frame().width, usualFrame.width);
    EXPECT_EQ(window().frame().height, usualFrame.height);
    EXPECT_EQ(desk().endProgram(), "");
}

TEST_P(EveryEdge, aWindowThatEscapeHasTakenBackIsNotDraggedAnyMore) {
    start(MonitorLayout::landscape());
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(grip());
    hand().moveTo(900, 600);
    desk().pressKey(KeyPosition::escape);
    ASSERT_TRUE(desk().reaches(window(), usualFrame));
    hand().moveTo(2, 500);
    hand().letGo();
    EXPECT_TRUE(isLeftAlone());
    expectDrop(1917, 500, area("right"));
    EXPECT_EQ(desk().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, EveryEdge, testing::ValuesIn(sessionKinds()), nameOfSession);

}  // namespace
}  // namespace lumatile::desktop
