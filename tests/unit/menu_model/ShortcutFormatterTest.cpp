#include "menu_model/ShortcutFormatter.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <string>

namespace lumatile {
namespace {

constexpr std::uint32_t control = 0x1000;
constexpr std::uint32_t option = 0x800;
constexpr std::uint32_t shift = 0x200;
constexpr std::uint32_t command = 0x100;

/// What every code shows; codes that are not here show a question mark.
const std::map<std::uint32_t, std::string> names{
    {36, "\u21A9"},  {48, "\u21E5"},  {49, "\u2423"},  {51, "\u232B"},  {53, "\u238B"},
    {117, "\u2326"}, {123, "\u2190"}, {124, "\u2192"}, {125, "\u2193"}, {126, "\u2191"},
    {115, "\u2196"}, {119, "\u2198"}, {116, "\u21DE"}, {121, "\u21DF"}, {0, "A"},
    {1, "S"},        {2, "D"},        {3, "F"},        {4, "H"},        {5, "G"},
    {6, "Z"},        {7, "X"},        {8, "C"},        {9, "V"},        {11, "B"},
    {12, "Q"},       {13, "W"},       {14, "E"},       {15, "R"},       {16, "Y"},
    {17, "T"},       {18, "1"},       {19, "2"},       {20, "3"},       {21, "4"},
    {22, "6"},       {23, "5"},       {24, "="},       {25, "9"},       {26, "7"},
    {27, "-"},       {28, "8"},       {29, "0"},       {30, "]"},       {31, "O"},
    {32, "U"},       {33, "["},       {34, "I"},       {35, "P"},       {37, "L"},
    {38, "J"},       {39, "'"},       {40, "K"},       {41, ";"},       {42, "\\"},
    {43, ","},       {44, "/"},       {45, "N"},       {46, "M"},       {47, "."},
    {50, "`"},
};

TEST(ShortcutFormatter, everyKnownKeyHasItsNameAndEveryOtherCodeAQuestionMark) {
    ASSERT_EQ(names.size(), 14U + 47U);
    for (std::uint32_t code = 0; code < 256; ++code) {
        const auto found = names.find(code);
        EXPECT_EQ(ShortcutFormatter::keyName(code), found == names.end() ? "?" : found->second)
            << code;
    }
    EXPECT_EQ(ShortcutFormatter::keyName(0xffffffff), "?");
}

TEST(ShortcutFormatter, functionAndKeypadKeysAreUnknown) {
    for (const std::uint32_t code : {122U, 120U, 99U, 65U, 67U, 76U, 82U, 92U}) {
        EXPECT_EQ(ShortcutFormatter::keyName(code), "?") << code;
    }
}

TEST(ShortcutFormatter, leftArrowWithControlAndOption) {
    EXPECT_EQ(ShortcutFormatter::format(123, control | option), "⌃⌥←");
}

TEST(ShortcutFormatter, shiftComesBeforeCommand) {
    EXPECT_EQ(ShortcutFormatter::format(0, 0x300), "⇧⌘A");
}

TEST(ShortcutFormatter, theGlyphsAlwaysHaveTheSameOrder) {
    EXPECT_EQ(ShortcutFormatter::format(49, command | shift | option | control), "⌃⌥⇧⌘␣");
    EXPECT_EQ(ShortcutFormatter::format(36, control), "⌃↩");
    EXPECT_EQ(ShortcutFormatter::format(36, option), "⌥↩");
    EXPECT_EQ(ShortcutFormatter::format(36, shift), "⇧↩");
    EXPECT_EQ(ShortcutFormatter::format(36, command), "⌘↩");
}

TEST(ShortcutFormatter, anUnknownCodeIsAQuestionMark) {
    EXPECT_EQ(ShortcutFormatter::keyName(10), "?");
    EXPECT_EQ(ShortcutFormatter::keyEquivalent(10), "?");
    EXPECT_EQ(ShortcutFormatter::format(10, control), "⌃?");
}

TEST(ShortcutFormatter, aMaskWithoutKnownBitsGivesTheKeyAlone) {
    EXPECT_EQ(ShortcutFormatter::format(0, 0), "A");
    EXPECT_EQ(ShortcutFormatter::format(0, ~(control | option | shift | command)), "A");
}

TEST(ShortcutFormatter, theKeyEquivalentOfALetterIsLowerCase) {
    EXPECT_EQ(ShortcutFormatter::keyEquivalent(0), "a");
    EXPECT_EQ(ShortcutFormatter::keyEquivalent(46), "m");
    EXPECT_EQ(ShortcutFormatter::keyEquivalent(43), ",");
}

TEST(ShortcutFormatter, theKeyEquivalentOfASpecialKeyIsItsGlyph) {
    for (const std::uint32_t code :
         {36U, 48U, 49U, 51U, 53U, 117U, 123U, 124U, 125U, 126U, 115U, 119U, 116U, 121U}) {
        EXPECT_EQ(ShortcutFormatter::keyEquivalent(code), ShortcutFormatter::keyName(code));
    }
}

RC_GTEST_PROP(ShortcutFormatter, unknownBitsChangeNothing,
              (std::uint32_t code, std::uint32_t modifiers)) {
    constexpr std::uint32_t known = control | option | shift | command;
    RC_ASSERT(ShortcutFormatter::format(code, modifiers) ==
              ShortcutFormatter::format(code, modifiers & known));
}

}  // namespace
}  // namespace lumatile
