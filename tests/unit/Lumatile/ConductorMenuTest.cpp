// The status menu as the conductor wires it, on a whole desktop.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "Lumatile/AppDelegate.h"
#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

const Rect before{300, 300, 640, 480};
const Rect leftHalf{0, 24, 960, 1080};
const StatusImage active{"MenuBarIcon", "Lumatile"};
const StatusImage paused{"MenuBarIconPaused", "Lumatile, protection off"};

/// The desktop with the status menu in its bar.
struct DesktopWithMenu : DesktopWithConductor {
    explicit DesktopWithMenu(std::string_view oledSettings = noProtection)
        : DesktopWithConductor(oledSettings) {
        conductor->createStatusMenu();
    }
};

TEST(ConductorMenu, thereIsNoStatusItemBeforeItIsAskedFor) {
    DesktopWithConductor desk;
    desk.conductor->refreshStatusIcon();
    desk.conductor->rebuildStatusMenu();
    EXPECT_FALSE(desk.statusItem.image());
    EXPECT_EQ(desk.statusItem.rebuilds(), 0U);
}

TEST(ConductorMenu, launchingPutsItIntoTheBarBeforeTheFeaturesStart) {
    SimulatedDesktop desk;
    desk.plug("main", {0, 0, 1920, 1080});
    AppDelegate delegate(desk.platform());
    EXPECT_FALSE(desk.statusItem.image());
    delegate.applicationDidFinishLaunching();
    ASSERT_FALSE(desk.statusItem.images().empty());
    EXPECT_EQ(desk.statusItem.images().front(), paused);
    EXPECT_EQ(desk.statusItem.image(), active);
    // Once when it was made, once when the features had started.
    EXPECT_EQ(desk.statusItem.rebuilds(), 2U);
    delegate.applicationWillTerminate();
    EXPECT_EQ(desk.statusItem.image(), paused);
}

TEST(ConductorMenu, itIsThereWithoutPermissionAndShowsTheProtectionAsOff) {
    SimulatedDesktop desk;
    const auto conductor = std::make_shared<ApplicationConductor>(desk.platform());
    conductor->createStatusMenu();
    conductor->startFeatures();
    EXPECT_FALSE(conductor->featuresRunning());
    EXPECT_EQ(desk.statusItem.image(), paused);
    EXPECT_NE(desk.statusItem.find("Quit Lumatile"), nullptr);
    // Starting renews the menu in every case.
    EXPECT_EQ(desk.statusItem.rebuilds(), 2U);
    conductor->setAccessibilityGranted();
    conductor->startFeatures();
    EXPECT_EQ(desk.statusItem.image(), active);
    EXPECT_EQ(desk.statusItem.rebuilds(), 3U);
}

TEST(ConductorMenu, isMadeOnce) {
    DesktopWithMenu desk;
    const std::size_t images = desk.statusItem.images().size();
    desk.conductor->createStatusMenu();
    EXPECT_EQ(desk.statusItem.images().size(), images);
    EXPECT_EQ(desk.statusItem.rebuilds(), 1U);
}

TEST(ConductorMenu, aSecondStartRenewsTheMenuAlone) {
    DesktopWithMenu desk("{}");
    const auto registered = desk.hotKeys.registered();
    const std::size_t images = desk.statusItem.images().size();
    desk.conductor->startFeatures();
    EXPECT_EQ(desk.statusItem.rebuilds(), 2U);
    EXPECT_EQ(desk.statusItem.images().size(), images);
    EXPECT_EQ(desk.hotKeys.registered(), registered);
}

TEST(ConductorMenu, theIconShowsWhetherWindowsAreMoved) {
    struct Row {
        const char* settings = nullptr;
        StatusImage image;
    };
    const Row rows[] = {
        {"{}", active},
        {R"({"orbitEnabled":false})", active},
        {R"({"jitterEnabled":false})", active},
        {R"({"orbitEnabled":false,"jitterEnabled":false})", paused},
        {R"({"idleDimEnabled":false})", active},
    };
    for (const Row& row : rows) {
        DesktopWithMenu desk(row.settings);
        desk.conductor->refreshStatusIcon();
        EXPECT_EQ(desk.statusItem.image(), row.image) << row.settings;
        desk.conductor->stopFeatures();
        EXPECT_EQ(desk.statusItem.image(), paused) << row.settings;
        desk.conductor->startFeatures();
        EXPECT_EQ(desk.statusItem.image(), row.image) << row.settings;
    }
}

TEST(ConductorMenu, theIconFollowsAChangeOfTheSettings) {
    DesktopWithMenu desk("{}");
    OLEDSettings settings = desk.conductor->oledSettings();
    settings.orbitEnabled = false;
    settings.jitterEnabled = false;
    desk.conductor->changeOLEDSettings(settings);
    EXPECT_EQ(desk.statusItem.image(), paused);
    settings.jitterEnabled = true;
    desk.conductor->changeOLEDSettings(settings);
    EXPECT_EQ(desk.statusItem.image(), active);
    // Stopped, nothing is active whatever the settings say.
    desk.conductor->stopFeatures();
    desk.conductor->applyOLEDSettings();
    EXPECT_EQ(desk.statusItem.image(), paused);
}

TEST(ConductorMenu, aCommandOfTheMenuSnapsTheFrontWindow) {
    DesktopWithMenu desk;
    const WindowID back = desk.open(desk.editor, before);
    const WindowID front = desk.open(desk.editor, before);
    EXPECT_TRUE(desk.statusItem.choose("Left Half"));
    EXPECT_EQ(desk.frame(front), leftHalf);
    EXPECT_EQ(desk.frame(back), before);
}

TEST(ConductorMenu, commandsWorkWhileTheFeaturesAreStopped) {
    DesktopWithMenu desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.conductor->stopFeatures();
    EXPECT_TRUE(desk.statusItem.choose("Left Half"));
    EXPECT_EQ(desk.frame(window), leftHalf);
}

TEST(ConductorMenu, theStatusLinesTellWhatTheOrbitDidLast) {
    DesktopWithMenu desk(R"({"orbitWaitForPause":false,"jitterEnabled":false})");
    desk.open(desk.editor, before);
    EXPECT_EQ(desk.statusItem.lines()[0], "Pixel shift: on — starts at the next step");
    EXPECT_EQ(desk.statusItem.lines()[1], "Edge jitter: off");
    EXPECT_EQ(desk.statusItem.lines()[2], "Idle dim: 30% after 5 min idle");
    EXPECT_EQ(desk.statusItem.lines()[3], "-");
    desk.advance(300.5);
    EXPECT_EQ(desk.statusItem.lines()[0], "Pixel shift: on — starts at the next step");
    desk.statusItem.open();
    EXPECT_THAT(desk.statusItem.lines()[0], StartsWith("Pixel shift: just now ("));
    desk.advance(42);
    desk.statusItem.open();
    EXPECT_THAT(desk.statusItem.lines()[0], StartsWith("Pixel shift: 42s ago ("));
}

TEST(ConductorMenu, theActionsLeadToWhatWasSet) {
    DesktopWithMenu desk;
    // Nothing is set so far.
    for (const char* title : {"Check for Updates…", "About Lumatile", "Quit Lumatile"}) {
        EXPECT_TRUE(desk.statusItem.choose(title));
    }
    std::vector<std::string> called;
    desk.conductor->menuTargets = {[&] { called.emplace_back("about"); },
                                   [&] { called.emplace_back("updates"); },
                                   [&] { called.emplace_back("terminate"); }};
    for (const char* title :
         {"Settings…", "Check for Updates…", "About Lumatile", "Quit Lumatile"}) {
        EXPECT_TRUE(desk.statusItem.choose(title));
    }
    EXPECT_EQ(desk.settingsWindow.shown, 1);
    EXPECT_THAT(called, ElementsAre("updates", "about", "terminate"));
}

TEST(ConductorMenu, onceTheConductorIsGoneNothingHappens) {
    DesktopWithMenu desk("{}");
    const WindowID window = desk.open(desk.editor, before);
    std::size_t called = 0;
    const auto count = [&] { ++called; };
    desk.conductor->menuTargets = {count, count, count};
    const auto lines = desk.statusItem.lines();
    desk.conductor.reset();
    desk.advance(100);
    const std::size_t images = desk.statusItem.images().size();
    desk.traffic.clear();
    desk.statusItem.open();
    for (const StatusMenuItem& item : desk.statusItem.menu()) {
        if (const auto* closure = std::get_if<ClosureMenuItem>(&item)) {
            EXPECT_TRUE(desk.statusItem.choose(closure->title));
        }
    }
    EXPECT_EQ(called, 0U);
    EXPECT_EQ(desk.settingsWindow.shown, 0);
    EXPECT_EQ(desk.statusItem.lines(), lines);
    EXPECT_EQ(desk.statusItem.images().size(), images);
    EXPECT_EQ(desk.frame(window), before);
    EXPECT_TRUE(desk.traffic.record().empty());
}

TEST(ConductorMenu, aTargetMayEndTheConductor) {
    DesktopWithMenu desk;
    bool called = false;
    desk.conductor->menuTargets.terminate = [&] {
        called = true;
        desk.conductor.reset();
    };
    EXPECT_TRUE(desk.statusItem.choose("Quit Lumatile"));
    EXPECT_TRUE(called);
    EXPECT_TRUE(desk.statusItem.choose("Quit Lumatile"));
}

}  // namespace
}  // namespace lumatile
