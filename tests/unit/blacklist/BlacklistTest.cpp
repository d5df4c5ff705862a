#include "blacklist/Blacklist.h"

#include <gtest/gtest.h>

namespace lumatile {
namespace {

TEST(Blacklist, factoryEntriesAreContained) {
    const Blacklist blacklist;
    EXPECT_EQ(Blacklist::factory().size(), 3U);
    EXPECT_TRUE(blacklist.contains("com.apple.loginwindow"));
    EXPECT_TRUE(blacklist.contains("com.apple.systempreferences"));
    EXPECT_TRUE(blacklist.contains("com.apple.ScreenSaver.Engine"));
}

TEST(Blacklist, matchingIsExactAndCaseSensitive) {
    const Blacklist blacklist;
    EXPECT_FALSE(blacklist.contains("com.apple.Loginwindow"));
    EXPECT_FALSE(blacklist.contains("COM.apple.loginwindow"));
    EXPECT_FALSE(blacklist.contains("com.apple.loginwindow2"));
    EXPECT_FALSE(blacklist.contains("com.apple.login"));
    EXPECT_FALSE(blacklist.contains(""));
}

TEST(Blacklist, anApplicationWithoutIdentifierIsNeverContained) {
    EXPECT_FALSE(Blacklist().contains(std::nullopt));
}

TEST(Blacklist, userEntriesComeAndGoWhileFactoryEntriesStay) {
    Blacklist blacklist;
    blacklist.addToUserList("org.example.Editor");
    blacklist.addToUserList("org.example.Editor");
    EXPECT_TRUE(blacklist.contains("org.example.Editor"));
    EXPECT_TRUE(blacklist.contains("com.apple.loginwindow"));

    blacklist.removeFromUserList("org.example.Editor");
    EXPECT_FALSE(blacklist.contains("org.example.Editor"));
    blacklist.removeFromUserList("org.example.Editor");
    blacklist.removeFromUserList("com.apple.loginwindow");
    EXPECT_TRUE(blacklist.contains("com.apple.loginwindow"));
}

TEST(Blacklist, aUserEntryEqualToAFactoryEntryCanBeRemovedWithoutUncoveringIt) {
    Blacklist blacklist;
    blacklist.addToUserList("com.apple.loginwindow");
    blacklist.removeFromUserList("com.apple.loginwindow");
    EXPECT_TRUE(blacklist.contains("com.apple.loginwindow"));
}

}  // namespace
}  // namespace lumatile
