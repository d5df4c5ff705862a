#include "platform/keyboard/KeyLegend.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace lumatile {
namespace {

const PhysicalKey& at(const char* position) { return *KeyTable::atPosition(position); }

TEST(KeyLegend, isTheCharacterOfTheLayout) {
    EXPECT_EQ(keyLegend(at("AB01"), XKB_KEY_y), "Y");
    EXPECT_EQ(keyLegend(at("AC10"), XKB_KEY_odiaeresis), "Ö");
    EXPECT_EQ(keyLegend(at("AD01"), XKB_KEY_Cyrillic_shorti), "Й");
    EXPECT_EQ(keyLegend(at("AE01"), XKB_KEY_ampersand), "&");
}

TEST(KeyLegend, isTheNameOfAKeyThatShowsNoCharacter) {
    EXPECT_EQ(keyLegend(at("LEFT"), XKB_KEY_Left), "Left");
    EXPECT_EQ(keyLegend(at("SPCE"), XKB_KEY_space), "Space");
    EXPECT_EQ(keyLegend(at("RTRN"), XKB_KEY_Return), "Return");
    EXPECT_EQ(keyLegend(at("DELE"), XKB_KEY_Delete), "Delete");
    EXPECT_EQ(keyLegend(at("AE12"), XKB_KEY_dead_acute), "=");
    EXPECT_EQ(keyLegend(at("AC01"), XKB_KEY_NoSymbol), "A");
}

TEST(KeyLegend, tellsTheKeypadFromOtherKeys) {
    EXPECT_EQ(keyLegend(at("KP4"), XKB_KEY_KP_4), "Keypad 4");
    EXPECT_EQ(keyLegend(at("KPAD"), XKB_KEY_KP_Add), "Keypad +");
}

}  // namespace
}  // namespace lumatile
