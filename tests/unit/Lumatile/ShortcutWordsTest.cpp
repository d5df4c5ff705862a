#include "Lumatile/ShortcutWords.h"

#include <gtest/gtest.h>

namespace lumatile {
namespace {

constexpr std::uint32_t controlOption = ClassicModifier::control | ClassicModifier::option;

TEST(ShortcutWords, nameKeysAsTheLayoutDoes) {
    const ShortcutWords::KeyLegends german{{6, "Y"}, {39, "Ä"}, {96, "F5"}, {123, "Left"}};
    const auto of = [&](std::uint32_t keyCode) {
        return ShortcutWords::of({keyCode, controlOption, true}, german);
    };
    EXPECT_EQ(of(6), "Ctrl+Alt+Y");
    EXPECT_EQ(of(39), "Ctrl+Alt+Ä");
    EXPECT_EQ(of(123), "Ctrl+Alt+Left");
    EXPECT_EQ(of(0), "Ctrl+Alt+A") << "as on a US keyboard where nothing is known";
    EXPECT_EQ(of(96), "Ctrl+Alt+F5") << "the formatter has no name for it";
    EXPECT_EQ(of(99), "Ctrl+Alt+?");
}

TEST(ShortcutWords, onlyCharacterKeysHaveALegendByTheirFormattedName) {
    EXPECT_EQ(ShortcutWords::byFormattedKey({{6, "Y"}, {96, "F5"}, {97, "F6"}, {123, "Left"}}),
              (KeyWords::Legends{{"Z", "Y"}}));
}

}  // namespace
}  // namespace lumatile
