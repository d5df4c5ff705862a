#include "platform/freedesktop/login/DesktopEntryText.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <optional>
#include <string>

namespace lumatile {
namespace {

TEST(DesktopEntryText, aPlainPathIsItsOwnCommandLine) {
    EXPECT_EQ(DesktopEntryText::exec("/usr/bin/lumatile"), "/usr/bin/lumatile");
    EXPECT_EQ(DesktopEntryText::exec("/home/jürgen/bin/lumatile"), "/home/jürgen/bin/lumatile");
}

TEST(DesktopEntryText, whatTheFormatReservesIsQuotedAndEscapedTwice) {
    EXPECT_EQ(DesktopEntryText::exec("/my programs/l"), R"("/my programs/l")");
    EXPECT_EQ(DesktopEntryText::exec("/a\"b"), R"("/a\\"b")");
    EXPECT_EQ(DesktopEntryText::exec("/a$b`c"), R"("/a\\$b\\`c")");
    EXPECT_EQ(DesktopEntryText::exec("/a\\b"), R"("/a\\\\b")");
    EXPECT_EQ(DesktopEntryText::exec("/100%"), "/100%%");
    EXPECT_EQ(DesktopEntryText::exec("/a;b"), R"("/a;b")");
}

TEST(DesktopEntryText, aPathThatNoLineCanHoldIsRefused) {
    for (const char* path : {"", "/a\nb", "/a\tb", "/a\rb", "/a\x7f"}) {
        EXPECT_EQ(DesktopEntryText::exec(path), std::nullopt);
    }
}

TEST(DesktopEntryText, theProgramIsTheFirstWord) {
    EXPECT_EQ(DesktopEntryText::program("lumatile --quiet %u"), "lumatile");
    EXPECT_EQ(DesktopEntryText::program("  /usr/bin/lumatile"), "/usr/bin/lumatile");
    EXPECT_EQ(DesktopEntryText::program(R"("/my programs/l" --x)"), "/my programs/l");
    EXPECT_EQ(DesktopEntryText::program(R"(/with\sescape)"), "/with");
    EXPECT_EQ(DesktopEntryText::program("/100%%"), "/100%");
}

TEST(DesktopEntryText, noProgramInAnEmptyOrUnclosedLine) {
    EXPECT_EQ(DesktopEntryText::program(""), std::nullopt);
    EXPECT_EQ(DesktopEntryText::program("   "), std::nullopt);
    EXPECT_EQ(DesktopEntryText::program("\"/usr/bin/lumatile"), std::nullopt);
    EXPECT_EQ(DesktopEntryText::program("\"\""), std::nullopt);
}

TEST(DesktopEntryText, booleans) {
    EXPECT_EQ(DesktopEntryText::boolean("true"), true);
    EXPECT_EQ(DesktopEntryText::boolean("1"), true);
    EXPECT_EQ(DesktopEntryText::boolean("false"), false);
    EXPECT_EQ(DesktopEntryText::boolean("0"), false);
    EXPECT_EQ(DesktopEntryText::boolean("True"), std::nullopt);
    EXPECT_EQ(DesktopEntryText::boolean(""), std::nullopt);
    EXPECT_EQ(DesktopEntryText::boolean(std::nullopt), std::nullopt);
}

TEST(DesktopEntryText, lists) {
    EXPECT_TRUE(DesktopEntryText::listHolds("GNOME;KDE;", "KDE"));
    EXPECT_TRUE(DesktopEntryText::listHolds("KDE", "KDE"));
    EXPECT_FALSE(DesktopEntryText::listHolds("KDEx;xKDE;kde", "KDE"));
    EXPECT_FALSE(DesktopEntryText::listHolds("", "KDE"));
}

RC_GTEST_PROP(DesktopEntryText, everyPathThatCanBeWrittenIsReadBack, ()) {
    const std::string path =
        '/' + *rc::gen::container<std::string>(rc::gen::inRange('\x20', '\x7f'));
    const auto exec = DesktopEntryText::exec(path);
    RC_ASSERT(exec.has_value());
    RC_ASSERT(DesktopEntryText::program(*exec) == path);
    RC_ASSERT(DesktopEntryText::program(*exec + " --argument") == path);
}

}  // namespace
}  // namespace lumatile
