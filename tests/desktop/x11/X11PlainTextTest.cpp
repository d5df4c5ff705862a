#include "platform/x11/X11PlainText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lumatile {
namespace {

TEST(X11PlainText, identifiersPass) {
    for (const std::string& text : std::vector<std::string>{
             "org.example.Editor", "a", "Édition", "文字", "🙂", std::string(255, 'x')}) {
        EXPECT_EQ(X11PlainText::of(text), text);
    }
}

TEST(X11PlainText, everythingElseIsAbsent) {
    for (const std::string& text : std::vector<std::string>{
             "", std::string(256, 'x'), "a\nb", std::string("a\0b", 3), "\x7f", "\x80", "\xc0\xaf",
             "\xc1\xbf", "\xc2", "\xc2\x85", "\xe0\x80\xaf", "\xed\xa0\x80", "\xf0\x80\x80\xaf",
             "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\xe2\x82", "\xff"}) {
        EXPECT_EQ(X11PlainText::of(text), std::nullopt);
    }
}

}  // namespace
}  // namespace lumatile
