#include "platform/keyboard/KeyMap.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <string>

#include "platform/keyboard/KeyTable.h"

namespace lumatile {
namespace {

// Three keys, two layouts; the third key has one layout only, and the names are not at their usual
// key codes.
const std::string text = R"(xkb_keymap {
xkb_keycodes "test" {
    minimum = 8;
    maximum = 255;
    <AD01> = 30;
    <AC10> = 40;
    <FK01> = 50;
    alias <LatQ> = <AD01>;
};
xkb_types "test" {
    type "ONE_LEVEL" { modifiers = none; level_name[Level1] = "Any"; };
    type "TWO_LEVEL" { modifiers = Shift; map[Shift] = Level2;
        level_name[Level1] = "Base"; level_name[Level2] = "Shift"; };
};
xkb_compatibility "test" {};
xkb_symbols "test" {
    key <AD01> { type = "TWO_LEVEL", symbols[Group1] = [ q, Q ],
                 symbols[Group2] = [ Cyrillic_shorti, Cyrillic_SHORTI ] };
    key <AC10> { type = "TWO_LEVEL", symbols[Group1] = [ odiaeresis, Odiaeresis ],
                 symbols[Group2] = [ NoSymbol, colon ] };
    key <FK01> { type = "ONE_LEVEL", symbols[Group1] = [ F1 ] };
};
};
)";

std::uint32_t codeAt(const char* position) {
    return KeyTable::atPosition(position)->virtualKeyCode;
}

TEST(KeyMap, hasTheKeysAtTheirUsualPlacesWithoutAMap) {
    const KeyMap map;
    for (const PhysicalKey& key : KeyTable::keys()) {
        EXPECT_EQ(map.keyCodeOf(key.virtualKeyCode), key.evdevKeyCode) << key.name;
        EXPECT_EQ(map.virtualKeyCodeOf(key.evdevKeyCode), key.virtualKeyCode) << key.name;
        EXPECT_EQ(map.keysymAt(key.virtualKeyCode, 0), 0U) << key.name;
    }
}

TEST(KeyMap, findsTheKeysByTheirNames) {
    const std::optional<KeyMap> map = KeyMap::compiled(text);
    ASSERT_TRUE(map);
    EXPECT_EQ(map->keyCodeOf(codeAt("AD01")), 30U);
    EXPECT_EQ(map->virtualKeyCodeOf(40), codeAt("AC10"));
    EXPECT_EQ(map->keyCodeOf(codeAt("FK02")), std::nullopt);
    EXPECT_EQ(map->virtualKeyCodeOf(24), std::nullopt);  // Where AD01 usually is.
}

TEST(KeyMap, hasWhatEachLayoutHasOnTheKeys) {
    const std::optional<KeyMap> map = KeyMap::compiled(text);
    ASSERT_TRUE(map);
    EXPECT_EQ(map->keysymAt(codeAt("AD01"), 0), static_cast<std::uint32_t>(XKB_KEY_q));
    EXPECT_EQ(map->keysymAt(codeAt("AD01"), 1),
              static_cast<std::uint32_t>(XKB_KEY_Cyrillic_shorti));
    EXPECT_EQ(map->keysymAt(codeAt("AC10"), 0), static_cast<std::uint32_t>(XKB_KEY_odiaeresis));
    EXPECT_EQ(map->keysymAt(codeAt("AC10"), 1), 0U);
    EXPECT_EQ(map->keysymAt(codeAt("FK01"), 1), static_cast<std::uint32_t>(XKB_KEY_F1));
    EXPECT_EQ(map->keysymAt(codeAt("FK02"), 0), 0U);
}

TEST(KeyMap, isNoneOfATextThatIsNoMap) {
    EXPECT_EQ(KeyMap::compiled(""), std::nullopt);
    EXPECT_EQ(KeyMap::compiled("xkb_keymap {"), std::nullopt);
    EXPECT_EQ(KeyMap::compiled(std::string(100'000, '{')), std::nullopt);
    EXPECT_EQ(KeyMap::compiled(text.substr(0, text.size() / 2)), std::nullopt);
}

}  // namespace
}  // namespace lumatile
