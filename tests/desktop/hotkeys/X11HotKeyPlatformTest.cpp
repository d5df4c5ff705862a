#include "platform/x11/X11HotKeyPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/desktop/hotkeys/HotKeyTest.h"

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(HotKeyTest, unknownKeysAndCombinationsOfOurOwnAreRefused) {
    EXPECT_FALSE(desk_.want(52, controlOption, 1));
    EXPECT_FALSE(desk_.want(0xffffffff, controlOption, 2));
    EXPECT_TRUE(desk_.want(letterU, controlOption, 3));
    EXPECT_FALSE(desk_.want(letterU, controlOption, 4));
    // Bits that are no modifier of a shortcut make no other combination.
    EXPECT_FALSE(desk_.want(letterU, controlOption | 0x400U, 5));
    EXPECT_TRUE(desk_.want(letterI, controlOption | 0xffff0000U, 6));
    input_.press(controlAltKeys, KeyPosition::u);
    input_.press(controlAltKeys, KeyPosition::i);
    EXPECT_THAT(desk_.presses(), ElementsAre(3, 6));
}

TEST_F(HotKeyTest, aCombinationThatAnotherHasInOneLockStateIsRefusedWhole) {
    OtherProgram owner(server_.display());
    OtherProgram third(server_.display());
    for (const unsigned taken : lockStates) {
        ASSERT_TRUE(owner.take(KeyPosition::left, controlAlt | taken));
        EXPECT_FALSE(desk_.want(leftArrow, controlOption, 1));
        EXPECT_THAT(desk_.hotKeys().refusedRegistrations(),
                    ElementsAre(X11HotKeyPlatform::Refused{leftArrow, controlOption}));
        // Nothing of it is kept: a third program gets every other state of the locks.
        desk_.connection().synchronize();
        for (const unsigned state : lockStates) {
            EXPECT_EQ(third.take(KeyPosition::left, controlAlt | state), state != taken);
            third.giveBack(KeyPosition::left, controlAlt | state);
        }
        input_.press(controlAltKeys, KeyPosition::left);
        owner.giveBack(KeyPosition::left, controlAlt | taken);
    }
    EXPECT_THAT(desk_.presses(), IsEmpty());
}

TEST_F(HotKeyTest, refusalsAreForgottenWhenTheCombinationIsHadOrAllIsGivenBack) {
    const auto up = desk_.want(126, controlOption, 1);
    ASSERT_TRUE(up);
    OtherProgram owner(server_.display());
    ASSERT_TRUE(owner.take(KeyPosition::left, controlAlt));
    ASSERT_TRUE(owner.take(KeyPosition::right, controlAlt));
    EXPECT_FALSE(desk_.want(leftArrow, controlOption, 2));
    EXPECT_FALSE(desk_.want(rightArrow, controlOption, 3));
    EXPECT_EQ(desk_.hotKeys().refusedRegistrations().size(), 2U);
    owner.giveBack(KeyPosition::left, controlAlt);
    const auto left = desk_.want(leftArrow, controlOption, 4);
    ASSERT_TRUE(left);
    EXPECT_THAT(desk_.hotKeys().refusedRegistrations(),
                ElementsAre(X11HotKeyPlatform::Refused{rightArrow, controlOption}));
    desk_.hotKeys().unregisterHotKey(*up);
    EXPECT_EQ(desk_.hotKeys().refusedRegistrations().size(), 1U);
    desk_.hotKeys().unregisterHotKey(*left);
    EXPECT_THAT(desk_.hotKeys().refusedRegistrations(), IsEmpty());
}

TEST_F(HotKeyTest, whatIsGivenBackIsFree) {
    const auto reference = desk_.want(leftArrow, controlOption, 1);
    ASSERT_TRUE(reference);
    ASSERT_TRUE(desk_.want(rightArrow, controlOption, 2));
    OtherProgram other(server_.display());
    EXPECT_FALSE(other.take(KeyPosition::left, controlAlt));
    desk_.hotKeys().unregisterHotKey(*reference);
    desk_.hotKeys().unregisterHotKey(*reference);  // A second time is harmless.
    desk_.connection().synchronize();
    for (const unsigned state : lockStates) {
        EXPECT_TRUE(other.take(KeyPosition::left, controlAlt | state));
        EXPECT_FALSE(other.take(KeyPosition::right, controlAlt | state));
    }
    input_.press(controlAltKeys, KeyPosition::left);
    EXPECT_THAT(desk_.presses(), IsEmpty());
    desk_.closeHotKeys();
    desk_.connection().synchronize();
    EXPECT_TRUE(other.take(KeyPosition::right, controlAlt));
}

TEST_F(HotKeyTest, aPressOnItsWayAtTheEndDoesNothing) {
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    input_.press(controlAltKeys, KeyPosition::u);
    desk_.connection().synchronize();
    desk_.closeHotKeys();
    desk_.connection().dispatch();
    EXPECT_THAT(desk_.delivered(), IsEmpty());
}

TEST_F(HotKeyTest, withoutAServerEverythingIsRefused) {
    const auto reference = desk_.want(letterU, controlOption, 1);
    ASSERT_TRUE(reference);
    server_.stop();
    EXPECT_FALSE(desk_.want(letterI, controlOption, 2));
    desk_.hotKeys().unregisterHotKey(*reference);
    EXPECT_TRUE(desk_.connection().isLost());
}

}  // namespace
}  // namespace lumatile::desktop
