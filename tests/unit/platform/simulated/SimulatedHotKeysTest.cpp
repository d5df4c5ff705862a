#include "platform/simulated/SimulatedHotKeys.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace lumatile {
namespace {

constexpr KeyCombination controlOptionLeft{123, 6144};
constexpr KeyCombination controlOptionRight{124, 6144};

struct Keyboard {
    SimulatedClock clock;
    SimulatedRunLoop runLoop{clock};
    SimulatedHotKeys keys{runLoop};
    std::vector<std::optional<HotKeyID>> heard;

    Keyboard() {
        keys.installHandler([this](std::optional<HotKeyID> id) {
            heard.push_back(id);
            return 0;
        });
    }

    std::optional<HotKeyReference> add(const KeyCombination& combination, std::uint32_t id) {
        return keys.registerHotKey(combination.keyCode, combination.modifiers, {7, id});
    }
};

using Heard = std::vector<std::optional<HotKeyID>>;

TEST(SimulatedHotKeys, aPressOfARegisteredCombinationReachesTheHandlerWithItsId) {
    Keyboard desk;
    ASSERT_TRUE(desk.add(controlOptionLeft, 1));
    ASSERT_TRUE(desk.add(controlOptionRight, 2));
    EXPECT_EQ(desk.keys.press(controlOptionRight), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.keys.press({124, 256}), KeyReceiver::frontWindow);
    EXPECT_EQ(desk.heard, (Heard{HotKeyID{7, 2}}));
    EXPECT_EQ(desk.keys.lastStatus(), 0);
    EXPECT_EQ(desk.keys.registered(),
              (std::vector<KeyCombination>{controlOptionLeft, controlOptionRight}));
}

TEST(SimulatedHotKeys, aHeldCombinationIsHeardOfOnce) {
    Keyboard desk;
    ASSERT_TRUE(desk.add(controlOptionLeft, 1));
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(desk.keys.keyDown(controlOptionLeft), KeyReceiver::thisProgram);
    }
    EXPECT_EQ(desk.heard.size(), 1U);
    desk.keys.keyUp(controlOptionLeft);
    desk.keys.keyDown(controlOptionLeft);
    EXPECT_EQ(desk.heard.size(), 2U);
}

TEST(SimulatedHotKeys, aCombinationOfAnotherProgramIsRefusedUntilItIsGivenBack) {
    Keyboard desk;
    desk.keys.take(controlOptionLeft);
    EXPECT_FALSE(desk.add(controlOptionLeft, 1));
    EXPECT_EQ(desk.keys.refusals(), 1U);
    EXPECT_EQ(desk.keys.press(controlOptionLeft), KeyReceiver::otherProgram);
    EXPECT_TRUE(desk.heard.empty());
    desk.keys.release(controlOptionLeft);
    EXPECT_TRUE(desk.add(controlOptionLeft, 2));
    EXPECT_EQ(desk.keys.press(controlOptionLeft), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.heard, (Heard{HotKeyID{7, 2}}));
}

TEST(SimulatedHotKeys, anUnregisteredCombinationGoesToTheFrontWindow) {
    Keyboard desk;
    const auto reference = desk.add(controlOptionLeft, 1);
    ASSERT_TRUE(reference);
    desk.keys.unregisterHotKey(*reference);
    EXPECT_EQ(desk.keys.press(controlOptionLeft), KeyReceiver::frontWindow);
    EXPECT_TRUE(desk.heard.empty());
    EXPECT_EQ(desk.keys.strayUnregistrations(), 0U);
    desk.keys.unregisterHotKey(*reference);
    EXPECT_EQ(desk.keys.strayUnregistrations(), 1U);
}

TEST(SimulatedHotKeys, anEventWhoseIdCannotBeReadArrivesWithoutOne) {
    Keyboard desk;
    ASSERT_TRUE(desk.add(controlOptionLeft, 1));
    desk.keys.setEventsUnreadable(true);
    desk.keys.press(controlOptionLeft);
    desk.keys.setEventsUnreadable(false);
    desk.keys.press(controlOptionLeft);
    EXPECT_EQ(desk.heard, (Heard{std::nullopt, HotKeyID{7, 1}}));
}

TEST(SimulatedHotKeys, aPressDuringACallbackArrivesAfterIt) {
    Keyboard desk;
    ASSERT_TRUE(desk.add(controlOptionLeft, 1));
    std::size_t heardInside = 99;
    desk.runLoop.post([&] {
        desk.keys.press(controlOptionLeft);
        heardInside = desk.heard.size();
    });
    desk.runLoop.settle();
    EXPECT_EQ(heardInside, 0U);
    EXPECT_EQ(desk.heard.size(), 1U);
}

TEST(SimulatedHotKeys, withoutAHandlerAPressIsLost) {
    SimulatedClock clock;
    SimulatedRunLoop runLoop(clock);
    SimulatedHotKeys keys(runLoop);
    ASSERT_TRUE(keys.registerHotKey(1, 0, {}));
    EXPECT_EQ(keys.press({1, 0}), KeyReceiver::thisProgram);
    EXPECT_FALSE(keys.lastStatus());
}

}  // namespace
}  // namespace lumatile
