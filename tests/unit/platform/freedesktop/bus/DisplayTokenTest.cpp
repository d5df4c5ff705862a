#include "platform/freedesktop/bus/DisplayToken.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cctype>

namespace lumatile {
namespace {

TEST(DisplayToken, isMadeOfLettersDigitsAndUnderscores) {
    EXPECT_EQ(displayToken(":0"), "display_3a0");
    EXPECT_EQ(displayToken("host.example:10"), "displayhost_2eexample_3a10");
    EXPECT_EQ(displayToken(""), "display");
}

TEST(DisplayToken, theScreenOfTheDisplayDoesNotCount) {
    EXPECT_EQ(displayToken(":0.0"), displayToken(":0"));
    EXPECT_EQ(displayToken("a.b:1.2"), displayToken("a.b:1"));
    EXPECT_NE(displayToken(":0"), displayToken(":1"));
    EXPECT_NE(displayToken("a.b:1"), displayToken("a.c:1"));
}

RC_GTEST_PROP(DisplayToken, anyBytesGiveAName, (const std::string& display)) {
    for (const char character : displayToken(display)) {
        RC_ASSERT(character == '_' || std::isalnum(static_cast<unsigned char>(character)) != 0);
    }
}

}  // namespace
}  // namespace lumatile
