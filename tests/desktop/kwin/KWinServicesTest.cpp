// What the program is to its user beside snapping, in a KWin Wayland session: the item in the bar,
// windows that come in front, the control interface, and what it says where KWin is locked.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "onboarding/OnboardingTexts.h"
#include "tests/desktop/kwin/FakeShortcutService.h"
#include "tests/desktop/kwin/PlasmaDesk.h"
#include "tests/desktop/support/AccessibleTree.h"
#include "tests/desktop/support/StatusBar.h"

namespace lumatile::desktop {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

const Rect usual{200, 150, 700, 450};
const Rect leftHalf{0, 0, 960, 1080};
const Rect rightHalf{960, 0, 960, 1080};

std::string busOf(const PrivateSession& session) {
    return session.environment().at("DBUS_SESSION_BUS_ADDRESS");
}

/// The program's window of this title.
std::optional<WindowState> windowTitled(PlasmaDesk& desk, const std::string& title) {
    const pid_t pid = desk.program().pid();
    return desk.probe().find(
        [&](const WindowState& state) { return state.pid == pid && state.caption == title; });
}

testing::AssertionResult comesInFront(PlasmaDesk& desk, const std::string& title) {
    if (waitInSession([&] {
            const auto window = windowTitled(desk, title);
            return window && window->active && !window->minimized;
        })) {
        return testing::AssertionSuccess();
    }
    const auto active = desk.probe().active();
    return testing::AssertionFailure()
           << "in front is " << (active ? active->caption : std::string("nothing"));
}

TEST(KWinServices, theItemComesToABarThatIsLateAndToOneThatStartsAgain) {
    PlasmaDesk desk;
    const std::string bus = busOf(desk.desktop().session());
    auto bar = std::make_unique<StatusBar>(bus);
    ASSERT_FALSE(bar->waitForItem().isEmpty());
    bar.reset();
    bar = std::make_unique<StatusBar>(bus);
    const QString item = bar->waitForItem();
    ASSERT_FALSE(item.isEmpty());
    const auto window = desk.desktop().openWindow({});
    window->place(usual);
    ASSERT_TRUE(bar->open(item));
    bar->click(item, bar->find(item, "Left Half").value().id);
    EXPECT_TRUE(reaches(*window, leftHalf));
    EXPECT_EQ(bar->find(item, "Left Half")->keys(), "Control+Alt+Left");
    bar->click(item, bar->find(item, "Quit Lumatile").value().id);
    EXPECT_EQ(desk.program().wait(), (ChildProcess::Exit{0, 0})) << desk.program().output();
}

TEST(KWinServices, windowsThatTheUserAsksForComeInFront) {
    PlasmaDesk desk;
    desk.keepWindowsFromPushing();
    StatusBar bar(busOf(desk.desktop().session()));
    const QString item = bar.waitForItem();
    ASSERT_FALSE(item.isEmpty());
    const auto other = desk.desktop().openWindow({});
    const std::string settings = "Lumatile Settings";

    EXPECT_EQ(desk.ask({"settings", "general"}), "");
    ASSERT_TRUE(comesInFront(desk, settings)) << "where there was none";
    other->activate();
    EXPECT_EQ(desk.ask({"settings"}), "");
    EXPECT_TRUE(comesInFront(desk, settings)) << "from behind another one";
    desk.probe().minimize(windowTitled(desk, settings).value().id, true);
    ASSERT_TRUE(waitInSession([&] { return windowTitled(desk, settings)->minimized; }));
    other->activate();
    EXPECT_EQ(desk.run({LUMATILE_PROGRAM}), "") << "what is less here is said by the first alone";
    EXPECT_THAT(desk.program().output(), HasSubstr("held mouse button"));
    EXPECT_TRUE(comesInFront(desk, settings)) << "minimized, by a second start";
    other->activate();
    bar.click(item, bar.find(item, "Settings…").value().id);
    EXPECT_TRUE(comesInFront(desk, settings)) << "by the menu";
    other->activate();
    bar.click(item, bar.find(item, "About Lumatile").value().id);
    EXPECT_TRUE(comesInFront(desk, "About Lumatile"));
    EXPECT_EQ(desk.endProgram(), "");
}

TEST(KWinServices, theControlInterfaceAnswers) {
    PlasmaDesk desk;
    const auto window = desk.desktop().openWindow({});
    window->place(usual);
    EXPECT_EQ(desk.ask({"run", "command.left"}), "");
    desk.probe().sync();
    EXPECT_EQ(window->frame(), leftHalf) << "it is there when the answer is";
    EXPECT_EQ(desk.ask({"run", "command.right"}), "");
    desk.probe().sync();
    EXPECT_EQ(window->frame(), rightHalf);
    EXPECT_THAT(desk.ask({"run", "command.nowhere"}), StartsWith("1: lumatilectl: "));
    EXPECT_THAT(desk.ask({"commands"}), HasSubstr("\tcommand.left\tLeft Half\n"));
    EXPECT_THAT(desk.ask({"status"}), StartsWith("Pixel shift: off\nEdge jitter: off\n"));
    EXPECT_EQ(desk.ask({"protection", "pixelShift", "on"}), "");
    EXPECT_THAT(desk.ask({"status"}), StartsWith("Pixel shift: on"));
    EXPECT_EQ(desk.ask({"quit"}), "");
    EXPECT_EQ(desk.program().wait(), (ChildProcess::Exit{0, 0})) << desk.program().output();
    EXPECT_EQ(desk.ask({"status"}), "3: lumatilectl: Lumatile is not running on this desktop\n");
}

TEST(KWinServices, aSilentServiceOfShortcutsHoldsTheStartUpOnce) {
    // A KWin to draw on, and on the program's bus one that is busy.
    PlasmaDesk desk(nullptr);
    const PrivateSession busy;
    FakeShortcutService kwin(busOf(busy));
    kwin.setSilent(true);
    LumatileProcess::Settings settings;
    settings.environment = {{"DBUS_SESSION_BUS_ADDRESS", busOf(busy)}};
    desk.startProgram(settings);
    // One question is waited for, and one tells when it speaks again.
    ASSERT_TRUE(kwin.waitUntilAsked(2));
    EXPECT_EQ(kwin.asked(),
              (std::vector<std::string>{"globalShortcutsByKey", "globalShortcutAvailable"}));
    EXPECT_EQ(desk.program().output().find("shortcut"), std::string::npos)
        << "nobody has refused any: " << desk.program().output();
    kwin.setSilent(false);
    // Each of them is asked for, registered and taken.
    const std::size_t shortcuts = defaultShortcuts().size();
    ASSERT_TRUE(kwin.waitUntilAsked(2 + 3 * shortcuts));
    EXPECT_EQ(kwin.actions().size(), shortcuts);
    EXPECT_EQ(desk.endProgram(), "");
}

TEST(KWinServices, whereKWinTakesNoScriptsTheSetupSaysSo) {
    // A KWin to draw on, and on the program's bus one that refuses.
    PlasmaDesk desk(nullptr);
    const PrivateSession locked;
    const FakeShortcutService kwin(busOf(locked), false);
    LumatileProcess::Settings settings;
    settings.environment = {{"DBUS_SESSION_BUS_ADDRESS", busOf(locked)},
                            // Otherwise only while a screen reader runs.
                            {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}};
    AccessibleTree tree(busOf(locked));
    desk.startProgram(settings);
    EXPECT_TRUE(waitInSession([&] { return windowTitled(desk, "Lumatile Setup").has_value(); }));
    ASSERT_TRUE(tree.waitForProgram("lumatile"));
    const std::string sentence(OnboardingTexts::missing(TrustObstacle::windowManagerRefuses));
    EXPECT_TRUE(waitInSession([&] { return tree.find("label", sentence).has_value(); }));
    const auto window = desk.desktop().openWindow({});
    window->place(usual);
    desk.press("left");
    EXPECT_EQ(desk.endProgram(), "");
    EXPECT_EQ(window->frame(), usual) << "no shortcut was taken";
}

}  // namespace
}  // namespace lumatile::desktop
