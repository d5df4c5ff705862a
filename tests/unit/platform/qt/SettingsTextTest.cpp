#include "platform/qt/SettingsText.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

namespace lumatile {
namespace {

const std::string longTail(5000, 'x');

TEST(SettingsText, plainValuesMayBeAsLongAsTheyLike) {
    for (const std::string& value :
         {"@ByteArray(" + longTail + ")",
          "\"@ByteArray([{\\\"name\\\":\\\",@Variant(" + longTail + "\\\"}])\"", longTail,
          "a, b, " + longTail, "@@Variant(" + longTail, "\"\\\\x40" + longTail + "\"",
          "text @Variant(" + longTail, "\\n" + longTail}) {
        EXPECT_TRUE(SettingsText::isSafeToRead("[General]\nkey=" + value + "\n"))
            << value.substr(0, 40);
    }
}

TEST(SettingsText, shortSerialisedValuesAreHarmless) {
    EXPECT_TRUE(
        SettingsText::isSafeToRead("[General]\nkey=@Variant(\\0\\0\\0\\x87)\nkey2=@DateTime()"));
    EXPECT_TRUE(SettingsText::isSafeToRead(""));
}

TEST(SettingsText, longSerialisedValuesAreNotReadHoweverTheyAreWritten) {
    for (const std::string start :
         {"key=@Variant(", "key=@DateTime(", "key= \t@Variant(", "key=\"@Variant(",
          "key=\"\"@Variant(", "key=\\x40Variant(", "key=\"\\x40Variant(", "key=\\100Variant(",
          "key=@\\x56ariant(", "key=one, @Variant(", "key=\"one, two\", @Variant(",
          "key=\\\n@Variant(", "key=\\\r\n@Variant(", "key=a\\\nb, @Variant(",
          "a=\"\n\"\nkey=@Variant(", "; a \" in a comment\nkey=@Variant(",
          "a=1 ; a \" in a comment\nkey=@Variant(", "a=\\\"\nkey=@Variant(", "key=@Something("}) {
        EXPECT_FALSE(SettingsText::isSafeToRead("[General]\n" + start + longTail)) << start;
        EXPECT_TRUE(SettingsText::isSafeToRead("[General]\n" + start + "x")) << start;
    }
}

TEST(SettingsText, lengthIsThatOfOneValue) {
    std::string text = "[General]\n";
    for (int line = 0; line < 1000; ++line) {
        text += "key" + std::to_string(line) + "=@Variant(short), @Variant(short)\n";
    }
    EXPECT_TRUE(SettingsText::isSafeToRead(text));
}

RC_GTEST_PROP(SettingsTextProperties, anyTextIsWalkedToItsEnd,
              (const std::vector<unsigned char>& picks)) {
    constexpr std::string_view letters = "\"\\\n\r;=,@x0 []a";
    std::string text;
    for (const unsigned char pick : picks) {
        text += letters[pick % letters.size()];
    }
    RC_ASSERT(SettingsText::isSafeToRead(text));  // Too short to hold anything long.
}

}  // namespace
}  // namespace lumatile
