#include "Lumatile/ApplicationConductor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <ostream>
#include <string>

#include "commands/BuiltInCommands.h"
#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
namespace {

constexpr KeyCombination controlOptionLeft{123, 6144};
constexpr KeyCombination controlOptionH{4, 6144};
// The portrait commands share the shortcuts of their landscape twins.
constexpr std::size_t builtInShortcuts = 19;

const Rect before{300, 300, 640, 480};
const Rect leftHalf{0, 24, 960, 1080};

/// The built-in commands with "command.left" of the landscape table changed, as they are stored.
template <typename Change>
Bytes storedCommands(Change change) {
    std::vector<SnapCommand> commands = BuiltInCommands::defaults();
    change(commands);
    return CommandStore(commands).encode();
}

TEST(ApplicationConductor, constructionLoadsAndStartsNothing) {
    SimulatedDesktop desk;
    const auto conductor = std::make_shared<ApplicationConductor>(desk.platform());
    EXPECT_FALSE(conductor->featuresRunning());
    EXPECT_FALSE(conductor->isExaggerated());
    EXPECT_EQ(conductor->store().commands, BuiltInCommands::defaults());
    EXPECT_EQ(conductor->oledSettings(), OLEDSettings::recommended);
    EXPECT_TRUE(conductor->snapExecution().frameHistory().empty());
    EXPECT_EQ(conductor->orbit().trackedCount(), 0U);
    EXPECT_TRUE(desk.hotKeys.registered().empty());
    EXPECT_EQ(desk.runLoop.timerCount(), 0U);
    EXPECT_TRUE(desk.traffic.record().empty());
    EXPECT_EQ(desk.preferences.changes(), 0U);
    EXPECT_TRUE(desk.log.lines().empty());
}

TEST(ApplicationConductor, theSettingsAreAppliedByTheEndOfConstruction) {
    SimulatedDesktop desk;
    desk.preferences.storeOnDisk(OLEDSettings::preferenceKey,
                                 Bytes(R"({"orbitAmplitude":5,"jitterTolerance":1})"));
    const ApplicationConductor conductor(desk.platform());
    EXPECT_EQ(conductor.orbit().config(), (OrbitConfig{5, 1, true}));
    EXPECT_EQ(conductor.jitter(), (JitterPolicy{1, 3600}));
}

TEST(ApplicationConductor, nothingStartsWithoutPermission) {
    SimulatedDesktop desk;
    const auto conductor = std::make_shared<ApplicationConductor>(desk.platform());
    conductor->startFeatures();
    EXPECT_FALSE(conductor->featuresRunning());
    EXPECT_TRUE(desk.hotKeys.registered().empty());
    conductor->setAccessibilityGranted();
    EXPECT_TRUE(desk.hotKeys.registered().empty());
    conductor->startFeatures();
    EXPECT_TRUE(conductor->featuresRunning());
    EXPECT_EQ(desk.hotKeys.registered().size(), builtInShortcuts);
}

TEST(ApplicationConductor, aShortcutRunsItsCommandOnTheFrontWindow) {
    DesktopWithConductor desk;
    const WindowID back = desk.open(desk.editor, before);
    const WindowID front = desk.open(desk.editor, before);
    EXPECT_EQ(desk.press(controlOptionLeft), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.frame(front), leftHalf);
    EXPECT_EQ(desk.frame(back), before);
    EXPECT_EQ(desk.hotKeys.lastStatus(), 0);
}

TEST(ApplicationConductor, aHeldShortcutRunsItsCommandOnce) {
    DesktopWithConductor desk;
    desk.open(desk.editor, before);
    for (int i = 0; i < 30; ++i) {
        desk.hotKeys.keyDown(controlOptionLeft);
        desk.advance(0.03);
    }
    desk.hotKeys.keyUp(controlOptionLeft);
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 3U);
}

TEST(ApplicationConductor, shortcutsWorkOnlyWhileTheFeaturesRun) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.conductor->stopFeatures();
    EXPECT_FALSE(desk.conductor->featuresRunning());
    EXPECT_EQ(desk.press(controlOptionLeft), KeyReceiver::frontWindow);
    EXPECT_EQ(desk.frame(window), before);
    desk.conductor->startFeatures();
    EXPECT_EQ(desk.press(controlOptionLeft), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.frame(window), leftHalf);
    desk.conductor->shutdown();
    EXPECT_TRUE(desk.hotKeys.registered().empty());
    EXPECT_EQ(desk.hotKeys.installations(), 1U);
    EXPECT_EQ(desk.hotKeys.strayUnregistrations(), 0U);
}

TEST(ApplicationConductor, commandsFromTheMenuWorkInEveryState) {
    SimulatedDesktop desk;
    desk.plug("main", {0, 0, 1920, 1080});
    desk.preferences.storeOnDisk(OLEDSettings::preferenceKey,
                                 Bytes(DesktopWithConductor::noProtection));
    const WindowID window = desk.open(desk.launch({.pid = 100}), before);
    const auto conductor = std::make_shared<ApplicationConductor>(desk.platform());
    conductor->performCommand(conductor->store().commands.front());
    EXPECT_EQ(desk.frame(window), (Rect{0, 0, 960, 1080}));
}

TEST(ApplicationConductor, aSecondStartRegistersNothingTwice) {
    DesktopWithConductor desk;
    desk.open(desk.editor, before);
    const auto registered = desk.hotKeys.registered();
    EXPECT_EQ(registered.size(), builtInShortcuts);
    desk.conductor->startFeatures();
    desk.conductor->startFeatures();
    EXPECT_EQ(desk.hotKeys.registered(), registered);
    EXPECT_EQ(std::adjacent_find(registered.begin(), registered.end()), registered.end());
    desk.press(controlOptionLeft);
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 3U);
    // The registrations are still the first ones: theirs were the first ids.
    desk.hotKeys.deliver(HotKeyID{HotkeyService::signature, 1});
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 6U);
}

TEST(ApplicationConductor, registeringAgainReplacesWhatWasRegistered) {
    DesktopWithConductor desk;
    desk.open(desk.editor, before);
    desk.conductor->registerHotkeys();
    EXPECT_EQ(desk.hotKeys.registered().size(), builtInShortcuts);
    EXPECT_EQ(desk.hotKeys.installations(), 1U);
    EXPECT_EQ(desk.hotKeys.strayUnregistrations(), 0U);
    desk.press(controlOptionLeft);
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 3U);
}

TEST(ApplicationConductor, stoppingTwiceAndStoppingBeforeTheStartDoNothing) {
    SimulatedDesktop desk;
    const auto conductor = std::make_shared<ApplicationConductor>(desk.platform());
    conductor->stopFeatures();
    conductor->shutdown();
    conductor->setAccessibilityGranted();
    conductor->startFeatures();
    conductor->shutdown();
    conductor->shutdown();
    EXPECT_TRUE(desk.hotKeys.registered().empty());
    EXPECT_EQ(desk.hotKeys.strayUnregistrations(), 0U);
}

TEST(ApplicationConductor, aCombinationOfAnotherProgramIsLeftToIt) {
    DesktopWithConductor desk;
    desk.conductor->stopFeatures();
    desk.hotKeys.take(controlOptionLeft);
    desk.conductor->startFeatures();
    const WindowID window = desk.open(desk.editor, before);
    EXPECT_EQ(desk.hotKeys.registered().size(), builtInShortcuts - 1);
    EXPECT_EQ(desk.press(controlOptionLeft), KeyReceiver::otherProgram);
    EXPECT_EQ(desk.frame(window), before);
    EXPECT_EQ(desk.log.lines().size(), 1U);
    // All the others work.
    EXPECT_EQ(desk.press({124, 6144}), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.frame(window), (Rect{960, 24, 960, 1080}));
    // Given back, it is ours at the next registration.
    desk.hotKeys.release(controlOptionLeft);
    desk.conductor->registerHotkeys();
    desk.press(controlOptionLeft);
    EXPECT_EQ(desk.frame(window), leftHalf);
    desk.conductor->shutdown();
    EXPECT_EQ(desk.hotKeys.strayUnregistrations(), 0U);
}

TEST(ApplicationConductor, anEventWhoseIdCannotBeReadOrIsUnknownDoesNothing) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.hotKeys.setEventsUnreadable(true);
    EXPECT_EQ(desk.press(controlOptionLeft), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.hotKeys.lastStatus(), 0);
    desk.hotKeys.deliver(HotKeyID{HotkeyService::signature, 4711});
    EXPECT_EQ(desk.hotKeys.lastStatus(), 0);
    EXPECT_EQ(desk.frame(window), before);
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 0U);
}

TEST(ApplicationConductor, anEventOfAnEarlierRegistrationDoesNothing) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.conductor->registerHotkeys();
    // The first 19 ids were those of the first registration.
    desk.hotKeys.deliver(HotKeyID{HotkeyService::signature, 1});
    EXPECT_EQ(desk.frame(window), before);
    desk.hotKeys.deliver(HotKeyID{HotkeyService::signature, 20});
    EXPECT_EQ(desk.frame(window), leftHalf);
}

TEST(ApplicationConductor, aPressThatArrivesAfterTheConductorIsGoneDoesNothing) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.runLoop.post([&] {
        EXPECT_EQ(desk.press(controlOptionLeft), KeyReceiver::thisProgram);
        desk.conductor.reset();
    });
    desk.runLoop.settle();
    EXPECT_EQ(desk.hotKeys.lastStatus(), 0);
    EXPECT_EQ(desk.frame(window), before);
    EXPECT_TRUE(desk.hotKeys.registered().empty());
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 0U);
}

TEST(ApplicationConductor, aPressDuringAWaitRunsAfterTheCommandUnderWay) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.windowManager.policy.latencySeconds = 0.1;
    desk.clock.happen(SimulatedClock::fromSeconds(0.05), [&] { desk.press({124, 6144}); });
    desk.runLoop.post([&] { desk.run("command.top"); });
    desk.runLoop.settle();
    EXPECT_EQ(desk.frame(window), (Rect{960, 24, 960, 1080}));
    EXPECT_EQ(desk.remembered(window), (Rect{0, 24, 1920, 540}));
}

TEST(ApplicationConductor, storedCommandsAreMergedWithTheBuiltInOnes) {
    DesktopWithConductor desk;
    const Bytes stored = storedCommands([](std::vector<SnapCommand>& commands) {
        commands.resize(1);
        commands[0].shortcut = Shortcut{controlOptionH.keyCode, controlOptionH.modifiers, true};
    });
    desk.preferences.storeOnDisk(CommandStore::preferenceKey, stored);
    desk.start();
    EXPECT_EQ(desk.conductor->store().commands.size(), 34U);
    const WindowID window = desk.open(desk.editor, before);
    EXPECT_EQ(desk.press(controlOptionH), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.frame(window), leftHalf);
    // Merging writes nothing back.
    EXPECT_EQ(desk.preferences.changes(), 0U);
    EXPECT_EQ(desk.preferences.disk().at(std::string(CommandStore::preferenceKey)),
              StoredValue(stored));
    // The portrait twin kept the old shortcut and now has it to itself.
    desk.run("command.center");
    EXPECT_EQ(desk.press(controlOptionLeft), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.frame(window), leftHalf);
}

TEST(ApplicationConductor, aDisabledShortcutIsNotRegistered) {
    DesktopWithConductor desk;
    desk.preferences.storeOnDisk(
        CommandStore::preferenceKey, storedCommands([](std::vector<SnapCommand>& commands) {
            for (SnapCommand& command : commands) {
                command.shortcut->enabled = command.nameKey != "command.left";
            }
            commands[1].shortcut.reset();
        }));
    desk.start();
    EXPECT_EQ(desk.press(controlOptionLeft), KeyReceiver::frontWindow);
    // "command.right" has lost its landscape shortcut; the portrait twin's stands in for it.
    EXPECT_EQ(desk.press({124, 6144}), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.hotKeys.registered().size(), builtInShortcuts - 1);
}

TEST(ApplicationConductor, aCustomAreaWithAShortcutIsSnappedTo) {
    DesktopWithConductor desk;
    desk.preferences.storeOnDisk(
        CommandStore::preferenceKey, storedCommands([](std::vector<SnapCommand>& commands) {
            SnapCommand mine = SnapCommand::custom("Mine", 18, 9, 6, 3);
            mine.shortcut = Shortcut{controlOptionH.keyCode, controlOptionH.modifiers, true};
            commands.push_back(mine);
        }));
    desk.start();
    const WindowID window = desk.open(desk.editor, before);
    desk.press(controlOptionH);
    EXPECT_EQ(desk.frame(window), (Rect{1440, 24 + 810, 480, 270}));
}

TEST(ApplicationConductor, aTargetWithoutBlocksIsTheZeroRectangleAndHarmless) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    SnapCommand empty = SnapCommand::custom("Empty", 0, 0, 1, 1);
    empty.targetSegments = {{1, 2, 3}};
    desk.conductor->performCommand(empty);
    EXPECT_EQ(desk.frame(window), (Rect{0, 0, 1, 1}));
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(window), before);
}

TEST(ApplicationConductor, hugeStoredSegmentsDoNotStopTheProcess) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();
    constexpr auto smallest = std::numeric_limits<std::int64_t>::min();
    SnapCommand huge = SnapCommand::custom("Huge", 0, 0, 1, 1);
    huge.targetSegments = {{smallest, largest, largest, smallest}, {largest, 0, largest, 1}};
    desk.conductor->performCommand(huge);
    // No desk is that large: the desktop refuses the frame.
    EXPECT_EQ(desk.frame(window), before);
    EXPECT_EQ(desk.remembered(window), before);
}

TEST(ApplicationConductor, damagedStoredValuesAreReplacedInMemoryAndLeftOnTheDisk) {
    const StoredValue damaged[] = {
        Bytes("["),
        Bytes(""),
        Bytes(R"([{"nameKey":"command.left"}])"),
        Bytes("\xff\xfe"),
        Bytes(R"({"orbitAmplitude":1e300})"),
        true,
        std::int64_t{7},
    };
    for (const StoredValue& value : damaged) {
        DesktopWithConductor desk("");
        desk.preferences.storeOnDisk(CommandStore::preferenceKey, value);
        desk.preferences.storeOnDisk(OLEDSettings::preferenceKey, value);
        desk.start();
        EXPECT_EQ(desk.conductor->store().commands, BuiltInCommands::defaults());
        EXPECT_EQ(desk.conductor->oledSettings(), OLEDSettings::recommended);
        desk.open(desk.editor, before);
        desk.press(controlOptionLeft);
        desk.conductor->setExaggerated(true);
        desk.conductor->shutdown();
        EXPECT_EQ(desk.preferences.disk().at(std::string(CommandStore::preferenceKey)), value);
        EXPECT_EQ(desk.preferences.disk().at(std::string(OLEDSettings::preferenceKey)), value);
        EXPECT_EQ(desk.preferences.changes(), 0U);
    }
}

/// One column of what the settings mean to the running services.
struct Applied {
    const char* settings = nullptr;
    bool exaggerated = false;
    OrbitConfig orbit;
    JitterPolicy jitter;
    bool isOrbitJittered = false;

    friend std::ostream& operator<<(std::ostream& stream, const Applied& row) {
        return stream << row.settings << (row.exaggerated ? " exaggerated" : "");
    }
};

const Applied appliedRows[] = {
    {"{}", false, {2, 1, true}, {3, 3600}, true},
    {"{}", true, {20, 5, true}, {20, 10}, true},
    {R"({"jitterEnabled":false})", false, {2, 1, true}, {0, 3600}, false},
    {R"({"jitterEnabled":false})", true, {20, 5, true}, {0, 3600}, false},
    {R"({"orbitEnabled":false})", false, {2, 1, false}, {3, 3600}, true},
    {R"({"orbitEnabled":false})", true, {20, 5, false}, {20, 10}, true},
    {R"({"orbitEnabled":false,"jitterEnabled":false})", false, {2, 1, false}, {0, 3600}, false},
    {R"({"orbitEnabled":false,"jitterEnabled":false})", true, {20, 5, false}, {0, 3600}, false},
    {R"({"orbitAmplitude":2.5})", false, {3, 1, true}, {3, 3600}, true},
    {R"({"orbitAmplitude":2.49})", false, {2, 1, true}, {3, 3600}, true},
    {R"({"orbitAmplitude":0.2})", false, {1, 1, true}, {3, 3600}, true},
    {R"({"orbitAmplitude":-6})", false, {1, 1, true}, {3, 3600}, true},
    {R"({"orbitAmplitude":6})", true, {20, 5, true}, {20, 10}, true},
    {R"({"jitterTolerance":1.5})", false, {2, 1, true}, {1.5, 3600}, true},
    {R"({"jitterTolerance":6})", true, {20, 5, true}, {20, 10}, true},
};

class AppliedSettings : public testing::TestWithParam<Applied> {};

TEST_P(AppliedSettings, reachTheOrbitAndTheJitterCellByCell) {
    const Applied& row = GetParam();
    const DesktopWithConductor desk(row.settings);
    const ApplicationConductor& conductor = *desk.conductor;
    desk.conductor->setExaggerated(row.exaggerated);
    EXPECT_EQ(conductor.isExaggerated(), row.exaggerated);
    EXPECT_EQ(conductor.orbit().config(), row.orbit);
    EXPECT_EQ(conductor.jitter(), row.jitter);
    EXPECT_EQ(conductor.orbit().jitter(),
              row.isOrbitJittered ? std::optional(row.jitter) : std::nullopt);
    // And back.
    desk.conductor->setExaggerated(false);
    EXPECT_EQ(conductor.orbit().config(), conductor.oledSettings().orbitConfig(false));
    EXPECT_EQ(conductor.jitter(), conductor.oledSettings().jitterPolicy(false));
}

INSTANTIATE_TEST_SUITE_P(Rows, AppliedSettings, testing::ValuesIn(appliedRows));

TEST(ApplicationConductor, theDemonstrationModeIsNeverStored) {
    DesktopWithConductor desk("");
    desk.conductor->setExaggerated(true);
    EXPECT_EQ(desk.preferences.changes(), 0U);
    desk.start();
    EXPECT_FALSE(desk.conductor->isExaggerated());
    EXPECT_EQ(desk.conductor->orbit().config(), (OrbitConfig{2, 1, true}));
}

TEST(ApplicationConductor, applyingTheSettingsMovesNoWindow) {
    DesktopWithConductor desk("{}");
    const WindowID window = desk.open(desk.editor, before);
    desk.run("command.left");
    const auto snapped = desk.frame(window);
    desk.traffic.clear();
    desk.conductor->applyOLEDSettings();
    desk.conductor->setExaggerated(true);
    EXPECT_EQ(desk.frame(window), snapped);
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 0U);
}

TEST(ApplicationConductor, aYearLaterShortcutsStillWork) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.advance(365 * 86400.0);
    EXPECT_EQ(desk.frame(window), before);
    EXPECT_EQ(desk.press(controlOptionLeft), KeyReceiver::thisProgram);
    EXPECT_EQ(desk.frame(window), leftHalf);
    EXPECT_TRUE(desk.log.lines().empty());
    EXPECT_EQ(desk.preferences.changes(), 0U);
}

}  // namespace
}  // namespace lumatile
