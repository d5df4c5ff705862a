// Windows dragged by their title bars to the edges and corners of monitors, on every session: what
// was asked of the window system, and what the window became.

#include <gtest/gtest.h>

#include <string>

#include "tests/desktop/dragging/SessionDragTest.h"

namespace lumatile::desktop {
namespace {

class EveryEdge : public SessionDragTest {
protected:
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

TEST_P(EveryEdge, everyKindOfWindowThatATitleBarMoves) {
    start();
    for (const std::string& kind : GetParam().titledKinds) {
        SCOPED_TRACE(kind);
        use(desk().open(kind, usualFrame));
        expectDrop(2, 500, area("left"));
        expectDrop(1917, 30, area("topRight"));
        expectDrop(900, 1077, area("centerThird"));
    }
    EXPECT_EQ(desk().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, EveryEdge, testing::ValuesIn(sessionKinds()), nameOfSession);

}  // namespace
}  // namespace lumatile::desktop
