#include "Lumatile/SnapExecution.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "displays/DisplayService.h"
#include "displays/NSScreenProvider.h"
#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
namespace {

using testing::ElementsAreArray;
using Texts = std::vector<std::string>;

const Rect before{300, 300, 640, 480};
const Rect leftHalf{0, 24, 960, 1080};
const Rect topHalf{0, 24, 1920, 540};

Texts joined(std::initializer_list<Texts> parts) {
    Texts result;
    for (const Texts& part : parts) {
        result.insert(result.end(), part.begin(), part.end());
    }
    return result;
}

// What performing a command asks of the desktop, in the order of its steps.
const Texts findWindow{"read AXFocusedWindow"};
const Texts askProcess{"pid"};
const Texts readFrame{"read AXPosition", "read AXSize"};
const Texts setFrame{"pid", "read AXEnhancedUserInterface failed", "write AXPosition",
                     "write AXSize", "write AXPosition"};

TEST(SnapExecution, anAreaCommandReadsRemembersMovesAndTellsTheOrbit) {
    DesktopWithConductor desk;
    desk.open(desk.editor, before);
    desk.run("command.left");
    EXPECT_THAT(desk.traffic.texts(), ElementsAreArray(joined({findWindow, askProcess, readFrame,
                                                               readFrame, setFrame, readFrame})));
}

TEST(SnapExecution, aCommandThatDependsOnTheFrameReadsItOnceMore) {
    for (const auto* nameKey : {"command.center", "command.restore", "command.nextDisplay"}) {
        DesktopWithConductor desk;
        desk.plugPortrait();
        // Off its centre by whole and by half pixels, so that every write is one.
        desk.open(desk.editor, Rect{301, 300, 641, 480});
        desk.run(nameKey);
        EXPECT_THAT(desk.traffic.texts(),
                    ElementsAreArray(joined({findWindow, askProcess, readFrame, readFrame,
                                             readFrame, setFrame, readFrame})))
            << nameKey;
    }
}

TEST(SnapExecution, aRememberedFrameIsRestoredWithoutReadingItAgain) {
    DesktopWithConductor desk;
    desk.open(desk.editor, before);
    desk.run("command.left");
    desk.traffic.clear();
    desk.run("command.restore");
    EXPECT_THAT(desk.traffic.texts(), ElementsAreArray(joined({findWindow, askProcess, readFrame,
                                                               readFrame, setFrame, readFrame})));
}

TEST(SnapExecution, thePositionIsWrittenTwiceWithTheSizeBetween) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.run("command.left");
    std::vector<AttributeValue> written;
    for (const AttributeAccess& access : desk.traffic.record()) {
        if (access.kind == AccessKind::write) {
            EXPECT_EQ(access.subject, SimulatedSubject(window));
            written.push_back(*access.value);
        }
    }
    EXPECT_EQ(written, (std::vector<AttributeValue>{Point{0, 24}, Size{960, 1080}, Point{0, 24}}));
}

TEST(SnapExecution, assistiveAnimationIsOffWhileTheFrameIsSet) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.programs.find(desk.editor)->traits.enhancedUserInterface = true;
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), leftHalf);
    EXPECT_EQ(desk.programs.find(desk.editor)->traits.enhancedUserInterface, true);
    EXPECT_EQ(desk.home(window), leftHalf);
}

TEST(SnapExecution, theFrontmostApplicationsFocusedWindowIsTheTarget) {
    DesktopWithConductor desk;
    const WindowID first = desk.open(desk.editor, before);
    const WindowID second = desk.open(desk.editor, before);
    const ApplicationID browser = desk.launch({.pid = 200, .applicationId = "browser"});
    const WindowID page = desk.open(browser, before);
    desk.programs.focus(first);
    desk.run("command.left");
    EXPECT_EQ(desk.frame(first), leftHalf);
    EXPECT_EQ(desk.frame(second), before);
    EXPECT_EQ(desk.frame(page), before);
}

TEST(SnapExecution, withoutAFocusedWindowTheMainWindowIsTheTarget) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.programs.find(desk.editor)->faults.unreadable.emplace(AttributeName::focusedWindow);
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), leftHalf);
    EXPECT_EQ(desk.traffic.texts()[0], "read AXFocusedWindow failed");
    EXPECT_EQ(desk.traffic.texts()[1], "read AXMainWindow");
}

TEST(SnapExecution, aValueThatIsNoElementIsNoWindow) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    auto& answers = desk.programs.find(desk.editor)->faults.answers;
    answers[std::string(AttributeName::focusedWindow)] = std::string("a window");
    answers[std::string(AttributeName::mainWindow)] = Element();
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), before);
}

TEST(SnapExecution, whereTheFrontmostApplicationHasNoWindowTheFocusOfTheSessionCounts) {
    DesktopWithConductor desk;
    const ApplicationID launcher = desk.launch({.pid = 200, .applicationId = "launcher"});
    const WindowID window = desk.open(desk.editor, before);
    desk.workspace.stickTo(launcher);
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), leftHalf);
}

TEST(SnapExecution, whereTheFrontmostApplicationIsUnknownTheFocusOfTheSessionCounts) {
    DesktopWithConductor desk;
    const ApplicationID stranger = desk.launch({.applicationId = "stranger"});
    const WindowID window = desk.open(stranger, before);
    ASSERT_FALSE(desk.workspace.frontmostApplication());
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), leftHalf);
}

TEST(SnapExecution, withoutAFocusedApplicationNothingHappens) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.programs.focusNothing();
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), before);
    EXPECT_FALSE(desk.remembered(window));
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 0U);
    EXPECT_TRUE(desk.log.lines().empty());
}

/// A desktop on which a window of this program is in front of the editor's.
struct DesktopBehindUs : DesktopWithConductor {
    WindowID window = open(editor, before);
    WindowID ours = openOurs();

    WindowID openOurs() {
        workspace.setOwnPid(300);
        return open(launch({.pid = 300, .applicationId = "lumatile"}), Rect{400, 300, 920, 600});
    }
};

TEST(SnapExecution, aCommandChosenInAWindowOfOursIsForTheOneBehindIt) {
    DesktopBehindUs desk;
    desk.conductor->performCommandBehindUs(desk.command("command.left"));
    EXPECT_EQ(desk.frame(desk.window), leftHalf);
    EXPECT_EQ(desk.frame(desk.ours), (Rect{400, 300, 920, 600}));
    EXPECT_EQ(desk.programs.focusedWindow(), desk.ours) << "nothing else comes in front";
    desk.conductor->performCommandBehindUs(desk.command("command.restore"));
    EXPECT_EQ(desk.frame(desk.window), before);
    // A hot key is for whatever is in front, and so is a command of the menu in the bar.
    desk.run("command.left");
    EXPECT_EQ(desk.frame(desk.ours), leftHalf);
}

TEST(SnapExecution, behindAWindowOfOursTheUppermostThatCanBeSeenCounts) {
    DesktopBehindUs desk;
    const ApplicationID browser = desk.launch({.pid = 200, .applicationId = "browser"});
    const WindowID minimized = desk.open(browser, before);
    const WindowID upper = desk.open(browser, before);
    desk.programs.minimize(minimized);
    desk.programs.focus(desk.ours);
    desk.conductor->performCommandBehindUs(desk.command("command.left"));
    EXPECT_EQ(desk.frame(upper), leftHalf);
    EXPECT_EQ(desk.frame(minimized), before);
    EXPECT_EQ(desk.frame(desk.window), before);
    desk.programs.setHidden(browser, true);
    desk.conductor->performCommandBehindUs(desk.command("command.left"));
    EXPECT_EQ(desk.frame(desk.window), leftHalf);
}

TEST(SnapExecution, whereAnotherProgramIsInFrontMeanwhileItsWindowIsMeant) {
    DesktopBehindUs desk;
    desk.programs.focus(desk.window);
    const ApplicationID browser = desk.launch({.pid = 200, .applicationId = "browser"});
    const WindowID upper = desk.open(browser, before);
    desk.conductor->performCommandBehindUs(desk.command("command.left"));
    EXPECT_EQ(desk.frame(upper), leftHalf);
    EXPECT_EQ(desk.frame(desk.window), before);
}

TEST(SnapExecution, withNothingBehindOurWindowNothingHappens) {
    DesktopBehindUs desk;
    desk.programs.close(desk.window);
    desk.conductor->performCommandBehindUs(desk.command("command.left"));
    EXPECT_EQ(desk.frame(desk.ours), (Rect{400, 300, 920, 600}));
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 0U);
}

TEST(SnapExecution, anApplicationOnTheBlacklistIsNeverMoved) {
    DesktopWithConductor desk;
    const ApplicationID settings =
        desk.launch({.pid = 200, .applicationId = "com.apple.systempreferences"});
    const WindowID window = desk.open(settings, before);
    for (const SnapCommand& command : desk.conductor->store().commands) {
        desk.conductor->performCommand(command);
        if (command.shortcut) {
            desk.press({command.shortcut->carbonKeyCode, command.shortcut->carbonModifiers});
        }
    }
    EXPECT_EQ(desk.frame(window), before);
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 0U);
    EXPECT_FALSE(desk.remembered(window));
    EXPECT_EQ(desk.conductor->orbit().trackedCount(), 0U);
}

TEST(SnapExecution, theBlacklistIsAskedAtEveryCommand) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.conductor->blacklist().addToUserList("editor");
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), before);
    desk.conductor->blacklist().removeFromUserList("editor");
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), leftHalf);
}

TEST(SnapExecution, anApplicationWithoutAnIdentifierIsNotOnTheBlacklist) {
    DesktopWithConductor desk;
    const ApplicationID nameless = desk.launch({.pid = 200});
    const WindowID window = desk.open(nameless, before);
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), leftHalf);
}

TEST(SnapExecution, aWindowWhoseProcessCannotBeReadIsMovedRegardlessOfTheBlacklist) {
    DesktopWithConductor desk;
    const ApplicationID settings =
        desk.launch({.pid = 200, .applicationId = "com.apple.systempreferences"});
    const WindowID window = desk.open(settings, before);
    desk.model(window).faults.isPidUnreadable = true;
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), leftHalf);
}

TEST(SnapExecution, aWindowWhoseCentreIsBetweenTwoScreensStays) {
    DesktopWithConductor desk;
    desk.plug("far", {3000, 0, 1920, 1080});
    const Rect between{2200, 300, 640, 480};
    const WindowID window = desk.open(desk.editor, between);
    for (const SnapCommand& command : desk.conductor->store().commands) {
        desk.conductor->performCommand(command);
    }
    EXPECT_EQ(desk.frame(window), between);
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 0U);
    EXPECT_FALSE(desk.remembered(window));
    EXPECT_EQ(desk.conductor->orbit().trackedCount(), 0U);
}

TEST(SnapExecution, withoutAScreenNothingHappens) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.unplug("main");
    desk.run("command.left");
    desk.run("command.nextDisplay");
    EXPECT_EQ(desk.frame(window), before);
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 0U);
}

TEST(SnapExecution, restoreBringsTheFrameBeforeTheLastCommand) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.run("command.left");
    EXPECT_EQ(desk.remembered(window), before);
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(window), before);
    EXPECT_EQ(desk.home(window), before);
}

TEST(SnapExecution, restoreTwiceSwapsTheLastTwoFrames) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.run("command.left");
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(window), before);
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(window), leftHalf);
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(window), before);
}

TEST(SnapExecution, snapSnapRestoreRestoreEndsAtTheSecondSnap) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.run("command.left");
    desk.run("command.top");
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(window), leftHalf);
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(window), topHalf);
}

TEST(SnapExecution, restoreOfAWindowNeverSnappedLeavesItAndRemembersIt) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(window), before);
    EXPECT_EQ(desk.remembered(window), before);
    EXPECT_EQ(desk.home(window), before);
}

TEST(SnapExecution, everyWindowHasItsOwnHistory) {
    DesktopWithConductor desk;
    const WindowID first = desk.open(desk.editor, before);
    desk.run("command.left");
    const Rect other{100, 100, 500, 400};
    const WindowID second = desk.open(desk.editor, other);
    desk.run("command.top");
    desk.programs.focus(first);
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(first), before);
    EXPECT_EQ(desk.frame(second), topHalf);
    desk.programs.focus(second);
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(second), other);
}

TEST(SnapExecution, theHistoryOfAClosedWindowStaysAndMatchesNoOther) {
    DesktopWithConductor desk;
    const WindowID closed = desk.open(desk.editor, before);
    desk.run("command.left");
    desk.programs.close(closed);
    const WindowID window = desk.open(desk.editor, Rect{100, 100, 500, 400});
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(window), (Rect{100, 100, 500, 400}));
    EXPECT_EQ(desk.remembered(closed), before);
    EXPECT_EQ(desk.conductor->snapExecution().frameHistory().size(), 2U);
}

TEST(SnapExecution, aFrameCanBeRecordedAndForgotten) {
    DesktopWithConductor desk;
    OrbitScheduler orbit;
    const DisplayService displays{std::make_shared<NSScreenProvider>(desk.screens)};
    SnapExecution execution({desk.platform(), desk.conductor->store(), desk.conductor->blacklist(),
                             desk.conductor->jitter(), orbit,
                             [&displays]() -> const DisplayService& { return displays; }});
    const AXElementKey key = DesktopWithConductor::key(desk.open(desk.editor, before));
    execution.recordFrame(before, key);
    execution.recordFrame(leftHalf, key);
    ASSERT_EQ(execution.frameHistory().size(), 1U);
    EXPECT_EQ(execution.frameHistory().at(key), leftHalf);
    execution.recordFrame(std::nullopt, key);
    execution.recordFrame(std::nullopt, key);
    EXPECT_TRUE(execution.frameHistory().empty());
}

TEST(SnapExecution, aWindowDraggedAfterASnapIsRestoredToWhereItWasDraggedFrom) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, before);
    desk.run("command.left");
    const Rect dragged{50, 60, 700, 500};
    desk.dragTo(window, dragged);
    desk.run("command.top");
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(window), dragged);
}

TEST(SnapExecution, aMaximizedWindowIsTakenOutOfThatState) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, Rect{0, 24, 1920, 1080});
    desk.model(window).traits.isMaximized = true;
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), leftHalf);
    EXPECT_FALSE(desk.model(window).traits.isMaximized);
}

TEST(SnapExecution, dialogsAreSnappedAsWell) {
    DesktopWithConductor desk;
    SimulatedWindowTraits traits;
    traits.frame = before;
    traits.subrole = "AXDialog";
    const WindowID dialog = desk.open(desk.editor, traits);
    desk.run("command.left");
    EXPECT_EQ(desk.frame(dialog), leftHalf);
}

}  // namespace
}  // namespace lumatile
