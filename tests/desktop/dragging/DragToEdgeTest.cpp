// Windows dragged by their title bars to the edges and corners of one monitor.

#include <gtest/gtest.h>
#include <signal.h>

#include <string>

#include "tests/desktop/dragging/DragTest.h"

namespace lumatile::desktop {
namespace {

class DragToEdge : public DragTest {
protected:
    /// Stops the program once it has nothing left to do.
    /// @return false when it does not come to rest
    bool holdProgram() { return awaitProgram() && kill(desktop().program().pid(), SIGSTOP) == 0; }

    bool releaseProgram() { return kill(desktop().program().pid(), SIGCONT) == 0; }
};

TEST_P(DragToEdge, everyEdgeAndCornerOfALandscapeScreen) {
    start();
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
        SCOPED_TRACE(std::to_string(x) + ", " + std::to_string(y));
        ASSERT_TRUE(prepare());
        ASSERT_TRUE(hand().grip(window()));
        hand().moveTo(x, y);
        hand().letGo();
        EXPECT_TRUE(snaps(becomes));
    }
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(DragToEdge, aProgramThatWasBusyCarriesTheDropOutAfterwards) {
    start();
    struct Drop {
        int x = 0;
        int y = 0;
        PixelRect becomes;
    };
    for (const Drop& drop : {Drop{2, 500, {0, 0, 960, 1080}}, Drop{900, 2, {0, 0, 1920, 1080}}}) {
        SCOPED_TRACE(std::to_string(drop.x) + ", " + std::to_string(drop.y));
        ASSERT_TRUE(prepare());
        ASSERT_TRUE(hand().grip(window()));
        hand().moveTo(500, 500);
        // It sees the rest of the drag all at once.
        ASSERT_TRUE(holdProgram());
        hand().moveTo(drop.x, drop.y);
        hand().letGo();
        if (GetParam() == WindowManager::Kind::kwin) {
            // Its own tile is there before the program knows of the release.
            EXPECT_TRUE(XClient::waitUntil([&] { return window().frame() == drop.becomes; }));
        }
        ASSERT_TRUE(releaseProgram());
        EXPECT_TRUE(snaps(drop.becomes));
    }
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(DragToEdge, everyEdgeAndCornerOfAPortraitScreen) {
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
        SCOPED_TRACE(std::to_string(x) + ", " + std::to_string(y));
        ASSERT_TRUE(prepare({200, 600, 600, 450}));
        ASSERT_TRUE(hand().grip(window()));
        hand().moveTo(x, y);
        hand().letGo();
        EXPECT_TRUE(snaps(becomes));
    }
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(DragToEdge, aPanelTakesItsRoomAway) {
    SnapDesktop::Setup setup = setupOn(MonitorLayout::landscape());
    setup.panel = 0;
    start(setup);
    const PixelRect visible = desktop().expected().visible(0);
    ASSERT_EQ(visible.height, 1080 - SnapDesktop::panelHeight);
    for (const DropPlace& place : dropPlaces(visible)) {
        expectDrop(place, 0);
    }
    // On the panel, where people end up who hurry.
    expectDrop({"centerThird", 960, 1079}, 0);
    expectDrop({"bottomLeft", 1, 1070}, 0);
    EXPECT_EQ(desktop().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, DragToEdge, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
