#include "platform/qt/SettingsText.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

namespace lumatile {
namespace {

using Fault = SettingsText::Fault;

const std::string longTail(5000, 'x');

TEST(SettingsText, plainValuesMayBeAsLongAsTheyLike) {
    for (const std::string& value :
         {"@ByteArray(" + longTail + ")",
          "\"@ByteArray([{\\\"name\\\":\\\",@Variant(" + longTail + "\\\"}])\"", longTail,
          "a, b, " + longTail, "@@Variant(" + longTail, "\"\\\\x40" + longTail + "\"",
          "text @Variant(" + longTail, "\\n" + longTail}) {
        EXPECT_EQ(SettingsText::fault("[General]\nkey=" + value + "\n"), Fault::none)
            << value.substr(0, 40);
    }
}

TEST(SettingsText, serialisedValuesAreNotReadHoweverTheyAreWritten) {
    for (const std::string start :
         {"key=@Variant(", "key=@DateTime(", "key= \t@Variant(", "key=\"@Variant(",
          "key=\"\"@Variant(", "key=\\x40Variant(", "key=\"\\x40Variant(", "key=\\100Variant(",
          "key=@V\\x61riant(", "key=one, @Variant(", "key=\"one, two\", @Variant(",
          "key=\\\n@Variant(", "key=\\\r\n@Variant(", "key=a\\\nb, @Variant(",
          "a=\"\n\"\nkey=@Variant(", "; a \" in a comment\nkey=@Variant(",
          "a=1 ; a \" in a comment\nkey=@Variant(", "a=\\\"\nkey=@Variant("}) {
        std::string text = "[General]\n";
        text += start;
        EXPECT_EQ(SettingsText::fault(text), Fault::serialised) << text;
        EXPECT_EQ(SettingsText::fault(text + longTail), Fault::serialised) << text;
    }
}

TEST(SettingsText, tenThousandValuesAreEnough) {
    const auto lines = [](int keys) {
        std::string text = "[General]\n";
        for (int key = 0; key < keys; ++key) {
            text += "k" + std::to_string(key) + "=1\n";
        }
        return text;
    };
    EXPECT_EQ(SettingsText::fault(lines(10'000)), Fault::none);
    EXPECT_EQ(SettingsText::fault(lines(10'001)), Fault::tooManyValues);
    std::string list = "[General]\nlist=1";
    for (int element = 0; element < 10'001; ++element) {
        list += ", 1";
    }
    EXPECT_EQ(SettingsText::fault(list), Fault::tooManyValues);
    std::string sections;
    for (int section = 0; section < 10'001; ++section) {
        sections += "[" + std::to_string(section) + "]\n";
    }
    EXPECT_EQ(SettingsText::fault(sections), Fault::tooManyValues);
    EXPECT_EQ(SettingsText::fault("[General]\nkey=\"" + list + "\""), Fault::none)
        << "commas in quotes part nothing";
}

TEST(SettingsText, controlCharactersAreNoiseAndZerosAloneAreNothing) {
    EXPECT_EQ(SettingsText::fault("[General]\nkey=1\x01\n"), Fault::noise);
    EXPECT_EQ(SettingsText::fault("[General]\r\n\tkey=1\r\n"), Fault::none);
    EXPECT_EQ(SettingsText::fault(std::string(4096, '\0')), Fault::none);
    EXPECT_EQ(SettingsText::fault(std::string(4096, '\0') + "a"), Fault::noise);
    EXPECT_EQ(SettingsText::fault(""), Fault::none);
}

TEST(SettingsText, keysAreCountedNotWhatLooksLikeThem) {
    EXPECT_EQ(SettingsText::keyCount(""), 0U);
    EXPECT_EQ(SettingsText::keyCount("[a=b]\n;c=d\ne=\"\nf=1\"\ng=h, i=j\nk\n\nl="), 3U);
}

RC_GTEST_PROP(SettingsTextProperties, textsWithoutTheSignAndNumbersAreSafe,
              (const std::vector<unsigned char>& picks)) {
    constexpr std::string_view letters = "\"\\\n\r;=, []abc";
    std::string text;
    for (const unsigned char pick : picks) {
        text += letters[pick % letters.size()];
    }
    RC_ASSERT(SettingsText::fault(text) == Fault::none);
}

}  // namespace
}  // namespace lumatile
