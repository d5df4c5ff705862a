#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "platform/x11/XkbProtocol.h"
#include "tests/desktop/hotkeys/HotKeyTest.h"

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;

TEST_F(HotKeyTest, anotherLayoutInUseLeavesTheKeysWhereTheyLie) {
    changeKeyboard({"setxkbmap", "-rules", "evdev", "-model", "pc105", "-layout", "us,ru"});
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    xcb_xkb_use_extension(input_.connection(), 1, 0);
    for (const std::uint8_t group : Keys{0, 1, 0}) {
        xcb_xkb_latch_lock_state(input_.connection(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0,
                                 0);
        input_.roundTrip();
        input_.press(controlAltKeys, KeyPosition::u);
    }
    EXPECT_THAT(desk_.presses(), ElementsAre(1, 1, 1));
}

TEST_F(HotKeyTest, followsModifiersThatAreMoved) {
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 1));
    changeKeyboard({"xmodmap", "-e", "clear Mod1", "-e", "clear Mod4", "-e", "add Mod1 = Super_L",
                    "-e", "add Mod4 = Alt_L"});
    ASSERT_TRUE(desk_.runUntil([&] {
        OtherProgram other(server_.display());
        return other.take(KeyPosition::left, controlAlt);  // The former grab is given back.
    }));
    input_.press(controlAltKeys, KeyPosition::left);
    input_.press(Keys{KeyPosition::leftControl, KeyPosition::leftSuper}, KeyPosition::left);
    EXPECT_THAT(desk_.presses(), ElementsAre(1));
}

TEST_F(HotKeyTest, followsLocksThatAreMoved) {
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 1));
    changeKeyboard({"xmodmap", "-e", "clear Mod2", "-e", "add Mod3 = Num_Lock", "-e",
                    "add Mod2 = Scroll_Lock"});
    OtherProgram other(server_.display());
    ASSERT_TRUE(desk_.runUntil([&] {
        constexpr unsigned locked = controlAlt | XCB_MOD_MASK_2 | XCB_MOD_MASK_3;
        if (!other.take(KeyPosition::left, locked)) {
            return true;
        }
        other.giveBack(KeyPosition::left, locked);  // Or nobody else could have it.
        return false;
    }));
    std::size_t expected = 0;
    for (const bool num : {false, true}) {
        for (const bool scroll : {false, true}) {
            ASSERT_TRUE(input_.setLock(KeyPosition::numLock, num));
            ASSERT_TRUE(input_.setLock(KeyPosition::scrollLock, scroll));
            input_.press(controlAltKeys, KeyPosition::left);
            EXPECT_EQ(desk_.presses().size(), ++expected) << num << scroll;
        }
    }
}

TEST_F(HotKeyTest, followsKeysThatAreNumberedAnew) {
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 1));
    ASSERT_TRUE(desk_.want(letterU, controlOption, 2));
    // The older numbering of PC keyboards: letters lie where they lay, the left arrow is 100.
    constexpr std::uint8_t formerLeft = 100;
    const auto keymap =
        folder_.write("keymap",
                      "xkb_keymap { xkb_keycodes { include \"xfree86+aliases(qwerty)\" };"
                      " xkb_types { include \"complete\" }; xkb_compat { include \"complete\" };"
                      " xkb_symbols { include \"pc+us+inet(evdev)\" }; };");
    changeKeyboard({"xkbcomp", "-w0", keymap.string(), server_.display()});
    OtherProgram other(server_.display());
    ASSERT_TRUE(desk_.runUntil([&] { return other.take(KeyPosition::left, controlAlt); }));
    EXPECT_FALSE(other.take(formerLeft, controlAlt));
    input_.press(controlAltKeys, formerLeft);
    input_.press(controlAltKeys, KeyPosition::u);
    input_.press(controlAltKeys, KeyPosition::left);
    EXPECT_THAT(desk_.presses(), ElementsAre(1, 2));
}

TEST_F(HotKeyTest, aCombinationLostInAChangeIsTriedAgainAtTheNext) {
    constexpr unsigned controlMod4 = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_4;
    OtherProgram owner(server_.display());
    ASSERT_TRUE(owner.take(KeyPosition::left, controlMod4));
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 1));
    ASSERT_TRUE(desk_.want(letterU, controlOption, 2));
    const auto lost = [&] {
        return desk_.hotKeys().refusedRegistrations() ==
               std::vector{X11HotKeyPlatform::Refused{leftArrow, controlOption}};
    };
    // Alt becomes what the other program has.
    changeKeyboard({"xmodmap", "-e", "clear Mod1", "-e", "clear Mod4", "-e", "add Mod4 = Alt_L"});
    ASSERT_TRUE(desk_.runUntil(lost));
    const int tellings = desk_.tellings();
    EXPECT_GT(tellings, 0);
    input_.press(controlAltKeys, KeyPosition::left);
    input_.press(controlAltKeys, KeyPosition::u);
    EXPECT_THAT(desk_.presses(), ElementsAre(2));
    // It lets go; with the next change of the keyboard the registration is whole again.
    owner.giveBack(KeyPosition::left, controlMod4);
    changeKeyboard({"xmodmap", "-e", "add Mod5 = F12"});
    ASSERT_TRUE(desk_.runUntil([&] { return !lost(); }));
    EXPECT_GT(desk_.tellings(), tellings);
    input_.press(controlAltKeys, KeyPosition::left);
    EXPECT_THAT(desk_.presses(), ElementsAre(2, 1));
}

TEST_F(HotKeyTest, aRefusedCombinationThatIsFreeOnAnotherKeyboardIsTold) {
    OtherProgram owner(server_.display());
    ASSERT_TRUE(owner.take(KeyPosition::left, controlAlt));
    EXPECT_FALSE(desk_.want(leftArrow, controlOption, 1));
    changeKeyboard({"xmodmap", "-e", "add Mod5 = F12"});
    EXPECT_EQ(desk_.tellings(), 0) << "it is as it was";
    // Alt becomes another modifier.
    changeKeyboard({"xmodmap", "-e", "clear Mod1", "-e", "clear Mod4", "-e", "add Mod4 = Alt_L"});
    ASSERT_TRUE(desk_.runUntil([&] { return desk_.tellings() > 0; }));
    OtherProgram third(server_.display());
    constexpr unsigned controlMod4 = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_4;
    ASSERT_TRUE(third.take(KeyPosition::left, controlMod4)) << "nothing is kept unasked";
    third.giveBack(KeyPosition::left, controlMod4);
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 2));
    input_.press(controlAltKeys, KeyPosition::left);
    EXPECT_THAT(desk_.presses(), ElementsAre(2));
}

TEST_F(HotKeyTest, aPressBetweenTheChangeAndItsFollowingIsNotLost) {
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    run({"setxkbmap", "-rules", "evdev", "-model", "pc105", "-layout", "de"});
    input_.press(controlAltKeys, KeyPosition::u);
    EXPECT_THAT(desk_.presses(), ElementsAre(1));
    input_.press(controlAltKeys, KeyPosition::u);
    EXPECT_THAT(desk_.presses(), ElementsAre(1, 1));
}

}  // namespace
}  // namespace lumatile::desktop
