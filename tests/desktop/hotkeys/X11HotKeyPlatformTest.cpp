#include "platform/x11/X11HotKeyPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "commands/BuiltInCommands.h"
#include "commands/Shortcut.h"
#include "platform/x11/X11ShortcutText.h"
#include "platform/x11/XkbProtocol.h"
#include "tests/desktop/hotkeys/HotKeyDesk.h"
#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/InputDriver.h"
#include "tests/desktop/support/PrivateServer.h"
#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/WindowManager.h"

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Keys = std::vector<std::uint8_t>;

constexpr std::uint32_t controlOption = ClassicModifier::control | ClassicModifier::option;
constexpr std::uint32_t leftArrow = 123;
constexpr std::uint32_t rightArrow = 124;
constexpr std::uint32_t letterU = 32;
constexpr std::uint32_t letterI = 34;
constexpr std::uint32_t letterJ = 38;
constexpr std::uint32_t letterK = 40;

constexpr unsigned controlAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
constexpr std::array<unsigned, 4> lockStates = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2,
                                                XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};

const Keys controlAltKeys = {KeyPosition::leftControl, KeyPosition::leftAlt};

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

class HotKeyTest : public testing::Test {
protected:
    /// Runs a program of the server to its end.
    void run(std::vector<std::string> command) {
        ChildProcess::Start start;
        start.command = std::move(command);
        start.environment = inheritedEnvironment();
        start.environment["DISPLAY"] = server_.display();
        start.output = folder_.path() / "output";
        const auto exit = ChildProcess(start).wait(Deadline::usual());
        ASSERT_EQ(exit, (ChildProcess::Exit{0, 0})) << readFile(start.output);
    }

    /// The same, and then the hot keys have followed the change of the keyboard.
    void changeKeyboard(std::vector<std::string> command) {
        desk_.presses();
        desk_.keyboardChanged();
        run(std::move(command));
        ASSERT_TRUE(desk_.runUntil([&] { return desk_.keyboardChanged(); }));
        desk_.presses();
    }

    PrivateServer server_{MonitorLayout::landscape(), PrivateServer::Kind::virtualFramebuffer};
    TemporaryFolder folder_;
    InputDriver input_{server_.display()};
    HotKeyDesk desk_{server_.display()};
};

// --- Every shortcut, in every state of the locks, under every window manager ---

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
            << x11ShortcutText(shortcuts[i].carbonKeyCode, shortcuts[i].carbonModifiers);
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
            refused.insert(x11ShortcutText(keyCode, modifiers));
        }
    }
    EXPECT_EQ(refused, ownBindings.at(GetParam()));
    std::set<std::string> listed;
    for (const auto& [keyCode, modifiers] : desk.hotKeys().refusedRegistrations()) {
        listed.insert(x11ShortcutText(keyCode, modifiers));
    }
    EXPECT_EQ(listed, refused);
    // The window manager's own come last: some open a view of the workspaces that takes all keys.
    const auto press = [&](bool ownOnes) {
        for (const auto& [keyCode, modifiers, enabled] : shortcuts) {
            if (refused.contains(x11ShortcutText(keyCode, modifiers)) == ownOnes) {
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

// --- Presses ---

TEST_F(HotKeyTest, onlyTheExactCombinationRuns) {
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 1));
    ASSERT_TRUE(desk_.want(leftArrow, controlOption | ClassicModifier::command, 2));
    ASSERT_TRUE(desk_.want(leftArrow, controlOption | ClassicModifier::shift, 3));
    input_.press({}, KeyPosition::left);
    input_.press(Keys{KeyPosition::leftControl}, KeyPosition::left);
    input_.press(Keys{KeyPosition::leftAlt}, KeyPosition::left);
    input_.press(controlAltKeys, KeyPosition::right);
    EXPECT_THAT(desk_.presses(), IsEmpty());
    input_.press(Keys{KeyPosition::leftControl, KeyPosition::leftAlt, KeyPosition::leftShift},
                 KeyPosition::left);
    input_.press(Keys{KeyPosition::leftSuper, KeyPosition::leftControl, KeyPosition::leftAlt},
                 KeyPosition::left);
    input_.press(controlAltKeys, KeyPosition::left);
    EXPECT_THAT(desk_.presses(), ElementsAre(3, 2, 1));
}

TEST_F(HotKeyTest, aHeldCombinationRunsOnce) {
    run({"xset", "r", "rate", "100", "50"});
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 1));
    for (int round = 1; round <= 2; ++round) {
        for (const std::uint8_t key : controlAltKeys) {
            input_.keyDown(key);
        }
        const std::size_t before = desk_.pressesSent();
        input_.keyDown(KeyPosition::left);
        // The server does repeat the key.
        ASSERT_TRUE(desk_.runUntil([&] { return desk_.pressesSent() >= before + 6; }));
        input_.keyUp(KeyPosition::left);
        for (const std::uint8_t key : controlAltKeys) {
            input_.keyUp(key);
        }
        EXPECT_EQ(desk_.presses().size(), static_cast<std::size_t>(round));
    }
}

TEST_F(HotKeyTest, aKeyHeldAcrossANewRegistrationDoesNotRunAgain) {
    run({"xset", "r", "rate", "100", "50"});
    const auto first = desk_.want(leftArrow, controlOption, 1);
    ASSERT_TRUE(first);
    for (const std::uint8_t key : controlAltKeys) {
        input_.keyDown(key);
    }
    input_.keyDown(KeyPosition::left);
    ASSERT_TRUE(desk_.runUntil([&] { return desk_.pressesSent() >= 2; }));
    desk_.hotKeys().unregisterHotKey(*first);
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 2));
    ASSERT_TRUE(desk_.runUntil([&] { return desk_.pressesSent() >= 5; }));
    EXPECT_THAT(desk_.presses(), ElementsAre(1));
    input_.keyUp(KeyPosition::left);
    input_.keyDown(KeyPosition::left);
    EXPECT_THAT(desk_.presses(), ElementsAre(1, 2));
}

TEST_F(HotKeyTest, aSecondKeyWhileTheFirstIsHeldRunsItsOwn) {
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    ASSERT_TRUE(desk_.want(letterI, controlOption, 2));
    for (const std::uint8_t key : controlAltKeys) {
        input_.keyDown(key);
    }
    input_.keyDown(KeyPosition::u);
    input_.keyDown(KeyPosition::i);
    input_.keyUp(KeyPosition::i);
    input_.keyDown(KeyPosition::j);  // Not registered, but seen while the first key is held.
    input_.keyUp(KeyPosition::j);
    input_.keyDown(KeyPosition::i);
    input_.keyUp(KeyPosition::u);
    input_.keyUp(KeyPosition::i);
    input_.keyDown(KeyPosition::i);
    EXPECT_THAT(desk_.presses(), ElementsAre(1, 2, 2, 2));
}

TEST_F(HotKeyTest, aPressDuringAWaitRunsAfterIt) {
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    input_.press(controlAltKeys, KeyPosition::u);
    desk_.connection().synchronize();
    EXPECT_GE(desk_.pressesSent(), 1U);
    EXPECT_THAT(desk_.delivered(), IsEmpty());
    desk_.connection().dispatch();
    EXPECT_THAT(desk_.delivered(), ElementsAre(1));
}

TEST_F(HotKeyTest, aPressWhileAnotherActsRunsAfterItIsDone) {
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    ASSERT_TRUE(desk_.want(letterI, controlOption, 2));
    std::vector<std::string> story;
    desk_.hotKeys().installHandler([&](std::optional<HotKeyID> id) {
        story.push_back("begin " + std::to_string(id->id));
        if (id->id == 1) {
            input_.press(controlAltKeys, KeyPosition::i);
            desk_.connection().synchronize();  // As a window write waits for its answer.
        }
        story.push_back("end " + std::to_string(id->id));
        return 0;
    });
    input_.press(controlAltKeys, KeyPosition::u);
    desk_.presses();
    EXPECT_THAT(story, ElementsAre("begin 1", "end 1", "begin 2", "end 2"));
}

TEST_F(HotKeyTest, aBurstRunsInOrder) {
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    ASSERT_TRUE(desk_.want(letterI, controlOption, 2));
    ASSERT_TRUE(desk_.want(letterJ, controlOption, 3));
    ASSERT_TRUE(desk_.want(letterK, controlOption, 4));
    for (const std::uint8_t key : {KeyPosition::k, KeyPosition::u, KeyPosition::j, KeyPosition::i,
                                   KeyPosition::u, KeyPosition::u, KeyPosition::k}) {
        input_.press(controlAltKeys, key);
    }
    EXPECT_THAT(desk_.presses(), ElementsAre(4, 1, 3, 2, 1, 1, 4));
}

TEST_F(HotKeyTest, aPressGivenBackBeforeItsTurnDoesNothing) {
    const auto reference = desk_.want(letterU, controlOption, 1);
    ASSERT_TRUE(reference);
    input_.press(controlAltKeys, KeyPosition::u);
    desk_.connection().synchronize();
    desk_.hotKeys().unregisterHotKey(*reference);
    EXPECT_THAT(desk_.presses(), IsEmpty());
}

TEST_F(HotKeyTest, keysThatAProgramSendsAreNotTheUsers) {
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    xcb_key_press_event_t event{};
    event.response_type = XCB_KEY_PRESS;
    event.detail = KeyPosition::u;
    event.state = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
    event.event = event.root = input_.root();
    event.same_screen = 1;
    // To whoever listens to the root; that the event arrives at all is seen below.
    const std::size_t before = desk_.pressesSent();
    desk_.connection().selectRootEvents(XCB_EVENT_MASK_KEY_PRESS);
    desk_.connection().synchronize();
    xcb_send_event(input_.connection(), 0, input_.root(), XCB_EVENT_MASK_KEY_PRESS,
                   reinterpret_cast<const char*>(&event));
    input_.roundTrip();
    EXPECT_THAT(desk_.presses(), IsEmpty());
    EXPECT_EQ(desk_.pressesSent(), before + 1);
}

TEST_F(HotKeyTest, anotherLayoutInUseLeavesTheKeysWhereTheyLie) {
    changeKeyboard({"setxkbmap", "-rules", "evdev", "-model", "pc105", "-layout", "us,ru"});
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    xcb_xkb_use_extension(input_.connection(), 1, 0);
    for (const std::uint8_t group : Keys{0, 1, 0}) {
        xcb_xkb_latch_lock_state(input_.connection(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0,
                                 0);
        input_.roundTrip();
        input_.press(controlAltKeys, KeyPosition::u);
    }
    EXPECT_THAT(desk_.presses(), ElementsAre(1, 1, 1));
}

// --- Registrations ---

TEST_F(HotKeyTest, unknownKeysAndCombinationsOfOurOwnAreRefused) {
    EXPECT_FALSE(desk_.want(52, controlOption, 1));
    EXPECT_FALSE(desk_.want(0xffffffff, controlOption, 2));
    EXPECT_TRUE(desk_.want(letterU, controlOption, 3));
    EXPECT_FALSE(desk_.want(letterU, controlOption, 4));
    // Bits that are no modifier of a shortcut make no other combination.
    EXPECT_FALSE(desk_.want(letterU, controlOption | 0x400U, 5));
    EXPECT_TRUE(desk_.want(letterI, controlOption | 0xffff0000U, 6));
    input_.press(controlAltKeys, KeyPosition::u);
    input_.press(controlAltKeys, KeyPosition::i);
    EXPECT_THAT(desk_.presses(), ElementsAre(3, 6));
}

TEST_F(HotKeyTest, aCombinationThatAnotherHasInOneLockStateIsRefusedWhole) {
    OtherProgram owner(server_.display());
    OtherProgram third(server_.display());
    for (const unsigned taken : lockStates) {
        ASSERT_TRUE(owner.take(KeyPosition::left, controlAlt | taken));
        EXPECT_FALSE(desk_.want(leftArrow, controlOption, 1));
        EXPECT_THAT(desk_.hotKeys().refusedRegistrations(),
                    ElementsAre(X11HotKeyPlatform::Refused{leftArrow, controlOption}));
        // Nothing of it is kept: a third program gets every other state of the locks.
        desk_.connection().synchronize();
        for (const unsigned state : lockStates) {
            EXPECT_EQ(third.take(KeyPosition::left, controlAlt | state), state != taken);
            third.giveBack(KeyPosition::left, controlAlt | state);
        }
        input_.press(controlAltKeys, KeyPosition::left);
        owner.giveBack(KeyPosition::left, controlAlt | taken);
    }
    EXPECT_THAT(desk_.presses(), IsEmpty());
}

TEST_F(HotKeyTest, refusalsAreForgottenWhenTheCombinationIsHadOrAllIsGivenBack) {
    const auto up = desk_.want(126, controlOption, 1);
    ASSERT_TRUE(up);
    OtherProgram owner(server_.display());
    ASSERT_TRUE(owner.take(KeyPosition::left, controlAlt));
    ASSERT_TRUE(owner.take(KeyPosition::right, controlAlt));
    EXPECT_FALSE(desk_.want(leftArrow, controlOption, 2));
    EXPECT_FALSE(desk_.want(rightArrow, controlOption, 3));
    EXPECT_EQ(desk_.hotKeys().refusedRegistrations().size(), 2U);
    owner.giveBack(KeyPosition::left, controlAlt);
    const auto left = desk_.want(leftArrow, controlOption, 4);
    ASSERT_TRUE(left);
    EXPECT_THAT(desk_.hotKeys().refusedRegistrations(),
                ElementsAre(X11HotKeyPlatform::Refused{rightArrow, controlOption}));
    desk_.hotKeys().unregisterHotKey(*up);
    EXPECT_EQ(desk_.hotKeys().refusedRegistrations().size(), 1U);
    desk_.hotKeys().unregisterHotKey(*left);
    EXPECT_THAT(desk_.hotKeys().refusedRegistrations(), IsEmpty());
}

TEST_F(HotKeyTest, whatIsGivenBackIsFree) {
    const auto reference = desk_.want(leftArrow, controlOption, 1);
    ASSERT_TRUE(reference);
    ASSERT_TRUE(desk_.want(rightArrow, controlOption, 2));
    OtherProgram other(server_.display());
    EXPECT_FALSE(other.take(KeyPosition::left, controlAlt));
    desk_.hotKeys().unregisterHotKey(*reference);
    desk_.hotKeys().unregisterHotKey(*reference);  // A second time is harmless.
    desk_.connection().synchronize();
    for (const unsigned state : lockStates) {
        EXPECT_TRUE(other.take(KeyPosition::left, controlAlt | state));
        EXPECT_FALSE(other.take(KeyPosition::right, controlAlt | state));
    }
    input_.press(controlAltKeys, KeyPosition::left);
    EXPECT_THAT(desk_.presses(), IsEmpty());
    desk_.closeHotKeys();
    desk_.connection().synchronize();
    EXPECT_TRUE(other.take(KeyPosition::right, controlAlt));
}

TEST_F(HotKeyTest, aPressOnItsWayAtTheEndDoesNothing) {
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    input_.press(controlAltKeys, KeyPosition::u);
    desk_.connection().synchronize();
    desk_.closeHotKeys();
    desk_.connection().dispatch();
    EXPECT_THAT(desk_.delivered(), IsEmpty());
}

TEST_F(HotKeyTest, withoutAServerEverythingIsRefused) {
    const auto reference = desk_.want(letterU, controlOption, 1);
    ASSERT_TRUE(reference);
    server_.stop();
    EXPECT_FALSE(desk_.want(letterI, controlOption, 2));
    desk_.hotKeys().unregisterHotKey(*reference);
    EXPECT_TRUE(desk_.connection().isLost());
}

// --- Changes of the keyboard ---

TEST_F(HotKeyTest, followsModifiersThatAreMoved) {
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 1));
    changeKeyboard({"xmodmap", "-e", "clear Mod1", "-e", "clear Mod4", "-e", "add Mod1 = Super_L",
                    "-e", "add Mod4 = Alt_L"});
    ASSERT_TRUE(desk_.runUntil([&] {
        OtherProgram other(server_.display());
        return other.take(KeyPosition::left, controlAlt);  // The former grab is given back.
    }));
    input_.press(controlAltKeys, KeyPosition::left);
    input_.press(Keys{KeyPosition::leftControl, KeyPosition::leftSuper}, KeyPosition::left);
    EXPECT_THAT(desk_.presses(), ElementsAre(1));
}

TEST_F(HotKeyTest, followsLocksThatAreMoved) {
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 1));
    changeKeyboard({"xmodmap", "-e", "clear Mod2", "-e", "add Mod3 = Num_Lock", "-e",
                    "add Mod2 = Scroll_Lock"});
    OtherProgram other(server_.display());
    ASSERT_TRUE(desk_.runUntil([&] {
        constexpr unsigned locked = controlAlt | XCB_MOD_MASK_2 | XCB_MOD_MASK_3;
        if (!other.take(KeyPosition::left, locked)) {
            return true;
        }
        other.giveBack(KeyPosition::left, locked);  // Or nobody else could have it.
        return false;
    }));
    std::size_t expected = 0;
    for (const bool num : {false, true}) {
        for (const bool scroll : {false, true}) {
            ASSERT_TRUE(input_.setLock(KeyPosition::numLock, num));
            ASSERT_TRUE(input_.setLock(KeyPosition::scrollLock, scroll));
            input_.press(controlAltKeys, KeyPosition::left);
            EXPECT_EQ(desk_.presses().size(), ++expected) << num << scroll;
        }
    }
}

TEST_F(HotKeyTest, followsKeysThatAreNumberedAnew) {
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 1));
    ASSERT_TRUE(desk_.want(letterU, controlOption, 2));
    // The older numbering of PC keyboards: letters lie where they lay, the left arrow is 100.
    constexpr std::uint8_t formerLeft = 100;
    const auto keymap =
        folder_.write("keymap",
                      "xkb_keymap { xkb_keycodes { include \"xfree86+aliases(qwerty)\" };"
                      " xkb_types { include \"complete\" }; xkb_compat { include \"complete\" };"
                      " xkb_symbols { include \"pc+us+inet(evdev)\" }; };");
    changeKeyboard({"xkbcomp", "-w0", keymap.string(), server_.display()});
    OtherProgram other(server_.display());
    ASSERT_TRUE(desk_.runUntil([&] { return other.take(KeyPosition::left, controlAlt); }));
    EXPECT_FALSE(other.take(formerLeft, controlAlt));
    input_.press(controlAltKeys, formerLeft);
    input_.press(controlAltKeys, KeyPosition::u);
    input_.press(controlAltKeys, KeyPosition::left);
    EXPECT_THAT(desk_.presses(), ElementsAre(1, 2));
}

TEST_F(HotKeyTest, aCombinationLostInAChangeIsTriedAgainAtTheNext) {
    constexpr unsigned controlMod4 = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_4;
    OtherProgram owner(server_.display());
    ASSERT_TRUE(owner.take(KeyPosition::left, controlMod4));
    ASSERT_TRUE(desk_.want(leftArrow, controlOption, 1));
    ASSERT_TRUE(desk_.want(letterU, controlOption, 2));
    const auto lost = [&] {
        return desk_.hotKeys().refusedRegistrations() ==
               std::vector{X11HotKeyPlatform::Refused{leftArrow, controlOption}};
    };
    // Alt becomes what the other program has.
    changeKeyboard({"xmodmap", "-e", "clear Mod1", "-e", "clear Mod4", "-e", "add Mod4 = Alt_L"});
    ASSERT_TRUE(desk_.runUntil(lost));
    input_.press(controlAltKeys, KeyPosition::left);
    input_.press(controlAltKeys, KeyPosition::u);
    EXPECT_THAT(desk_.presses(), ElementsAre(2));
    // It lets go; with the next change of the keyboard the registration is whole again.
    owner.giveBack(KeyPosition::left, controlMod4);
    changeKeyboard({"xmodmap", "-e", "add Mod5 = F12"});
    ASSERT_TRUE(desk_.runUntil([&] { return !lost(); }));
    input_.press(controlAltKeys, KeyPosition::left);
    EXPECT_THAT(desk_.presses(), ElementsAre(2, 1));
}

TEST_F(HotKeyTest, aPressBetweenTheChangeAndItsFollowingIsNotLost) {
    ASSERT_TRUE(desk_.want(letterU, controlOption, 1));
    run({"setxkbmap", "-rules", "evdev", "-model", "pc105", "-layout", "de"});
    input_.press(controlAltKeys, KeyPosition::u);
    EXPECT_THAT(desk_.presses(), ElementsAre(1));
    input_.press(controlAltKeys, KeyPosition::u);
    EXPECT_THAT(desk_.presses(), ElementsAre(1, 1));
}

}  // namespace
}  // namespace lumatile::desktop
