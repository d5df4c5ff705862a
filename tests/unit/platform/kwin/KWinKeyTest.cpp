#include <gtest/gtest.h>

#include <xkbcommon/xkbcommon-keysyms.h>

#include "commands/Shortcut.h"
#include "platform/kwin/KWinKey.h"

namespace lumatile {
namespace {

constexpr std::uint32_t controlAlt = ClassicModifier::control | ClassicModifier::option;

TEST(KWinKey, numbersKeysAsTheToolkitDoes) {
    EXPECT_EQ(KWinKey::of(XKB_KEY_Left, controlAlt), 0x0c000000 | 0x01000012);
    EXPECT_EQ(KWinKey::of(XKB_KEY_a, ClassicModifier::command), 0x10000000 | 'A');
    EXPECT_EQ(KWinKey::of(XKB_KEY_odiaeresis, 0), 0xd6) << "letters in upper case";
    EXPECT_EQ(KWinKey::of(XKB_KEY_F12, ClassicModifier::shift), 0x02000000 | 0x0100003b);
    EXPECT_EQ(KWinKey::of(XKB_KEY_Cyrillic_ef, controlAlt), 0x0c000000 | 0x0424);
    EXPECT_EQ(KWinKey::of(XKB_KEY_space, 0), ' ');
}

TEST(KWinKey, whatIsNoKeyOfTheToolkitHasNoNumber) {
    EXPECT_EQ(KWinKey::of(XKB_KEY_Shift_L, controlAlt), std::nullopt);
    EXPECT_EQ(KWinKey::of(XKB_KEY_NoSymbol, controlAlt), std::nullopt);
}

TEST(KWinKey, isReadBack) {
    const auto combination = KWinKey::of(XKB_KEY_Left, controlAlt);
    ASSERT_TRUE(combination);
    EXPECT_EQ(KWinKey::modifiersOf(*combination), controlAlt);
    EXPECT_TRUE(KWinKey::isIn(*combination, XKB_KEY_Left));
    EXPECT_FALSE(KWinKey::isIn(*combination, XKB_KEY_Right));
}

}  // namespace
}  // namespace lumatile
