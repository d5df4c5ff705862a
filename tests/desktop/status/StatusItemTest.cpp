// The program's item in a bar on the session bus.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/desktop/support/EventWait.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/OuterFrame.h"
#include "tests/desktop/support/StatusBar.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

constexpr const char* everythingOff =
    R"({"orbitEnabled":false,"jitterEnabled":false,"idleDimEnabled":false})";

/// A private desktop with openbox, and the program on it.
struct StatusDesk {
    TestDesktop desktop{MonitorLayout::landscape(), WindowManager::Kind::openbox};
    std::unique_ptr<LumatileProcess> program;

    std::string bus() { return desktop.session().environment().at("DBUS_SESSION_BUS_ADDRESS"); }

    void start(const std::string& oledSettings = everythingOff,
               const std::optional<std::string>& commands = std::nullopt) {
        LumatileProcess::Settings settings;
        settings.oledSettings = oledSettings;
        settings.commands = commands;
        program = std::make_unique<LumatileProcess>(desktop.session(), LUMATILE_PROGRAM, settings);
    }

    std::string end() {
        return LumatileProcess::isClean(program->stop()) ? program->output() : "not clean";
    }
};

std::vector<std::string> labels(const std::vector<ExportedItem>& menu) {
    std::vector<std::string> texts;
    for (const ExportedItem& item : menu) {
        texts.push_back(item.isSeparator() ? "-" : item.label());
    }
    return texts;
}

bool reaches(TestWindow& window, const PixelRect& wanted) {
    return XClient::waitUntil([&] { return window.frame() == wanted; });
}

TEST(StatusItem, isInTheBarWithItsWholeMenu) {
    StatusDesk desk;
    StatusBar bar(desk.bus());
    desk.start();
    const QString item = bar.waitForItem();
    ASSERT_FALSE(item.isEmpty());
    EXPECT_THAT(
        labels(bar.menu(item)),
        ElementsAre("Pixel shift: off", "Edge jitter: off", "Idle dim: off", "-", "Left Half",
                    "Right Half", "Top Half", "Bottom Half", "-", "Top Left", "Top Right",
                    "Bottom Left", "Bottom Right", "-", "Left Third", "Center Third", "Right Third",
                    "-", "Left Two Thirds", "Center Two Thirds", "Right Two Thirds", "-",
                    "Maximize", "Center", "Restore", "-", "Next Display", "Previous Display", "-",
                    "Settings…", "Check for Updates…", "About Lumatile", "-", "Quit Lumatile"));
    EXPECT_FALSE(bar.find(item, "Pixel shift: off")->isEnabled());
    EXPECT_TRUE(bar.find(item, "Left Half")->isEnabled());
    EXPECT_EQ(bar.find(item, "Left Half")->keys(), "Control+Alt+Left");
    EXPECT_EQ(bar.find(item, "Next Display")->keys(), "Super+Control+Alt+Right");
    EXPECT_EQ(bar.find(item, "Quit Lumatile")->keys(), "Control+Q");
    EXPECT_EQ(bar.find(item, "About Lumatile")->keys(), "");
    EXPECT_EQ(bar.items().size(), 1U);
}

TEST(StatusItem, aClickInTheBarSnapsTheFrontWindow) {
    StatusDesk desk;
    StatusBar bar(desk.bus());
    desk.start();
    const QString item = bar.waitForItem();
    const auto window = desk.desktop.openWindow({});
    window->place({300, 200, 600, 400});
    ASSERT_TRUE(bar.open(item));
    const auto left = bar.find(item, "Left Half");
    ASSERT_TRUE(left);
    bar.click(item, left->id);
    EXPECT_TRUE(reaches(*window, {0, 0, 960, 1080})) << window->frame();
    bar.click(item, bar.find(item, "Restore")->id);
    EXPECT_TRUE(reaches(*window, {300, 200, 600, 400})) << window->frame();
    EXPECT_EQ(desk.end(), "");
}

TEST(StatusItem, settingsOpensTheirWindow) {
    StatusDesk desk;
    StatusBar bar(desk.bus());
    desk.start();
    const QString item = bar.waitForItem();
    DesktopObserver& observer = desk.desktop.observer();
    EXPECT_EQ(observer.windowOfClass("lumatile"), xcb_window_t{XCB_WINDOW_NONE});
    bar.click(item, bar.find(item, "Settings…")->id);
    EXPECT_TRUE(
        XClient::waitUntil([&] { return observer.windowOfClass("lumatile") != XCB_WINDOW_NONE; }));
    EXPECT_EQ(desk.end(), "");
}

TEST(StatusItem, aboutOpensOverTheSettings) {
    StatusDesk desk;
    StatusBar bar(desk.bus());
    desk.start();
    const QString item = bar.waitForItem();
    DesktopObserver& observer = desk.desktop.observer();
    bar.click(item, bar.find(item, "Settings…")->id);
    ASSERT_TRUE(
        XClient::waitUntil([&] { return observer.windowOfClass("lumatile") != XCB_WINDOW_NONE; }));
    const xcb_window_t settings = observer.windowOfClass("lumatile");
    ASSERT_TRUE(XClient::waitUntil([&] { return observer.activeWindow() == settings; }));
    bar.click(item, bar.find(item, "About Lumatile")->id);
    ASSERT_TRUE(XClient::waitUntil([&] {
        return observer.activeWindow() != settings && observer.activeWindow() != XCB_WINDOW_NONE;
    }));
    const xcb_window_t about = observer.activeWindow();
    EXPECT_EQ(observer.cardinals(about, "WM_TRANSIENT_FOR"), std::vector<std::uint32_t>{settings});
    const PixelRect below = clientArea(observer, settings).value();
    const PixelRect above = clientArea(observer, about).value();
    // The frame around it may be wider on one side.
    EXPECT_NEAR(above.x + above.width / 2.0, below.x + below.width / 2.0, 5);
    EXPECT_NEAR(above.y + above.height / 2.0, below.y + below.height / 2.0, 30);
    EXPECT_EQ(desk.end(), "");
}

TEST(StatusItem, openingTheMenuRefreshesTheStatusLines) {
    StatusDesk desk;
    StatusBar bar(desk.bus());
    const auto window = desk.desktop.openWindow({});
    window->place({300, 200, 600, 400});
    // Steps as often as there can be.
    desk.start(R"({"orbitStepInterval":1,"orbitWaitForPause":false,"jitterEnabled":false,)"
               R"("idleDimEnabled":false})");
    const QString item = bar.waitForItem();
    ASSERT_FALSE(item.isEmpty());
    const std::string first = bar.menu(item).front().label();
    EXPECT_EQ(first, "Pixel shift: on — starts at the next step");
    // Windows of this process are the test's, so the program moves them.
    ASSERT_TRUE(XClient::waitUntil([&] {
        return window->frame() != PixelRect{300, 200, 600, 400};
    }));
    EXPECT_EQ(bar.menu(item).front().label(), first);
    ASSERT_TRUE(bar.open(item));
    EXPECT_THAT(bar.menu(item).front().label(), StartsWith("Pixel shift: "));
    EXPECT_THAT(bar.menu(item).front().label(), testing::EndsWith(" · 1 window"));
}

TEST(StatusItem, theIconTellsWhetherWindowsAreProtected) {
    QByteArray off;
    QByteArray on;
    {
        StatusDesk desk;
        StatusBar bar(desk.bus());
        desk.start();
        const QString item = bar.waitForItem();
        EXPECT_EQ(bar.toolTip(item), "Lumatile, protection off");
        off = bar.picture(item, 22);
    }
    {
        StatusDesk desk;
        StatusBar bar(desk.bus());
        desk.start("{}");
        const QString item = bar.waitForItem();
        EXPECT_EQ(bar.toolTip(item), "Lumatile");
        on = bar.picture(item, 22);
    }
    EXPECT_EQ(off.size(), 22 * 22 * 4);
    EXPECT_EQ(on.size(), 22 * 22 * 4);
    EXPECT_NE(on, off);
}

TEST(StatusItem, aLeftClickShowsTheMenuAsAWindow) {
    StatusDesk desk;
    StatusBar bar(desk.bus());
    desk.start();
    const QString item = bar.waitForItem();
    const auto window = desk.desktop.openWindow({});
    window->place({300, 200, 600, 400});
    ASSERT_TRUE(bar.activate(item));
    DesktopObserver& observer = desk.desktop.observer();
    const auto isShown = [&] {
        return observer.unmanagedWindowOf(desk.program->pid()) != XCB_WINDOW_NONE;
    };
    ASSERT_TRUE(XClient::waitUntil(isShown));
    // The toolkit takes the keyboard a moment after it shows the menu, and nothing tells when:
    // until then the keys reach the window, which ignores them.
    constexpr std::uint8_t home = 110;  // Chooses the first item that can be chosen.
    ASSERT_TRUE(XClient::waitUntil([&] {
        if (!isShown()) {
            return true;
        }
        desk.desktop.input().press({}, home);
        desk.desktop.input().press({}, KeyPosition::enter);
        desk.desktop.input().roundTrip();
        return false;
    }));
    EXPECT_TRUE(reaches(*window, {0, 0, 960, 1080})) << window->frame();
    EXPECT_EQ(desk.end(), "");
}

TEST(StatusItem, isNamedToBarsThatFindItsPictureByName) {
    StatusDesk desk;
    StatusBar bar(desk.bus());
    const std::string prefix = desk.desktop.session().folder() / "prefix";
    ChildProcess install = desk.desktop.session().start(
        {"cmake", "--install", LUMATILE_BUILD, "--prefix", prefix, "--component", "pictures"},
        "install");
    ASSERT_EQ(install.wait(Deadline::usual()), (ChildProcess::Exit{0, 0}))
        << desk.desktop.session().output("install");
    LumatileProcess::Settings settings;
    settings.environment = {{"XDG_DATA_DIRS", prefix + "/share:/usr/share"}};
    settings.oledSettings = std::nullopt;
    desk.program =
        std::make_unique<LumatileProcess>(desk.desktop.session(), LUMATILE_PROGRAM, settings);
    QString item = bar.waitForItem();
    EXPECT_EQ(bar.property(item, "IconName").toString().toStdString(), "lumatile-symbolic");
    EXPECT_EQ(desk.end(), "");
}

TEST(StatusItem, comesToABarThatStartsLater) {
    StatusDesk desk;
    desk.start();
    StatusBar bar(desk.bus());
    const QString item = bar.waitForItem();
    ASSERT_FALSE(item.isEmpty());
    EXPECT_TRUE(bar.find(item, "Quit Lumatile"));
}

TEST(StatusItem, comesWhenAWatcherGetsItsHostLater) {
    StatusDesk desk;
    StatusBar bar(desk.bus(), false);
    desk.start();
    const auto window = desk.desktop.openWindow({});
    EXPECT_TRUE(bar.items().empty());
    bar.addHost();
    const QString item = bar.waitForItem();
    ASSERT_FALSE(item.isEmpty());
    EXPECT_TRUE(bar.find(item, "Quit Lumatile"));
}

TEST(StatusItem, comesBackToABarThatStartsAgain) {
    StatusDesk desk;
    auto bar = std::make_unique<StatusBar>(desk.bus());
    desk.start();
    ASSERT_FALSE(bar->waitForItem().isEmpty());
    bar.reset();
    bar = std::make_unique<StatusBar>(desk.bus());
    const QString item = bar->waitForItem();
    ASSERT_FALSE(item.isEmpty());
    const auto window = desk.desktop.openWindow({});
    window->place({300, 200, 600, 400});
    bar->click(item, bar->find(item, "Maximize")->id);
    EXPECT_TRUE(reaches(*window, {0, 0, 1920, 1080})) << window->frame();
}

TEST(StatusItem, quitEndsTheProgramInGoodOrder) {
    StatusDesk desk;
    StatusBar bar(desk.bus());
    desk.start();
    const QString item = bar.waitForItem();
    bar.click(item, bar.find(item, "Quit Lumatile")->id);
    EXPECT_EQ(desk.program->wait(), (ChildProcess::Exit{0, 0})) << desk.program->output();
    EXPECT_EQ(desk.program->output(), "");
}

TEST(StatusItem, titlesThatTheUserWroteReadAsTheyAre) {
    StatusDesk desk;
    StatusBar bar(desk.bus());
    desk.start(everythingOff,
               R"([{"id":"11111111-1111-4111-8111-111111111111",)"
               R"("nameKey":"custom.11111111-1111-4111-8111-111111111111",)"
               R"("group":"custom","kind":"area","axis":"horizontal","customName":"A_b & c & d",)"
               R"("targetSegments":[[0,0,12,12]],"activationSegments":[],)"
               R"("visibleInMenuBar":true,"visibleInGreenButtonMenu":true}])");
    const QString item = bar.waitForItem();
    ASSERT_FALSE(item.isEmpty());
    const auto texts = labels(bar.menu(item));
    // An underscore that is not doubled marks the access key and is not shown.
    EXPECT_THAT(texts, testing::Contains("_A__b & c & d"));
    EXPECT_THAT(texts, testing::Contains("Your Areas"));
}

}  // namespace
}  // namespace lumatile::desktop
