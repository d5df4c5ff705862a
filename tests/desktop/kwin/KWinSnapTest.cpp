// The program in a KWin Wayland session: real keys and a real pointer, and what KWin itself says of
// the windows afterwards.

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/desktop/kwin/PlasmaDesk.h"
#include "tests/desktop/support/KeyPosition.h"

namespace lumatile::desktop {
namespace {

namespace Key = KeyPosition;

const Rect usual{200, 150, 700, 450};
const Rect leftHalf{0, 0, 960, 1080};
const Rect rightHalf{960, 0, 960, 1080};

NativeWindow::Options of(NativeWindow::Toolkit toolkit) {
    NativeWindow::Options options;
    options.toolkit = toolkit;
    return options;
}

constexpr auto qt = NativeWindow::Toolkit::qt;
constexpr auto gtk = NativeWindow::Toolkit::gtk;

/// Presses until the window snaps: the program may be busy finding KWin.
bool snapsInTheEnd(PlasmaDesk& desk, const NativeWindow& window) {
    constexpr int mostPresses = 40;
    for (int press = 0; press < mostPresses && window.frame() != leftHalf; ++press) {
        desk.press("left");
        waitInSession([&] { return window.frame() == leftHalf; },
                      Deadline::in(std::chrono::seconds(1)));
    }
    return window.frame() == leftHalf;
}

TEST(KWinSnap, theFrontWindowTakesTheLeftHalf) {
    PlasmaDesk desk;
    for (const auto toolkit : {qt, gtk}) {
        SCOPED_TRACE(static_cast<int>(toolkit));
        const auto window = desk.desktop().openWindow(of(toolkit));
        window->place(usual);
        desk.press("left");
        EXPECT_TRUE(reaches(*window, leftHalf));
        desk.press("right");
        EXPECT_TRUE(reaches(*window, rightHalf));
        desk.press("restore");
        EXPECT_TRUE(reaches(*window, leftHalf));
    }
    EXPECT_EQ(desk.endProgram(), "");
}

TEST(KWinSnap, aWindowIsDraggedToAnEdge) {
    PlasmaDesk desk;
    EXPECT_EQ(desk.edges(), "false false") << "KWin leaves it to the program";
    const auto window = desk.desktop().openWindow(of(qt));
    window->place(usual);
    desk.input().movePointer(usual.x + 300, usual.y + 10);
    desk.input().buttonDown();
    desk.input().movePointer(700, 400);
    ASSERT_TRUE(waitInSession([&] { return window->state().moving; }));
    desk.input().movePointer(300, 500);
    desk.input().movePointer(1, 540);
    desk.input().buttonUp();
    EXPECT_TRUE(reaches(*window, leftHalf));
    EXPECT_FALSE(window->state().tiled);
    EXPECT_EQ(desk.endProgram(), "");
    EXPECT_EQ(desk.edges(), "true true") << "given back";
}

TEST(KWinSnap, aDragThatEscapeTakesBackDropsNothing) {
    PlasmaDesk desk;
    const auto window = desk.desktop().openWindow(of(qt));
    window->place(usual);
    desk.input().movePointer(usual.x + 300, usual.y + 10);
    desk.input().buttonDown();
    desk.input().movePointer(700, 400);
    ASSERT_TRUE(waitInSession([&] { return window->state().moving; }));
    desk.input().movePointer(1, 540);
    desk.input().press({}, Key::escape);
    ASSERT_TRUE(waitInSession([&] { return !window->state().moving; }));
    desk.input().buttonUp();
    EXPECT_TRUE(reaches(*window, usual));
    const auto other = desk.desktop().openWindow(of(qt));
    desk.press("right");
    EXPECT_TRUE(reaches(*other, rightHalf));
    EXPECT_EQ(window->frame(), usual);
}

TEST(KWinSnap, whatWasThereBeforeACrashIsGivenBackByTheNextRun) {
    PlasmaDesk desk;
    EXPECT_EQ(desk.edges(), "false false");
    desk.killProgram();
    const auto note = desk.desktop().session().folder() / "run" / "lumatile-kwin-edges.json";
    EXPECT_TRUE(std::filesystem::exists(note));
    desk.startProgram();
    EXPECT_EQ(desk.endProgram(), "");
    EXPECT_EQ(desk.edges(), "true true");
    EXPECT_FALSE(std::filesystem::exists(note)) << "the user may set something else now";
}

TEST(KWinSnap, aScriptThatSomebodyHasUnloadedIsLoadedAgain) {
    PlasmaDesk desk;
    const auto window = desk.desktop().openWindow(of(qt));
    window->place(usual);
    ChildProcess unload = desk.desktop().session().start(
        {"gdbus", "call", "--session", "-d", "org.kde.KWin", "-o", "/Scripting", "-m",
         "org.kde.kwin.Scripting.unloadScript", "lumatile"},
        "unload");
    unload.wait(Deadline::usual());
    // It is noticed when the script leaves a question unasked.
    EXPECT_TRUE(snapsInTheEnd(desk, *window));
}

TEST(KWinSnap, aKWinThatCrashesIsWaitedFor) {
    PlasmaDesk desk;
    const pid_t pid = desk.program().pid();
    desk.desktop().server().crash();
    desk.desktop().restart();
    const auto window = desk.desktop().openWindow(of(qt));
    window->place(usual);
    EXPECT_TRUE(snapsInTheEnd(desk, *window)) << desk.program().output();
    EXPECT_EQ(desk.program().pid(), pid);
    EXPECT_TRUE(desk.program().isRunning());
    EXPECT_EQ(desk.endProgram(), "");
}

}  // namespace
}  // namespace lumatile::desktop
