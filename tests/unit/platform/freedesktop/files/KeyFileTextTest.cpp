#include "platform/freedesktop/files/KeyFileText.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <optional>
#include <string>

namespace lumatile {
namespace {

const std::string sample =
    "# of the user\n"
    "[Desktop Entry]\n"
    "Name=Thing\n"
    "Name[de]=Ding\n"
    "\n"
    "[Windows][$i]\n"
    "  Spaced = a value \t\r\n"
    "no line of this format\n"
    "\n"
    "[Empty]\n";

KeyFileText parsed(const std::string& text) {
    const auto result = KeyFileText::parse(text);
    EXPECT_TRUE(result);
    return result.value_or(KeyFileText());
}

TEST(KeyFileText, keepsEveryByteThatIsNotChanged) { EXPECT_EQ(parsed(sample).text(), sample); }

TEST(KeyFileText, endsTheLastLine) { EXPECT_EQ(parsed("[A]\nb=c").text(), "[A]\nb=c\n"); }

TEST(KeyFileText, findsValues) {
    const KeyFileText file = parsed(sample);
    EXPECT_EQ(file.value("Desktop Entry", "Name"), "Thing");
    EXPECT_EQ(file.value("Desktop Entry", "Name[de]"), "Ding");
    EXPECT_EQ(file.value("Windows][$i", "Spaced"), "a value");
    EXPECT_EQ(file.value("Windows", "Spaced"), std::nullopt);
    EXPECT_EQ(file.value("Desktop Entry", "Spaced"), std::nullopt);
    EXPECT_EQ(file.value("Desktop Entry", "name"), std::nullopt);
    EXPECT_TRUE(file.hasGroup("Empty"));
    EXPECT_FALSE(file.hasGroup("Absent"));
}

TEST(KeyFileText, theLastOfSeveralValuesHolds) {
    EXPECT_EQ(parsed("[A]\nb=1\nb=2\n[C]\nb=3\n[A]\nb=4\n").value("A", "b"), "4");
}

TEST(KeyFileText, commentsHoldNoValues) {
    EXPECT_EQ(parsed("[A]\n#b=1\n # b=2\n").value("A", "b"), std::nullopt);
}

TEST(KeyFileText, changesAValueWhereItStands) {
    KeyFileText file = parsed("[A]\nb=1\nc=2\n\n[D]\nb=3\n");
    file.set("A", "b", "x");
    EXPECT_EQ(file.text(), "[A]\nb=x\nc=2\n\n[D]\nb=3\n");
}

TEST(KeyFileText, addsAValueAtTheEndOfItsGroup) {
    KeyFileText file = parsed("[A]\nb=1\n\n[D]\nb=3\n");
    file.set("A", "c", "x");
    EXPECT_EQ(file.text(), "[A]\nb=1\nc=x\n\n[D]\nb=3\n");
}

TEST(KeyFileText, addsAGroupThatIsMissing) {
    KeyFileText file = parsed("[A]\nb=1\n");
    file.set("New", "c", "x");
    EXPECT_EQ(file.text(), "[A]\nb=1\n\n[New]\nc=x\n");

    KeyFileText empty;
    empty.set("New", "c", "x");
    EXPECT_EQ(empty.text(), "[New]\nc=x\n");
}

TEST(KeyFileText, removesEveryValueOfAKeyInItsGroup) {
    KeyFileText file = parsed("[A]\nb=1\nb=2\nc=3\n[D]\nb=4\n[A]\nb=5\n");
    file.remove("A", "b");
    EXPECT_EQ(file.text(), "[A]\nc=3\n[D]\nb=4\n[A]\n");
}

TEST(KeyFileText, refusesWhatIsTooLongOrHoldsAZeroByte) {
    EXPECT_FALSE(KeyFileText::parse(std::string(KeyFileText::maximumBytes + 1, 'x')));
    EXPECT_TRUE(KeyFileText::parse(std::string(KeyFileText::maximumBytes, 'x')));
    EXPECT_FALSE(KeyFileText::parse(std::string("[A]\nb=\0\n", 8)));
}

RC_GTEST_PROP(KeyFileText, whatIsSetIsReadBackWhateverTheFileHeld, ()) {
    const auto bytes = *rc::gen::container<std::string>(
        rc::gen::element('[', ']', '=', '\n', '#', ' ', 'a', 'b', '\\'));
    auto file = KeyFileText::parse(bytes);
    RC_ASSERT(file.has_value());
    const auto before = file->entries();
    const std::size_t count = before.size();
    file->set("group", "key", "value");
    RC_ASSERT(file->value("group", "key") == "value");
    RC_ASSERT(file->entries().size() == count + 1);
    const auto again = KeyFileText::parse(file->text());
    RC_ASSERT(again.has_value());
    RC_ASSERT(again->value("group", "key") == "value");
    RC_ASSERT(again->text() == file->text());
}

}  // namespace
}  // namespace lumatile
