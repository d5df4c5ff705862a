#include "lumatilectl/PrintedText.h"

#include <gtest/gtest.h>

namespace lumatile {
namespace {

TEST(PrintedText, namesStayAsTheyAre) {
    EXPECT_EQ(printedText(""), "");
    EXPECT_EQ(printedText("Left Half"), "Left Half");
    EXPECT_EQ(printedText("Größe ½ — 左 🪟"), "Größe ½ — 左 🪟");
    EXPECT_EQ(printedText("$(touch x) `y` \\ \"z\""), "$(touch x) `y` \\ \"z\"");
}

TEST(PrintedText, aTerminalIsNotToldAnything) {
    EXPECT_EQ(printedText("a\x1B]0;title\x07"
                          "b"),
              "a\uFFFD]0;title\uFFFDb");
    EXPECT_EQ(printedText("a\u009B31mb\u0080\u009F"), "a\uFFFD31mb\uFFFD\uFFFD");
    EXPECT_EQ(printedText("a\x7F"), "a\uFFFD");
    EXPECT_EQ(printedText("\u00A0"), "\u00A0") << "the first that is none";
}

TEST(PrintedText, rowsAndColumnsAreOurs) {
    EXPECT_EQ(printedText("a\tb\nc\rd"), "a\uFFFDb\uFFFDc\uFFFDd");
}

}  // namespace
}  // namespace lumatile
