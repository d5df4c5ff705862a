// The program's shortcuts in a KWin Wayland session beside those of other programs, and on Plasma's
// page of shortcuts.

#include <gio/gio.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "tests/desktop/kwin/PlasmaDesk.h"
#include "tests/desktop/kwin/PlasmaShortcuts.h"
#include "tests/desktop/support/AccessibleTree.h"
#include "tests/desktop/support/KeyPosition.h"

namespace lumatile::desktop {
namespace {

namespace Key = KeyPosition;
using testing::EndsWith;
using testing::IsEmpty;

const Rect usual{200, 150, 700, 450};
const Rect leftHalf{0, 0, 960, 1080};
const Rect rightHalf{960, 0, 960, 1080};
const Rect leftThird{0, 0, 640, 1080};

constexpr std::int32_t controlAltLeft = PlasmaShortcuts::controlAlt(PlasmaShortcuts::left);
constexpr std::int32_t controlAltQ = PlasmaShortcuts::controlAlt('Q');

/// Whether the window gets there, the shortcut pressed as often as it takes: nothing tells when the
/// program has taken one.
bool getsThere(PlasmaDesk& desk, const NativeWindow& window, const Rect& wanted, std::uint8_t key) {
    const DefaultShortcut& modifiers = defaultShortcut("left");
    constexpr int mostPresses = 40;
    for (int press = 0; press < mostPresses && window.frame() != wanted; ++press) {
        desk.input().press(modifiers.modifiers(), key);
        waitInSession([&] { return window.frame() == wanted; },
                      Deadline::in(std::chrono::milliseconds(500)));
    }
    return window.frame() == wanted;
}

TEST(KWinHotKeys, whatAnotherProgramHasIsNamedAndTakenWhenItLetsGo) {
    PlasmaDesk desk(nullptr);
    PlasmaShortcuts shortcuts(desk.desktop().session());
    ASSERT_TRUE(shortcuts.take("Player", "Rewind", controlAltLeft));
    LumatileProcess::Settings settings;
    // Otherwise only while a screen reader runs.
    settings.environment = {{"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}};
    desk.startProgram(settings);
    EXPECT_TRUE(waitInSession([&] {
        return desk.program().output().find("Ctrl+Alt+Left (Rewind of Player)") !=
               std::string::npos;
    })) << desk.program().output();
    EXPECT_EQ(shortcuts.keyOf("Player", "Rewind"), controlAltLeft);
    EXPECT_FALSE(shortcuts.actionsOf("lumatile").contains("Left Half"));

    AccessibleTree tree(desk.desktop().session().environment().at("DBUS_SESSION_BUS_ADDRESS"));
    // Its answer comes with the window, for which a busy machine needs longer than is waited for.
    desk.ask({"settings", "commands"});
    ASSERT_TRUE(tree.waitForProgram("lumatile"));
    const auto sentence =
        tree.waitFor("link", "1 shortcut belongs to another program on this desktop.");
    ASSERT_TRUE(sentence.has_value());
    ASSERT_TRUE(tree.act(*sentence, tree.actions(*sentence).at(0)));
    const std::string refused = "This shortcut belongs to “Rewind of Player”";
    EXPECT_TRUE(tree.waitFor("label", refused).has_value());

    // The user gives the other one something else on Plasma's page.
    shortcuts.change("Player", "Rewind", controlAltQ);
    EXPECT_TRUE(waitInSession([&] { return !tree.find("label", refused); }));
    EXPECT_EQ(shortcuts.keyOf("lumatile", shortcuts.actionsOf("lumatile")["Left Half"]),
              controlAltLeft);
    const auto window = desk.desktop().openWindow({});
    window->place(usual);
    desk.press("left");
    EXPECT_TRUE(reaches(*window, leftHalf));

    // On another layout one of the program's becomes what somebody else has.
    ASSERT_TRUE(shortcuts.take("Player", "Eject", PlasmaShortcuts::controlAlt('H')));
    desk.setLayouts("us", "dvorak");
    EXPECT_TRUE(waitInSession([&] {
        return desk.program().output().find("Ctrl+Alt+H (Eject of Player)") != std::string::npos;
    }));
    EXPECT_THAT(desk.program().output(),
                EndsWith("\nLumatile: shortcuts that belong to other programs here: "
                         "Ctrl+Alt+Left (Rewind of Player)\n"
                         "Lumatile: shortcuts that other programs have let go and that work now: "
                         "Ctrl+Alt+Left\n"
                         "Lumatile: shortcuts that belong to other programs here: "
                         "Ctrl+Alt+H (Eject of Player)\n"));

    EXPECT_EQ(desk.endProgram(), "");
    EXPECT_THAT(shortcuts.actionsOf("lumatile"), IsEmpty()) << "everything has been given back";
    EXPECT_TRUE(shortcuts.take("Player", "Back", controlAltLeft));
    EXPECT_EQ(desk.run({"gdbus", "call", "--session", "-d", "org.kde.KWin", "-o", "/Scripting",
                        "-m", "org.kde.kwin.Scripting.isScriptLoaded", "lumatile"}),
              "(false,)\n");
}

TEST(KWinHotKeys, whatTheUserChangesOnPlasmasPageIsAnEdit) {
    PlasmaDesk desk;
    PlasmaShortcuts shortcuts(desk.desktop().session());
    const std::string leftAction = shortcuts.actionsOf("lumatile")["Left Half"];
    ASSERT_EQ(shortcuts.keyOf("lumatile", leftAction), controlAltLeft);
    const auto window = desk.desktop().openWindow({});
    window->place(usual);
    shortcuts.change("lumatile", leftAction, controlAltQ);
    EXPECT_TRUE(getsThere(desk, *window, leftHalf, Key::q));
    EXPECT_EQ(shortcuts.keyOf("lumatile", leftAction), controlAltQ);
    const auto stored = [&] { return readFile(desk.program().settingsFile()); };
    // Its place on the keyboard, as stored for every system.
    EXPECT_TRUE(waitInSession([&] {
        return stored().find(R"(\"carbonKeyCode\":12,)") != std::string::npos;
    })) << stored();
    // The one of before does nothing any more; the next one does.
    window->place(usual);
    desk.probe().forgetFrames();
    desk.press("left");
    desk.press("right");
    EXPECT_TRUE(reaches(*window, rightHalf));
    EXPECT_EQ(desk.probe().framesOf(window->id()), (std::vector<Rect>{usual, rightHalf}));

    shortcuts.change("lumatile", leftAction, 0);
    EXPECT_TRUE(waitInSession([&] {
        return !shortcuts.actionsOf("lumatile").contains("Left Half");
    })) << "it has been switched off";
    EXPECT_EQ(desk.endProgram(), "");
}

TEST(KWinHotKeys, theyFollowTheLayout) {
    PlasmaDesk desk;
    const auto window = desk.desktop().openWindow({});
    window->place(usual);
    desk.press("leftThird");
    EXPECT_TRUE(reaches(*window, leftThird));
    PlasmaShortcuts shortcuts(desk.desktop().session());
    const std::string action = shortcuts.actionsOf("lumatile")["Left Third"];
    EXPECT_EQ(shortcuts.keyOf("lumatile", action), PlasmaShortcuts::controlAlt('D'));

    // A second layout comes, and is then chosen.
    desk.setLayouts("us,us", ",dvorak");
    desk.chooseLayout(1);
    EXPECT_TRUE(waitInSession(
        [&] { return shortcuts.keyOf("lumatile", action) == PlasmaShortcuts::controlAlt('E'); }));
    window->place(usual);
    desk.press("leftThird");
    EXPECT_TRUE(reaches(*window, leftThird));

    // The only one is another one.
    desk.setLayouts("us", "colemak");
    EXPECT_TRUE(waitInSession(
        [&] { return shortcuts.keyOf("lumatile", action) == PlasmaShortcuts::controlAlt('S'); }));
    window->place(usual);
    desk.press("leftThird");
    EXPECT_TRUE(reaches(*window, leftThird));
    EXPECT_EQ(desk.endProgram(), "");
}

}  // namespace
}  // namespace lumatile::desktop
