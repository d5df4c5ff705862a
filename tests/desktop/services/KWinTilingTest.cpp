#include "platform/freedesktop/tiling/KWinTiling.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>

#include "onboarding/SystemTiling.h"
#include "tests/desktop/support/MainLoop.h"
#include "tests/desktop/support/MockService.h"
#include "tests/desktop/support/PrivateSession.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile::desktop {
namespace {

class KWinTilingTest : public testing::Test {
protected:
    XdgFolders folders() const {
        return {folder.path() / "home", {folder.path() / "site", folder.path() / "system"}, {}};
    }
    void user(const std::string& text) const { folder.write("home/kwinrc", text); }
    void system(const std::string& text) const { folder.write("system/kwinrc", text); }
    std::string userText() const { return readFile(folder.path() / "home/kwinrc"); }

    std::optional<bool> edge() { return tiling.lookup(SystemTiling::edgeDragKey); }
    std::optional<bool> top() { return tiling.lookup(SystemTiling::menuBarDragKey); }

    TemporaryFolder folder;
    BusConnection bus{""};
    KWinTiling tiling{folders(), bus};
};

TEST_F(KWinTilingTest, withoutAnyFileNothingIsSet) {
    EXPECT_EQ(edge(), std::nullopt);
    EXPECT_EQ(top(), std::nullopt);
    EXPECT_EQ(tiling.lookup("SomethingElse"), std::nullopt);
}

TEST_F(KWinTilingTest, eachKeyHasItsSwitch) {
    user("[Windows]\nElectricBorderTiling=false\n");
    EXPECT_EQ(edge(), false);
    EXPECT_EQ(top(), std::nullopt);
    user("[Windows]\nElectricBorderMaximize=false\nElectricBorderTiling=true\n");
    EXPECT_EQ(edge(), true);
    EXPECT_EQ(top(), false);
}

TEST_F(KWinTilingTest, wordsAreReadAsKWinReadsThem) {
    for (const char* word : {"false", "False", "no", "off", "0", ""}) {
        user(std::string("[Windows]\nElectricBorderTiling=") + word + "\n");
        EXPECT_EQ(edge(), false) << word;
    }
    for (const char* word : {"true", "1", "yes", "on", "perhaps"}) {
        user(std::string("[Windows]\nElectricBorderTiling=") + word + "\n");
        EXPECT_EQ(edge(), true) << word;
    }
}

TEST_F(KWinTilingTest, otherGroupsDoNotCount) {
    user("[Compositing]\nElectricBorderTiling=false\n[Windows][1]\nElectricBorderTiling=false\n");
    EXPECT_EQ(edge(), std::nullopt);
}

TEST_F(KWinTilingTest, theUsersFileOverrulesEverybodys) {
    system("[Windows]\nElectricBorderTiling=false\n");
    EXPECT_EQ(edge(), false);
    folder.write("site/kwinrc", "[Windows]\nElectricBorderTiling=true\n");
    EXPECT_EQ(edge(), true);
    user("[Windows]\nElectricBorderTiling=false\n");
    EXPECT_EQ(edge(), false);
    user("[Windows]\nElectricBorderTiling[$d]\nElectricBorderTiling[$d]=\n");
    EXPECT_EQ(edge(), std::nullopt);
}

TEST_F(KWinTilingTest, whatIsImmutableHoldsAndCannotBeSwitched) {
    for (const char* text : {"[Windows]\nElectricBorderTiling[$i]=true\n",
                             "[Windows][$i]\nElectricBorderTiling=true\n",
                             "[$i]\n[Windows]\nElectricBorderTiling=true\n"}) {
        system(text);
        user("[Windows]\nElectricBorderTiling=false\n");
        EXPECT_EQ(edge(), true) << text;
        EXPECT_FALSE(tiling.canSwitchOff()) << text;
        EXPECT_FALSE(tiling.switchOff()) << text;
        EXPECT_EQ(userText(), "[Windows]\nElectricBorderTiling=false\n");
    }
}

TEST_F(KWinTilingTest, aChangeIsSeenByTheNextLookup) {
    user("[Windows]\nElectricBorderTiling=true\n");
    EXPECT_EQ(edge(), true);
    user("[Windows]\nElectricBorderTiling=false\n");
    EXPECT_EQ(edge(), false);
}

TEST_F(KWinTilingTest, aFileThatCannotBeReadSetsNothing) {
    std::filesystem::create_directories(folder.path() / "home/kwinrc");
    EXPECT_EQ(edge(), std::nullopt);
    EXPECT_FALSE(tiling.switchOff());
}

TEST_F(KWinTilingTest, switchingOffKeepsTheRestOfTheFile) {
    user("[Compositing]\nOpenGLIsUnsafe=false\n\n[Windows]\nBorderSnapZone=5\n\n[Xwayland]\nA=1\n");
    EXPECT_TRUE(tiling.canSwitchOff());
    EXPECT_TRUE(tiling.switchOff());
    EXPECT_EQ(edge(), false);
    EXPECT_EQ(top(), false);
    EXPECT_EQ(userText(),
              "[Compositing]\nOpenGLIsUnsafe=false\n\n[Windows]\nBorderSnapZone=5\n"
              "ElectricBorderTiling=false\nElectricBorderMaximize=false\n\n[Xwayland]\nA=1\n");
}

TEST_F(KWinTilingTest, switchingOffMakesAFileWhereThereIsNone) {
    EXPECT_TRUE(tiling.switchOff());
    EXPECT_EQ(userText(), "[Windows]\nElectricBorderTiling=false\nElectricBorderMaximize=false\n");
}

TEST_F(KWinTilingTest, aFileThatIsNoneOfKWinsIsLeftAlone) {
    user(std::string("[Windows]\n\0", 11));
    EXPECT_FALSE(tiling.switchOff());
    EXPECT_EQ(userText(), std::string("[Windows]\n\0", 11));
}

TEST_F(KWinTilingTest, kwinIsAskedToReadTheFileAgain) {
    PrivateSession session(":none");
    const std::string address = session.environment().at("DBUS_SESSION_BUS_ADDRESS");
    std::string whenAsked;
    MockService kwin(address, "org.kde.KWin", [&](const MockService::Call& call) {
        whenAsked = userText();
        call.answer(nullptr);
    });
    kwin.offer("/KWin",
               "<node><interface name='org.kde.KWin'><method name='reconfigure'/></interface>"
               "</node>");
    BusConnection sessionBus(address);
    KWinTiling running(folders(), sessionBus);
    EXPECT_TRUE(running.switchOff());
    ASSERT_TRUE(runUntil([&] { return !whenAsked.empty(); }));
    EXPECT_NE(whenAsked.find("ElectricBorderTiling=false"), std::string::npos);
}

}  // namespace
}  // namespace lumatile::desktop
