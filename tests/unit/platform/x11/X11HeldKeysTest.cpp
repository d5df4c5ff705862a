#include "platform/x11/X11HeldKeys.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumatile {
namespace {

constexpr X11HeldKeys::KeyCode left = 113;
constexpr X11HeldKeys::KeyCode up = 111;

X11HeldKeys keysWithGap(X11HeldKeys::Milliseconds longestGap) {
    X11HeldKeys keys;
    keys.setRepeat({longestGap, true});
    return keys;
}

TEST(X11HeldKeys, repeatsOfAHeldKeyAreNoPresses) {
    X11HeldKeys keys = keysWithGap(700);
    EXPECT_TRUE(keys.press(left, 1000));
    EXPECT_FALSE(keys.press(left, 1660));
    for (X11HeldKeys::Milliseconds time = 1700; time < 20000; time += 40) {
        EXPECT_FALSE(keys.press(left, time));
    }
}

TEST(X11HeldKeys, pressAfterAReleaseCounts) {
    X11HeldKeys keys = keysWithGap(700);
    EXPECT_TRUE(keys.press(left, 1000));
    keys.release(left, 1001);
    EXPECT_TRUE(keys.press(left, 1001));
}

TEST(X11HeldKeys, pressLongAfterALostReleaseCounts) {
    X11HeldKeys keys = keysWithGap(700);
    EXPECT_TRUE(keys.press(left, 1000));
    EXPECT_FALSE(keys.press(left, 1700));
    EXPECT_TRUE(keys.press(left, 2401));
    EXPECT_FALSE(keys.press(left, 2441));
}

TEST(X11HeldKeys, anotherKeyCountsWhileOneIsHeld) {
    X11HeldKeys keys = keysWithGap(700);
    EXPECT_TRUE(keys.press(left, 1000));
    EXPECT_TRUE(keys.press(up, 1100));
    EXPECT_FALSE(keys.press(up, 1700));
    keys.release(up, 1800);
    EXPECT_TRUE(keys.press(up, 1900));
}

TEST(X11HeldKeys, theReleaseThatEndsTheGrabForgetsTheOtherKeys) {
    X11HeldKeys keys = keysWithGap(700);
    EXPECT_TRUE(keys.press(left, 1000));
    EXPECT_TRUE(keys.press(up, 1100));
    keys.release(left, 1200);
    // The release of the second key went to the window in front; the next press is the user's.
    EXPECT_TRUE(keys.press(up, 1300));
}

TEST(X11HeldKeys, releaseOfAKeyThatWasNeverPressedChangesNothing) {
    X11HeldKeys keys = keysWithGap(700);
    keys.release(up, 900);
    EXPECT_TRUE(keys.press(left, 1000));
    keys.release(up, 1001);
    EXPECT_FALSE(keys.press(left, 1500));
}

TEST(X11HeldKeys, theServersClockMayWrapRound) {
    X11HeldKeys keys = keysWithGap(700);
    constexpr auto last = std::numeric_limits<X11HeldKeys::Milliseconds>::max();
    EXPECT_TRUE(keys.press(left, last - 10));
    EXPECT_FALSE(keys.press(left, 20));
    EXPECT_TRUE(keys.press(left, 1000));
}

TEST(X11HeldKeys, aReleaseAtTheTimeOfThePressIsARepeatWhereTheServerSendsSuch) {
    X11HeldKeys keys;
    keys.setRepeat({700, false});
    EXPECT_TRUE(keys.press(left, 1000));
    keys.release(left, 1500);
    EXPECT_FALSE(keys.press(left, 1500));
    keys.release(left, 1540);
    EXPECT_FALSE(keys.press(left, 1540));
    keys.release(left, 1560);
    EXPECT_TRUE(keys.press(left, 1640));
}

}  // namespace
}  // namespace lumatile
