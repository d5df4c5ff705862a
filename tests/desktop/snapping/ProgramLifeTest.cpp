// The program's life on a desktop: its settings, its neighbours, its end.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>

#include "oled_protection/JitterPolicy.h"
#include "tests/desktop/support/SnapDesktop.h"

namespace lumatile::desktop {
namespace {

double now() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

TEST(ProgramLife, endsCleanlyAndSilentlyWhenAsked) {
    SnapDesktop desktop({});
    const auto window = desktop.desktop().openWindow({});
    desktop.press("left");
    ASSERT_TRUE(reaches(*window, {0, 0, 960, 1080}));
    EXPECT_EQ(desktop.endProgram(), "");
    EXPECT_EQ(desktop.program().output(), "");
    // Its shortcuts are free again.
    const PixelRect before = window->frame();
    desktop.press("right");
    window->activate();
    EXPECT_EQ(window->frame(), before);
}

TEST(ProgramLife, endsWithStatusOneAndOneLineWhenTheServerGoesAway) {
    SnapDesktop desktop({});
    desktop.desktop().server().stop();
    const auto exit = desktop.program().wait();
    EXPECT_EQ(exit, (ChildProcess::Exit{1, 0})) << desktop.program().output();
    const std::string output = desktop.program().output();
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 1) << output;
}

TEST(ProgramLife, endsWithStatusOneAndALineForEachKindOfSessionWhereThereIsNone) {
    PrivateSession session(":none");
    ChildProcess program = session.start({LUMATILE_PROGRAM}, "lumatile");
    EXPECT_EQ(program.wait(Deadline::usual()), (ChildProcess::Exit{1, 0}));
    const std::string output = session.output("lumatile");
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 2) << output;
    EXPECT_NE(output.find("no KWin"), std::string::npos) << output;
    EXPECT_NE(output.find("no X server"), std::string::npos) << output;
}

TEST(ProgramLife, saysInOneLineThatAWaylandSessionIsReachedInPart) {
    SnapDesktop::Setup setup;
    setup.settings.environment = {{"XDG_SESSION_TYPE", "wayland"}};
    SnapDesktop desktop(setup);
    const auto window = desktop.desktop().openWindow({});
    desktop.press("maximize");
    EXPECT_TRUE(reaches(*window, {0, 0, 1920, 1080}));
    const std::string output = desktop.program().output();
    EXPECT_EQ(
        output,
        "Lumatile: This is a Wayland session: only the windows of X11 programs can be reached "
        "so far.\n");
    EXPECT_EQ(LumatileProcess::isClean(desktop.program().stop()), true);
}

TEST(ProgramLife, runsWhereNoSettingsCanBeKept) {
    SnapDesktop::Setup setup;
    setup.settings.writableFolder = false;
    SnapDesktop desktop(setup);
    const auto window = desktop.desktop().openWindow({});
    // The recommended settings apply, and with them the shift of inner edges.
    desktop.press("maximize");
    EXPECT_TRUE(reaches(*window, {0, 0, 1920, 1080}));
    EXPECT_EQ(desktop.endProgram(), "");
}

TEST(ProgramLife, unreadableSettingsAreNoTrouble) {
    SnapDesktop::Setup setup;
    setup.settings.oledSettings = "{\"orbitAmplitude\": 1e300";
    setup.settings.commands = "[[[[";
    SnapDesktop desktop(setup);
    const auto window = desktop.desktop().openWindow({});
    desktop.press("maximize");
    EXPECT_TRUE(reaches(*window, {0, 0, 1920, 1080}));
    EXPECT_EQ(desktop.endProgram(), "");
}

TEST(ProgramLife, storedCommandsReplaceTheBuiltInShortcuts) {
    SnapDesktop::Setup setup;
    // The left half on Ctrl+Alt+A.
    setup.settings.commands =
        R"([{"id":"11111111-1111-4111-8111-111111111111","nameKey":"command.left",)"
        R"("group":"halves","kind":"area","axis":"horizontal",)"
        R"("targetSegments":[[0,0,12,12]],"activationSegments":[],)"
        R"("visibleInMenuBar":true,"visibleInGreenButtonMenu":true,)"
        R"("shortcut":{"carbonKeyCode":0,"carbonModifiers":6144,"enabled":true}}])";
    SnapDesktop desktop(setup);
    const auto window = desktop.desktop().openWindow({});
    window->place({300, 200, 600, 400});
    desktop.input().press({KeyPosition::leftControl, KeyPosition::leftAlt}, KeyPosition::a);
    EXPECT_TRUE(reaches(*window, {0, 0, 960, 1080}));
    EXPECT_EQ(desktop.endProgram(), "");
}

TEST(ProgramLife, edgeJitterShiftsInnerEdgesByTheOffsetOfTheHour) {
    SnapDesktop::Setup setup;
    setup.settings.oledSettings =
        R"({"orbitEnabled":false,"jitterEnabled":true,"jitterTolerance":6,"idleDimEnabled":false})";
    SnapDesktop desktop(setup);
    const auto window = desktop.desktop().openWindow({});
    const JitterPolicy policy{6, 3600};
    for (const std::string_view command :
         {"left", "right", "topLeft", "bottomRight", "centerThird", "maximize"}) {
        SCOPED_TRACE(std::string(command));
        const Rect target = desktop.expected().unroundedArea(defaultShortcut(command), 0);
        const Rect screen = desktop.expected().fromRoot(desktop.expected().visible(0));
        const auto adjusted = [&](double time) {
            return desktop.expected().toRoot(policy.adjust(target, screen, time));
        };
        const PixelRect before = adjusted(now());
        desktop.press(command);
        // The hour may turn between the press and the look.
        EXPECT_TRUE(XClient::waitUntil([&] {
            return window->frame() == before || window->frame() == adjusted(now());
        })) << "the window became "
            << window->frame() << " instead of " << before;
    }
    EXPECT_EQ(desktop.endProgram(), "");
}

TEST(ProgramLife, twoDesktopsSideBySideDoNotMeet) {
    SnapDesktop first({});
    SnapDesktop::Setup setup;
    setup.windowManager = WindowManager::Kind::metacity;
    setup.layout = MonitorLayout::portrait();
    SnapDesktop second(setup);
    const auto firstWindow = first.desktop().openWindow({});
    const auto secondWindow = second.desktop().openWindow({});
    secondWindow->place({100, 100, 600, 400});
    first.press("left");
    EXPECT_TRUE(reaches(*firstWindow, {0, 0, 960, 1080}));
    EXPECT_EQ(secondWindow->frame(), (PixelRect{100, 100, 600, 400}));
    second.press("leftThird");
    EXPECT_TRUE(reaches(*secondWindow, {0, 0, 1080, 640}));
    EXPECT_EQ(firstWindow->frame(), (PixelRect{0, 0, 960, 1080}));
    EXPECT_EQ(first.endProgram(), "");
    EXPECT_EQ(second.endProgram(), "");
}

TEST(ProgramLife, aHeldCombinationRunsOnce) {
    SnapDesktop desktop({});
    const auto window = desktop.desktop().openWindow({});
    window->place({300, 200, 600, 400});
    desktop.press("left");
    ASSERT_TRUE(reaches(*window, {0, 0, 960, 1080}));
    desktop.press("right");
    ASSERT_TRUE(reaches(*window, {960, 0, 960, 1080}));
    // The server repeats the held key; each run of "restore" would swap the two frames.
    desktop.observer().forget();
    for (const std::uint8_t modifier : defaultShortcut("restore").modifiers()) {
        desktop.input().keyDown(modifier);
    }
    desktop.input().keyDown(defaultShortcut("restore").key);
    ASSERT_TRUE(reaches(*window, {0, 0, 960, 1080}));
    const Deadline held = Deadline::in(std::chrono::milliseconds(900));
    EXPECT_FALSE(XClient::waitUntil(
        [&] {
            return window->frame() != PixelRect{0, 0, 960, 1080};
        },
        held));
    desktop.input().keyUp(defaultShortcut("restore").key);
    for (const std::uint8_t modifier : defaultShortcut("restore").modifiers()) {
        desktop.input().keyUp(modifier);
    }
    EXPECT_EQ(desktop.endProgram(), "");
}

}  // namespace
}  // namespace lumatile::desktop
