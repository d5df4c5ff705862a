#include "base/NameText.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace lumatile {
namespace {

using namespace std::string_literals;

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

constexpr std::size_t noLimit = 1'000'000;

TEST(NameText, trimsEveryWhiteSpaceAndLineBreakAtBothEnds) {
    const std::vector<std::string> spaces{
        " ",      "\t",     "\n",     "\v",     "\f",     "\r",         "\u0085",
        "\u00A0", "\u1680", "\u2000", "\u2001", "\u2002", "\u2003",     "\u2004",
        "\u2005", "\u2006", "\u2007", "\u2008", "\u2009", "\u200A",     "\u2028",
        "\u2029", "\u202F", "\u205F", "\u3000", "\r\n",   " \t\u3000 ",
    };
    for (const std::string& space : spaces) {
        const std::string inner = std::string("a").append(space).append("b");
        EXPECT_EQ(NameText::trimmed(std::string(space).append(inner).append(space)), inner)
            << testing::PrintToString(space);
        EXPECT_EQ(NameText::trimmed(space), "") << testing::PrintToString(space);
    }
    EXPECT_EQ(NameText::trimmed(""), "");
    EXPECT_EQ(NameText::trimmed("a"), "a");
}

TEST(NameText, trimsNothingThatOnlyLooksEmpty) {
    for (const std::string text : {"\u200B", "\u200D", "\uFEFF", "\u00AD", "\u2800", "\x1F"}) {
        EXPECT_EQ(NameText::trimmed(text), text) << testing::PrintToString(text);
    }
    EXPECT_EQ(NameText::trimmed("\0"s), "\0"s);
    EXPECT_EQ(NameText::trimmed(" \x80 "), "\x80") << "a stray byte is no space";
}

TEST(NameText, cutsByCharactersAsAReaderCountsThem) {
    struct Case {
        std::string what;
        std::string character;
    };
    const std::vector<Case> characters{
        {"letter", "a"},
        {"accented letter", "\u00E9"},
        {"letter with a combining accent", "e\u0301"},
        {"letter with a pile of accents", "a\u0300\u0301\u0302\u0303\u0323"},
        {"ideograph", "\u6F22"},
        {"emoji", "\U0001F600"},
        {"emoji with a skin tone", "\U0001F44B\U0001F3FD"},
        {"emoji with a variation selector", "\u2764\uFE0F"},
        {"keycap", "1\uFE0F\u20E3"},
        {"family joined by zero-width joiners",
         "\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466"},
        {"flag", "\U0001F1E8\U0001F1ED"},
        {"flag of a region by tags",
         "\U0001F3F4\U000E0067\U000E0062\U000E0073\U000E0063\U000E0074\U000E007F"},
        {"hangul in parts", "\u1112\u1161\u11AB"},
        {"devanagari with a vowel sign", "\u0928\u093F"},
        {"line break of two", "\r\n"},
    };
    for (const Case& each : characters) {
        const std::string forty = repeated(each.character, 40);
        EXPECT_EQ(NameText::prefix(forty, 40, noLimit), forty) << each.what;
        EXPECT_EQ(NameText::prefix(forty + each.character, 40, noLimit), forty) << each.what;
        EXPECT_EQ(NameText::prefix(repeated(each.character, 50), 40, noLimit), forty) << each.what;
        EXPECT_EQ(NameText::prefix(forty, 1, noLimit), each.character) << each.what;
    }
}

TEST(NameText, flagsArePairedFromTheLeft) {
    const std::string indicators = repeated("\U0001F1E6", 5);
    EXPECT_EQ(NameText::prefix(indicators, 2, noLimit), repeated("\U0001F1E6", 4));
}

TEST(NameText, aCutNeverSplitsTheCharacterThatPassesTheByteLimit) {
    const std::string accented = "e\u0301";  // three bytes
    EXPECT_EQ(NameText::prefix("ab" + accented, 40, 5), "ab" + accented);
    EXPECT_EQ(NameText::prefix("ab" + accented, 40, 4), "ab");
    EXPECT_EQ(NameText::prefix("ab" + accented, 40, 3), "ab");
    EXPECT_EQ(NameText::prefix("ab" + accented, 40, 2), "ab");
    EXPECT_EQ(NameText::prefix("ab" + accented, 40, 1), "a");
    EXPECT_EQ(NameText::prefix(accented + "b", 40, 2), "");
}

TEST(NameText, thePrefixOfNothingOrOfNoCharactersIsEmpty) {
    EXPECT_EQ(NameText::prefix("", 40, 40), "");
    EXPECT_EQ(NameText::prefix("abc", 0, 40), "");
    EXPECT_EQ(NameText::prefix("abc", 0, 2), "");
    EXPECT_EQ(NameText::prefix("abc", 40, 0), "");
}

TEST(NameText, tellsUTF8FromOtherBytes) {
    for (const std::string text : {"", "plain", "\u00E9\u6F22\U0001F600"}) {
        EXPECT_TRUE(NameText::isUTF8(text)) << text;
    }
    EXPECT_TRUE(NameText::isUTF8("\0"s));
    for (const std::string text : {"\x80", "a\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                                   "\xFF", "\xF0\x9F\x98"}) {
        EXPECT_FALSE(NameText::isUTF8(text)) << testing::PrintToString(text);
    }
}

TEST(NameText, aTitleHasAWordPerCapitalLetter) {
    EXPECT_EQ(NameText::title("leftFifth"), "Left Fifth");
    EXPECT_EQ(NameText::title("command.leftFifth"), "Command.left Fifth");
    EXPECT_EQ(NameText::title("Left"), "Left");
    EXPECT_EQ(NameText::title("aBC"), "A B C");
    EXPECT_EQ(NameText::title("custom.0a1b-2c"), "Custom.0a1b-2c");
    EXPECT_EQ(NameText::title("\u00E9t\u00E9\u00C9toile"), "\u00C9t\u00E9 \u00C9toile");
    EXPECT_EQ(NameText::title("1stHalf"), "1st Half");
    EXPECT_EQ(NameText::title(""), "");
}

RC_GTEST_PROP(NameText, aPrefixIsABeginningWithinBothLimits, ()) {
    const auto text = *rc::gen::container<std::string>(rc::gen::element<char>(
        'a', ' ', '\xCC', '\x81', '\xF0', '\x9F', '\x87', '\xA6', '\xE2', '\x80', '\x8D'));
    const auto characters = *rc::gen::inRange<std::size_t>(0, 12);
    const auto bytes = *rc::gen::inRange<std::size_t>(0, 40);
    const std::string_view prefix = NameText::prefix(text, characters, bytes);
    RC_ASSERT(text.starts_with(prefix));
    RC_ASSERT(prefix.size() <= bytes);
    RC_ASSERT(NameText::prefix(prefix, characters, bytes) == prefix);
    RC_ASSERT(NameText::prefix(text, characters + 1, bytes).starts_with(prefix));
}

RC_GTEST_PROP(NameText, trimmedTextCannotBeTrimmedFurther, (const std::string& text)) {
    const std::string_view trimmed = NameText::trimmed(text);
    RC_ASSERT(NameText::trimmed(trimmed) == trimmed);
    RC_ASSERT(NameText::trimmed(" " + text + "\n") == trimmed);
}

}  // namespace
}  // namespace lumatile
