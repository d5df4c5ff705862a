#include "platform/simulated/SimulatedDesktop.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lumatile {
namespace {

struct Desk : SimulatedDesktop {
    Desk() { plug("main", {0, 0, 1920, 1080}); }

    std::vector<Pid> runningPids() {
        std::vector<Pid> pids;
        for (const RunningApplication& application : workspace.runningApplications()) {
            pids.push_back(application.pid);
        }
        return pids;
    }

    RunningApplication running(Pid pid) {
        for (const RunningApplication& application : workspace.runningApplications()) {
            if (application.pid == pid) {
                return application;
            }
        }
        return {};
    }
};

TEST(SimulatedDesktop, theFrontmostApplicationOwnsTheFocusedWindow) {
    Desk desk;
    EXPECT_FALSE(desk.workspace.frontmostApplication());
    const ApplicationID editor = desk.launch({.pid = 1, .applicationId = "editor"});
    const ApplicationID browser = desk.launch({.pid = 2, .applicationId = "browser"});
    const WindowID text = desk.open(editor, Rect{0, 0, 400, 300});
    desk.open(browser, Rect{500, 0, 400, 300});
    ASSERT_TRUE(desk.workspace.frontmostApplication());
    EXPECT_EQ(desk.workspace.frontmostApplication()->pid, 2);
    EXPECT_EQ(desk.workspace.frontmostApplication()->applicationId, "browser");
    desk.programs.focus(text);
    EXPECT_EQ(desk.workspace.frontmostApplication()->pid, 1);
    desk.click({700, 100});
    EXPECT_EQ(desk.workspace.frontmostApplication()->pid, 2);
    desk.click({1900, 1000});
    EXPECT_FALSE(desk.workspace.frontmostApplication());
    desk.workspace.stickTo(editor);
    EXPECT_EQ(desk.workspace.frontmostApplication()->pid, 1);
    desk.workspace.unstick();
    EXPECT_FALSE(desk.workspace.frontmostApplication());
}

TEST(SimulatedDesktop, theFocusGoesToTheNextWindowInSight) {
    Desk desk;
    const ApplicationID editor = desk.launch({.pid = 1});
    const WindowID first = desk.open(editor, Rect{0, 0, 400, 300});
    const WindowID second = desk.open(editor, Rect{0, 0, 400, 300});
    const WindowID third = desk.open(editor, Rect{0, 0, 400, 300});
    desk.programs.minimize(second);
    EXPECT_EQ(desk.programs.focusedWindow(), third);
    desk.programs.close(third);
    EXPECT_EQ(desk.programs.focusedWindow(), first);
    desk.programs.close(first);
    EXPECT_FALSE(desk.programs.focusedWindow());
    desk.programs.focus(second);
    EXPECT_EQ(desk.programs.focusedWindow(), second);
    EXPECT_FALSE(desk.programs.find(second)->traits.isMinimized);
}

TEST(SimulatedDesktop, onlyApplicationsWithAKnownProcessAreListed) {
    Desk desk;
    desk.launch({.pid = 7});
    const ApplicationID stranger = desk.launch({.applicationId = "stranger"});
    desk.open(stranger, Rect{0, 0, 100, 100});
    EXPECT_EQ(desk.runningPids(), std::vector<Pid>{7});
    EXPECT_FALSE(desk.workspace.frontmostApplication());
}

TEST(SimulatedDesktop, anApplicationIsRegularWhileItHasAnOrdinaryWindow) {
    Desk desk;
    const ApplicationID editor = desk.launch({.pid = 1});
    EXPECT_FALSE(desk.running(1).isRegular);
    const WindowID window = desk.open(editor, Rect{0, 0, 100, 100});
    EXPECT_TRUE(desk.running(1).isRegular);
    desk.programs.find(window)->traits.subrole = "AXDialog";
    EXPECT_FALSE(desk.running(1).isRegular);
    desk.launch({.pid = 2, .isRegular = true});
    EXPECT_TRUE(desk.running(2).isRegular);
}

TEST(SimulatedDesktop, anApplicationIsHiddenWhileNoneOfItsWindowsCanBeSeen) {
    Desk desk;
    const ApplicationID editor = desk.launch({.pid = 1});
    const WindowID first = desk.open(editor, Rect{0, 0, 100, 100});
    const WindowID second = desk.open(editor, Rect{0, 0, 100, 100});
    EXPECT_FALSE(desk.running(1).isHidden);
    desk.programs.minimize(first);
    EXPECT_FALSE(desk.running(1).isHidden);
    desk.programs.minimize(second);
    EXPECT_TRUE(desk.running(1).isHidden);
    desk.programs.focus(first);
    EXPECT_FALSE(desk.running(1).isHidden);
    desk.programs.setHidden(editor, true);
    EXPECT_TRUE(desk.running(1).isHidden);
    EXPECT_FALSE(desk.programs.focusedWindow());
}

TEST(SimulatedDesktop, aWindowKeepsItsPlaceOnTheDeskWhenAnotherScreenBecomesPrimary) {
    Desk desk;
    desk.plug("right", {1920, 200, 1080, 1920});
    const ApplicationID editor = desk.launch({.pid = 1});
    const WindowID window = desk.open(editor, Rect{2000, 300, 400, 300});
    desk.screens.makePrimary("right");
    EXPECT_EQ(desk.frame(window), (Rect{80, 100, 400, 300}));
    EXPECT_EQ(desk.screens.frame("main"), (Rect{-1920, -200, 1920, 1080}));
    desk.screens.makePrimary("main");
    EXPECT_EQ(desk.frame(window), (Rect{2000, 300, 400, 300}));
}

TEST(SimulatedDesktop, aQuitApplicationLeavesNothing) {
    Desk desk;
    const ApplicationID editor = desk.launch({.pid = 1});
    const WindowID window = desk.open(editor, Rect{0, 0, 100, 100});
    desk.quit(editor);
    EXPECT_FALSE(desk.isOpen(window));
    EXPECT_FALSE(desk.seen(window));
    EXPECT_FALSE(desk.frame(window));
    EXPECT_TRUE(desk.runningPids().empty());
    EXPECT_TRUE(desk.programs.stacking().empty());
    // Whatever is still done to them does nothing.
    desk.quit(editor);
    desk.programs.close(window);
    desk.programs.focus(window);
    desk.dragTo(window, {0, 0, 1, 1});
    EXPECT_FALSE(desk.isOpen(desk.open(editor, Rect{0, 0, 100, 100})));
}

TEST(SimulatedDesktop, theSystemLogReadsAsTypeAndMessage) {
    Desk desk;
    desk.platform().log.write("MouseConductor", "failed to create event tap");
    EXPECT_EQ(desk.log.lines(),
              std::vector<std::string>{"MouseConductor: failed to create event tap"});
}

}  // namespace
}  // namespace lumatile
