#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/desktop/hotkeys/HotKeyTest.h"

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(HotKeyTest, onlyTheExactCombinationRuns) {
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 1));
    ASSERT_TRUE(desk_.want(leftArrow, controlOption | ClassicModifier::command, 2));
    ASSERT_TRUE(desk_.want(leftArrow, controlOption | ClassicModifier::shift, 3));
    input_.press({}, KeyPosition::left);
    input_.press(Keys{KeyPosition::leftControl}, KeyPosition::left);
    input_.press(Keys{KeyPosition::leftAlt}, KeyPosition::left);
    input_.press(controlAltKeys, KeyPosition::right);
    EXPECT_THAT(desk_.presses(), IsEmpty());
    input_.press(Keys{KeyPosition::leftControl, KeyPosition::leftAlt, KeyPosition::leftShift},
                 KeyPosition::left);
    input_.press(Keys{KeyPosition::leftSuper, KeyPosition::leftControl, KeyPosition::leftAlt},
                 KeyPosition::left);
    input_.press(controlAltKeys, KeyPosition::left);
    EXPECT_THAT(desk_.presses(), ElementsAre(3, 2, 1));
}

TEST_F(HotKeyTest, aHeldCombinationRunsOnce) {
    run({"xset", "r", "rate", "100", "50"});
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 1));
    for (int round = 1; round <= 2; ++round) {
        for (const std::uint8_t key : controlAltKeys) {
            input_.keyDown(key);
        }
        const std::size_t before = desk_.pressesSent();
        input_.keyDown(KeyPosition::left);
        // The server does repeat the key.
        ASSERT_TRUE(desk_.runUntil([&] { return desk_.pressesSent() >= before + 6; }));
        input_.keyUp(KeyPosition::left);
        for (const std::uint8_t key : controlAltKeys) {
            input_.keyUp(key);
        }
        EXPECT_EQ(desk_.presses().size(), static_cast<std::size_t>(round));
    }
}

TEST_F(HotKeyTest, aKeyHeldAcrossANewRegistrationDoesNotRunAgain) {
    run({"xset", "r", "rate", "100", "50"});
    const auto first = desk_.want(leftArrow, controlOption, 1);
    ASSERT_TRUE(first);
    for (const std::uint8_t key : controlAltKeys) {
        input_.keyDown(key);
    }
    input_.keyDown(KeyPosition::left);
    ASSERT_TRUE(desk_.runUntil([&] { return desk_.pressesSent() >= 2; }));
    desk_.hotKeys().unregisterHotKey(*first);
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 2));
    ASSERT_TRUE(desk_.runUntil([&] { return desk_.pressesSent() >= 5; }));
    EXPECT_THAT(desk_.presses(), ElementsAre(1));
    input_.keyUp(KeyPosition::left);
    input_.keyDown(KeyPosition::left);
    EXPECT_THAT(desk_.presses(), ElementsAre(1, 2));
}

TEST_F(HotKeyTest, aSecondKeyWhileTheFirstIsHeldRunsItsOwn) {
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    ASSERT_TRUE(desk_.want(letterI, controlOption, 2));
    for (const std::uint8_t key : controlAltKeys) {
        input_.keyDown(key);
    }
    input_.keyDown(KeyPosition::u);
    input_.keyDown(KeyPosition::i);
    input_.keyUp(KeyPosition::i);
    input_.keyDown(KeyPosition::j);  // Not registered, but seen while the first key is held.
    input_.keyUp(KeyPosition::j);
    input_.keyDown(KeyPosition::i);
    input_.keyUp(KeyPosition::u);
    input_.keyUp(KeyPosition::i);
    input_.keyDown(KeyPosition::i);
    EXPECT_THAT(desk_.presses(), ElementsAre(1, 2, 2, 2));
}

TEST_F(HotKeyTest, aPressDuringAWaitRunsAfterIt) {
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    input_.press(controlAltKeys, KeyPosition::u);
    desk_.connection().synchronize();
    EXPECT_GE(desk_.pressesSent(), 1U);
    EXPECT_THAT(desk_.delivered(), IsEmpty());
    desk_.connection().dispatch();
    EXPECT_THAT(desk_.delivered(), ElementsAre(1));
}

TEST_F(HotKeyTest, aPressWhileAnotherActsRunsAfterItIsDone) {
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    ASSERT_TRUE(desk_.want(letterI, controlOption, 2));
    std::vector<std::string> story;
    desk_.hotKeys().installHandler([&](std::optional<HotKeyID> id) {
        story.push_back("begin " + std::to_string(id->id));
        if (id->id == 1) {
            input_.press(controlAltKeys, KeyPosition::i);
            desk_.connection().synchronize();  // As a window write waits for its answer.
        }
        story.push_back("end " + std::to_string(id->id));
        return 0;
    });
    input_.press(controlAltKeys, KeyPosition::u);
    desk_.presses();
    EXPECT_THAT(story, ElementsAre("begin 1", "end 1", "begin 2", "end 2"));
}

TEST_F(HotKeyTest, aBurstRunsInOrder) {
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    ASSERT_TRUE(desk_.want(letterI, controlOption, 2));
    ASSERT_TRUE(desk_.want(letterJ, controlOption, 3));
    ASSERT_TRUE(desk_.want(letterK, controlOption, 4));
    for (const std::uint8_t key : {KeyPosition::k, KeyPosition::u, KeyPosition::j, KeyPosition::i,
                                   KeyPosition::u, KeyPosition::u, KeyPosition::k}) {
        input_.press(controlAltKeys, key);
    }
    EXPECT_THAT(desk_.presses(), ElementsAre(4, 1, 3, 2, 1, 1, 4));
}

TEST_F(HotKeyTest, aPressGivenBackBeforeItsTurnDoesNothing) {
    const auto reference = desk_.want(letterU, controlOption, 1);
    ASSERT_TRUE(reference);
    input_.press(controlAltKeys, KeyPosition::u);
    desk_.connection().synchronize();
    desk_.hotKeys().unregisterHotKey(*reference);
    EXPECT_THAT(desk_.presses(), IsEmpty());
}

TEST_F(HotKeyTest, keysThatAProgramSendsAreNotTheUsers) {
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    xcb_key_press_event_t event{};
    event.response_type = XCB_KEY_PRESS;
    event.detail = KeyPosition::u;
    event.state = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
    event.event = event.root = input_.root();
    event.same_screen = 1;
    // To whoever listens to the root; that the event arrives at all is seen below.
    const std::size_t before = desk_.pressesSent();
    desk_.connection().selectRootEvents(XCB_EVENT_MASK_KEY_PRESS);
    desk_.connection().synchronize();
    xcb_send_event(input_.connection(), 0, input_.root(), XCB_EVENT_MASK_KEY_PRESS,
                   reinterpret_cast<const char*>(&event));
    input_.roundTrip();
    EXPECT_THAT(desk_.presses(), IsEmpty());
    EXPECT_EQ(desk_.pressesSent(), before + 1);
}

}  // namespace
}  // namespace lumatile::desktop
