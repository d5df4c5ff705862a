#include "platform/x11/X11InputState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/simulated/SimulatedLog.h"
#include "platform/x11/X11Connection.h"
#include "tests/desktop/support/InputDriver.h"
#include "tests/desktop/support/MonitorLayout.h"
#include "tests/desktop/support/PrivateServer.h"

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Clock = std::chrono::steady_clock;

constexpr double serverStep = 0.002;  // The server counts milliseconds; both ends are cut off.

/// Far more than an input takes on its way, so that what comes after it is told from before.
constexpr double noticeable = 0.3;

double secondsSince(Clock::time_point moment) {
    return std::chrono::duration<double>(Clock::now() - moment).count();
}

class InputStateTest : public testing::TestWithParam<PrivateServer::Kind> {
protected:
    void start(const std::vector<std::string>& withoutExtensions = {}) {
        server_ = std::make_unique<PrivateServer>(MonitorLayout::landscape(), GetParam(),
                                                  withoutExtensions);
        input_ = std::make_unique<InputDriver>(server_->display());
        connection_ = X11Connection::open(server_->display());
        ASSERT_TRUE(connection_);
        // A key that is held would be pressed again and again.
        const std::uint32_t off = XCB_AUTO_REPEAT_MODE_OFF;
        xcb_change_keyboard_control(input_->connection(), XCB_KB_AUTO_REPEAT_MODE, &off);
        input_->roundTrip();
        state_ = std::make_unique<X11InputState>(*connection_, log_);
    }

    /// Nobody touches anything until the idle time is worth measuring.
    void idle() {
        ASSERT_TRUE(
            XClient::waitUntil([&] { return state_->idleSeconds().value_or(0) > noticeable; }));
    }

    std::unique_ptr<PrivateServer> server_;
    std::unique_ptr<InputDriver> input_;
    std::unique_ptr<X11Connection> connection_;
    SimulatedLog log_;
    std::unique_ptr<X11InputState> state_;
};

TEST_P(InputStateTest, idleTimeRunsWithTheClock) {
    start();
    EXPECT_THAT(log_.lines(), IsEmpty());
    idle();
    const auto beforeInput = Clock::now();
    input_->movePointer(10, 10);
    const auto afterInput = Clock::now();
    idle();
    const double least = secondsSince(afterInput);
    const std::optional<double> told = state_->idleSeconds();
    ASSERT_TRUE(told);
    EXPECT_GE(*told, least - serverStep);
    EXPECT_LE(*told, secondsSince(beforeInput) + serverStep);
}

TEST_P(InputStateTest, everyKindOfInputStartsItAnew) {
    start();
    const std::vector<std::pair<std::string, std::function<void()>>> inputs = {
        {"motion", [&] { input_->movePointer(200, 200); }},
        {"key down", [&] { input_->keyDown(KeyPosition::a); }},
        {"key up", [&] { input_->keyUp(KeyPosition::a); }},
        {"button down", [&] { input_->buttonDown(1); }},
        {"button up", [&] { input_->buttonUp(1); }},
        {"wheel", [&] { input_->buttonDown(4); }},
        {"wheel's end", [&] { input_->buttonUp(4); }},
    };
    for (const auto& [name, act] : inputs) {
        SCOPED_TRACE(name);
        idle();
        const auto beforeInput = Clock::now();
        act();
        const std::optional<double> told = state_->idleSeconds();
        ASSERT_TRUE(told);
        EXPECT_LE(*told, secondsSince(beforeInput) + serverStep);
    }
}

TEST_P(InputStateTest, aButtonThatDragsIsSeenWhileItIsHeld) {
    start();
    EXPECT_FALSE(state_->isDragButtonDown());
    for (const std::uint8_t button : std::array<std::uint8_t, 3>{1, 2, 3}) {
        SCOPED_TRACE(int{button});
        input_->buttonDown(button);
        EXPECT_TRUE(state_->isDragButtonDown());
        input_->movePointer(300 + button, 300);
        EXPECT_TRUE(state_->isDragButtonDown());
        input_->buttonUp(button);
        EXPECT_FALSE(state_->isDragButtonDown());
    }
}

TEST_P(InputStateTest, oneOfSeveralButtonsIsEnough) {
    start();
    input_->buttonDown(1);
    input_->buttonDown(3);
    input_->buttonUp(1);
    EXPECT_TRUE(state_->isDragButtonDown());
    input_->buttonUp(3);
    EXPECT_FALSE(state_->isDragButtonDown());
}

TEST_P(InputStateTest, neitherWheelNorKeysAreADrag) {
    start();
    for (const std::uint8_t wheel : std::array<std::uint8_t, 2>{4, 5}) {
        input_->buttonDown(wheel);
        EXPECT_FALSE(state_->isDragButtonDown());
        input_->buttonUp(wheel);
    }
    input_->keyDown(KeyPosition::leftControl);
    input_->keyDown(KeyPosition::leftShift);
    EXPECT_FALSE(state_->isDragButtonDown());
}

TEST_P(InputStateTest, eachAnswerIsOneQuestion) {
    start();
    const auto before = xcb_no_operation(connection_->get()).sequence;
    state_->idleSeconds();
    state_->isDragButtonDown();
    EXPECT_EQ(xcb_no_operation(connection_->get()).sequence, before + 3);
}

TEST_P(InputStateTest, withoutTheExtensionThereIsNoIdleTimeAndOneLineSaysSo) {
    start({"MIT-SCREEN-SAVER"});
    input_->movePointer(10, 10);
    EXPECT_EQ(state_->idleSeconds(), std::nullopt);
    EXPECT_EQ(state_->idleSeconds(), std::nullopt);
    EXPECT_THAT(log_.lines(),
                ElementsAre("X11InputState: this X server does not tell when there was input last, "
                            "so idle screens stay as they are"));
    // The rest still works, and the connection has not suffered.
    input_->buttonDown(1);
    EXPECT_TRUE(state_->isDragButtonDown());
    EXPECT_FALSE(connection_->isLost());
}

TEST_P(InputStateTest, aLostServerTellsNothing) {
    start();
    input_->buttonDown(1);
    EXPECT_TRUE(state_->isDragButtonDown());
    server_->stop();
    EXPECT_EQ(state_->idleSeconds(), std::nullopt);
    EXPECT_FALSE(state_->isDragButtonDown());
    EXPECT_THAT(log_.lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(X11InputState, InputStateTest,
                         testing::Values(PrivateServer::Kind::dummyDriver,
                                         PrivateServer::Kind::virtualFramebuffer),
                         [](const auto& kind) {
                             return std::string(kind.param == PrivateServer::Kind::dummyDriver
                                                    ? "dummyDriver"
                                                    : "virtualFramebuffer");
                         });

}  // namespace
}  // namespace lumatile::desktop
