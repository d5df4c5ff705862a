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
        EXPECT_FALSE(SettingsText::isSafeToRead(text)) << text;
        EXPECT_FALSE(SettingsText::isSafeToRead(text + longTail)) << text;
    }
}

RC_GTEST_PROP(SettingsTextProperties, textsWithoutTheSignAndNumbersAreSafe,
              (const std::vector<unsigned char>& picks)) {
    constexpr std::string_view letters = "\"\\\n\r;=, []abc";
    std::string text;
    for (const unsigned char pick : picks) {
        text += letters[pick % letters.size()];
    }
    RC_ASSERT(SettingsText::isSafeToRead(text));
}

}  // namespace
}  // namespace lumatile
