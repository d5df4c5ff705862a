#include "Lumatile/MouseConductor.h"

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"
#include "windows/AXBridge.h"

namespace lumatile {
namespace {

using State = DragSnapController::State;
using Lines = std::vector<std::string>;

class MouseConductorTest : public testing::Test {
protected:
    MouseConductorTest() {
        desk_.plug("main", {0, 0, 1920, 1080});
        window_ = desk_.open(desk_.launch({.pid = 100}), Rect{300, 200, 640, 480});
        controller_ = std::make_shared<DragSnapController>(
            desk_.highlight,
            [this](const Point& point) { return AXBridge(desk_.accessibility).windowAt(point); },
            [](const Point&) { return std::nullopt; },
            [this]() -> const std::vector<SnapCommand>& { return commands_; });
        conductor_ = std::make_shared<MouseConductor>(controller_, desk_.mouse, desk_.log);
    }

    State state() const { return controller_->state(); }

    SimulatedDesktop desk_;
    WindowID window_{};
    std::vector<SnapCommand> commands_;
    std::shared_ptr<DragSnapController> controller_;
    std::shared_ptr<MouseConductor> conductor_;
};

TEST_F(MouseConductorTest, watchesTheLeftButtonAndNothingElse) {
    conductor_->start();
    EXPECT_TRUE(conductor_->isStarted());
    EXPECT_EQ(desk_.mouse.masks(), std::vector<MouseEventSource::Mask>{70});
}

TEST_F(MouseConductorTest, tellsThePressAndTheRelease) {
    conductor_->start();
    desk_.mouse.press({400, 205});
    EXPECT_EQ(state(), State::armed);
    desk_.mouse.moveTo({500, 300});
    EXPECT_EQ(state(), State::armed);
    desk_.mouse.release();
    EXPECT_EQ(state(), State::idle);
    desk_.mouse.press({10, 10});
    EXPECT_EQ(state(), State::idle) << "on the desktop";
    desk_.mouse.release();
}

TEST_F(MouseConductorTest, theRightButtonNeverReachesTheController) {
    conductor_->start();
    desk_.mouse.dragWithRightButton({400, 205}, {2, 500});
    EXPECT_EQ(state(), State::idle);
    EXPECT_EQ(desk_.frame(window_)->x, -98) << "although it moved the window";
}

TEST_F(MouseConductorTest, saysInOneLineThatTheMouseCannotBeWatched) {
    desk_.mouse.setRefusing(true);
    conductor_->start();
    EXPECT_FALSE(conductor_->isStarted());
    EXPECT_EQ(desk_.log.lines(),
              Lines{"MouseConductor: failed to create event tap (Accessibility not granted?)"});
    desk_.mouse.press({400, 205});
    EXPECT_EQ(state(), State::idle);
    desk_.mouse.release();
    desk_.advance(60);
    EXPECT_EQ(desk_.mouse.masks().size(), 1U) << "nothing is tried again by itself";
    desk_.mouse.setRefusing(false);
    conductor_->start();
    EXPECT_TRUE(conductor_->isStarted());
}

TEST_F(MouseConductorTest, aDisabledTapIsEnabledAgain) {
    conductor_->start();
    desk_.mouse.disableTaps();
    desk_.mouse.press({400, 205});
    EXPECT_EQ(state(), State::armed);
    desk_.mouse.release();
    EXPECT_EQ(state(), State::idle);
    EXPECT_TRUE(desk_.log.lines().empty());
}

TEST_F(MouseConductorTest, stopsAsOftenAsIsAskedAndStartsAnew) {
    conductor_->stop();
    conductor_->start();
    EXPECT_EQ(desk_.mouse.taps(), 1U);
    conductor_->stop();
    conductor_->stop();
    EXPECT_EQ(desk_.mouse.taps(), 0U);
    desk_.mouse.press({400, 205});
    EXPECT_EQ(state(), State::idle);
    desk_.mouse.release();
    conductor_->start();
    conductor_->start();
    EXPECT_EQ(desk_.mouse.taps(), 1U) << "a second start takes the place of the first";
    desk_.mouse.press({400, 205});
    EXPECT_EQ(state(), State::armed);
}

TEST_F(MouseConductorTest, aSecondStartThatFailsLeavesTheTapOfTheFirst) {
    conductor_->start();
    desk_.mouse.setRefusing(true);
    conductor_->start();
    EXPECT_EQ(desk_.log.lines(),
              Lines{"MouseConductor: failed to create event tap (Accessibility not granted?)"});
    EXPECT_TRUE(conductor_->isStarted());
    EXPECT_EQ(desk_.mouse.taps(), 1U);
    desk_.mouse.press({400, 205});
    EXPECT_EQ(state(), State::armed);
    desk_.mouse.release();
    EXPECT_EQ(state(), State::idle);
}

TEST_F(MouseConductorTest, anEventOnItsWayWhenTheConductorGoesDoesNothing) {
    conductor_->start();
    desk_.runLoop.post([&] {
        desk_.mouse.press({400, 205});
        conductor_.reset();
    });
    desk_.runLoop.settle();
    EXPECT_EQ(state(), State::idle);
}

}  // namespace
}  // namespace lumatile
