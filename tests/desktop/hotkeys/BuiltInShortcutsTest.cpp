#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Lumatile/ShortcutWords.h"
#include "commands/BuiltInCommands.h"
#include "commands/Shortcut.h"
#include "tests/desktop/hotkeys/HotKeyDesk.h"
#include "tests/desktop/support/InputDriver.h"
#include "tests/desktop/support/PrivateServer.h"
#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/WindowManager.h"

// Every shortcut, in every state of the locks, under every window manager.

namespace lumatile::desktop {
namespace {

using testing::IsEmpty;
using Keys = std::vector<std::uint8_t>;

// Where the keys of the built-in shortcuts lie, stated here once more: what the program's own table
// says must be seen to be right on a server.
const std::map<std::uint32_t, std::uint8_t> keyPlaces = {
    {123, KeyPosition::left}, {124, KeyPosition::right},    {126, KeyPosition::up},
    {125, KeyPosition::down}, {32, KeyPosition::u},         {34, KeyPosition::i},
    {38, KeyPosition::j},     {40, KeyPosition::k},         {2, KeyPosition::d},
    {3, KeyPosition::f},      {5, KeyPosition::g},          {14, KeyPosition::e},
    {15, KeyPosition::r},     {17, KeyPosition::t},         {36, KeyPosition::enter},
    {8, KeyPosition::c},      {51, KeyPosition::backspace},
};

/// The shortcuts of the built-in commands, each once: twins share theirs.
std::vector<Shortcut> builtInShortcuts() {
    std::vector<Shortcut> shortcuts;
    for (const SnapCommand& command : BuiltInCommands::defaults()) {
        if (command.shortcut &&
            std::find(shortcuts.begin(), shortcuts.end(), *command.shortcut) == shortcuts.end()) {
            shortcuts.push_back(*command.shortcut);
        }
    }
    return shortcuts;
}

Keys modifierKeys(std::uint32_t modifiers) {
    Keys keys;
    const auto add = [&](std::uint32_t bit, std::uint8_t key) {
        if ((modifiers & bit) != 0) {
            keys.push_back(key);
        }
    };
    add(ClassicModifier::control, KeyPosition::leftControl);
    add(ClassicModifier::option, KeyPosition::leftAlt);
    add(ClassicModifier::shift, KeyPosition::leftShift);
    add(ClassicModifier::command, KeyPosition::leftSuper);
    return keys;
}

using Manager = std::optional<WindowManager::Kind>;

class BuiltInShortcutsTest : public testing::TestWithParam<Manager> {};

TEST_P(BuiltInShortcutsTest, eachRunsOnceWhateverIsLocked) {
    PrivateServer server(MonitorLayout::landscape());
    PrivateSession session(server.display());
    std::unique_ptr<WindowManager> manager;
    if (GetParam()) {
        manager = std::make_unique<WindowManager>(session, *GetParam());
    }
    // Scroll Lock is a modifier on few keyboards; on this one it is.
    ASSERT_EQ(session.start({"xmodmap", "-e", "add Mod3 = Scroll_Lock"}, "xmodmap")
                  .wait(Deadline::usual()),
              (ChildProcess::Exit{0, 0}));
    InputDriver input(server.display());
    HotKeyDesk desk(server.display());

    const std::vector<Shortcut> shortcuts = builtInShortcuts();
    ASSERT_EQ(shortcuts.size(), 19U);
    for (std::uint32_t i = 0; i < shortcuts.size(); ++i) {
        EXPECT_TRUE(desk.want(shortcuts[i].carbonKeyCode, shortcuts[i].carbonModifiers, i + 1))
            << ShortcutWords::of(shortcuts[i], {});
    }
    EXPECT_THAT(desk.hotKeys().refusedRegistrations(), IsEmpty());
    for (unsigned locks = 0; locks < 8; ++locks) {
        ASSERT_TRUE(input.setLock(KeyPosition::capsLock, (locks & 1U) != 0));
        ASSERT_TRUE(input.setLock(KeyPosition::numLock, (locks & 2U) != 0));
        ASSERT_TRUE(input.setLock(KeyPosition::scrollLock, (locks & 4U) != 0));
        std::vector<std::uint32_t> expected;
        desk.forgetPresses();
        for (std::uint32_t i = 0; i < shortcuts.size(); ++i) {
            input.press(modifierKeys(shortcuts[i].carbonModifiers),
                        keyPlaces.at(shortcuts[i].carbonKeyCode));
            expected.push_back(i + 1);
        }
        EXPECT_EQ(desk.presses(), expected) << "locks " << locks;
    }
}

std::string managerName(const testing::TestParamInfo<Manager>& tested) {
    return tested.param ? toString(*tested.param) : "none";
}

INSTANTIATE_TEST_SUITE_P(Managers, BuiltInShortcutsTest,
                         testing::Values(Manager{}, WindowManager::Kind::openbox,
                                         WindowManager::Kind::xfwm4, WindowManager::Kind::kwin,
                                         WindowManager::Kind::metacity),
                         managerName);

// What each window manager keeps for itself when nobody has changed its bindings.
const std::map<WindowManager::Kind, std::set<std::string>> ownBindings = {
    {WindowManager::Kind::openbox,
     {"Ctrl+Alt+Left", "Ctrl+Alt+Right", "Ctrl+Alt+Up", "Ctrl+Alt+Down"}},
    {WindowManager::Kind::xfwm4,
     {"Ctrl+Alt+Left", "Ctrl+Alt+Right", "Ctrl+Alt+Up", "Ctrl+Alt+Down", "Ctrl+Alt+D"}},
    {WindowManager::Kind::kwin, {}},
    {WindowManager::Kind::metacity,
     {"Ctrl+Alt+Left", "Ctrl+Alt+Right", "Ctrl+Alt+Up", "Ctrl+Alt+Down"}},
};

class OwnBindingsTest : public testing::TestWithParam<WindowManager::Kind> {};

TEST_P(OwnBindingsTest, whatTheWindowManagerHasIsRefusedAndTheRestWorks) {
    PrivateServer server(MonitorLayout::landscape());
    PrivateSession session(server.display());
    const WindowManager manager(session, GetParam(), {.ownBindings = true, .compositing = false});
    InputDriver input(server.display());
    HotKeyDesk desk(server.display());

    const std::vector<Shortcut> shortcuts = builtInShortcuts();
    std::set<std::string> refused;
    std::vector<std::uint32_t> expected;
    for (std::uint32_t i = 0; i < shortcuts.size(); ++i) {
        const auto& [keyCode, modifiers, enabled] = shortcuts[i];
        if (desk.want(keyCode, modifiers, i + 1)) {
            expected.push_back(i + 1);
        } else {
            refused.insert(ShortcutWords::of({keyCode, modifiers, true}, {}));
        }
    }
    EXPECT_EQ(refused, ownBindings.at(GetParam()));
    std::set<std::string> listed;
    for (const auto& [keyCode, modifiers] : desk.hotKeys().refusedRegistrations()) {
        listed.insert(ShortcutWords::of({keyCode, modifiers, true}, {}));
    }
    EXPECT_EQ(listed, refused);
    // The window manager's own come last: some open a view of the workspaces that takes all keys.
    const auto press = [&](bool ownOnes) {
        for (const auto& [keyCode, modifiers, enabled] : shortcuts) {
            if (refused.contains(ShortcutWords::of({keyCode, modifiers, true}, {})) == ownOnes) {
                input.press(modifierKeys(modifiers), keyPlaces.at(keyCode));
            }
        }
    };
    press(false);
    EXPECT_EQ(desk.presses(), expected);
    press(true);
    EXPECT_EQ(desk.presses(), expected);
}

INSTANTIATE_TEST_SUITE_P(Managers, OwnBindingsTest, testing::ValuesIn(WindowManager::kinds),
                         [](const auto& tested) { return toString(tested.param); });

}  // namespace
}  // namespace lumatile::desktop
