#include "platform/simulated/SimulatedInput.h"

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"

namespace lumatile {
namespace {

TEST(SimulatedInput, countsFromTheLastInput) {
    SimulatedDesktop desk;
    EXPECT_EQ(desk.input.idleSeconds(), 0);
    desk.advance(12.5);
    EXPECT_EQ(desk.input.idleSeconds(), 12.5);
    desk.input.touch();
    EXPECT_EQ(desk.input.idleSeconds(), 0);
    desk.clock.jump(3600);
    desk.advance(1);
    EXPECT_EQ(desk.input.idleSeconds(), 1) << "whatever the wall clock says";
}

TEST(SimulatedInput, aHeldButtonGoesOnCounting) {
    SimulatedDesktop desk;
    desk.advance(5);
    desk.input.pressButton();
    EXPECT_TRUE(desk.input.isDragButtonDown());
    EXPECT_EQ(desk.input.idleSeconds(), 0);
    desk.advance(5);
    EXPECT_EQ(desk.input.idleSeconds(), 5);
    desk.input.releaseButton();
    EXPECT_FALSE(desk.input.isDragButtonDown());
    EXPECT_EQ(desk.input.idleSeconds(), 0);
}

TEST(SimulatedInput, keysClicksAndDragsAreInput) {
    SimulatedDesktop desk;
    desk.plug("main", {0, 0, 1920, 1080});
    const WindowID window = desk.open(desk.launch({.pid = 100}), Rect{10, 10, 300, 200});
    desk.advance(9);
    desk.press({123, 6144});
    EXPECT_EQ(desk.input.idleSeconds(), 0);
    desk.advance(9);
    desk.click({50, 50});
    EXPECT_EQ(desk.input.idleSeconds(), 0);
    desk.advance(9);
    desk.dragTo(window, {100, 100, 300, 200});
    EXPECT_EQ(desk.input.idleSeconds(), 0);
}

TEST(SimulatedInput, mayNotTell) {
    SimulatedDesktop desk;
    desk.input.setTelling(false);
    EXPECT_EQ(desk.input.idleSeconds(), std::nullopt);
    desk.input.setTelling(true);
    EXPECT_EQ(desk.input.idleSeconds(), 0);
}

}  // namespace
}  // namespace lumatile
