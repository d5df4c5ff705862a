// Hot keys with a service of the tests' own in the place of Plasma's, which can be as silent, as
// busy and as changeable as the real one seldom is.

#include "platform/kwin/KWinHotKeyPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "commands/Shortcut.h"
#include "platform/kwin/KWinKey.h"
#include "platform/simulated/SimulatedClock.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "tests/desktop/kwin/FakeShortcutService.h"
#include "tests/desktop/support/MainLoop.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::desktop {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::Not;

constexpr std::uint32_t both = ClassicModifier::control | ClassicModifier::option;

// Virtual key codes.
constexpr std::uint32_t keyA = 0;
constexpr std::uint32_t keyQ = 12;
constexpr std::uint32_t keyLeft = 123;

std::int32_t keyFor(std::uint32_t keysym) { return KWinKey::of(keysym, both).value(); }

class KWinHotKeyPlatformTest : public testing::Test {
protected:
    KWinHotKeyPlatformTest() {
        setenv("XDG_RUNTIME_DIR", session.folder().c_str(), 1);
        channel = std::make_unique<KWinChannel>(address(), runLoop);
        platform.emplace(*channel, runLoop,
                         [this](std::uint32_t code) -> std::optional<std::uint32_t> {
                             return isKeyboardKnown ? std::optional(symbols[code]) : std::nullopt;
                         });
        platform->installHandler([this](std::optional<HotKeyID> id) {
            pressed.push_back(id->id);
            return 0;
        });
        platform->installReassigned(
            [this](HotKeyID id, const std::optional<KeyCombination>& combination) {
                reassigned[id.id] = combination;
            });
        platform->installAvailabilityChanged([this] { ++tellings; });
        EXPECT_TRUE(serve([&] { return channel->isAnswering(); }));
    }

    void TearDown() override {
        platform.reset();
        channel.reset();
        unsetenv("XDG_RUNTIME_DIR");
    }

    const std::string& address() { return session.environment().at("DBUS_SESSION_BUS_ADDRESS"); }

    bool serve(const std::function<bool()>& holds) {
        return runUntil([&] {
            runLoop.settle();
            return holds();
        });
    }

    /// Lets virtual time pass bit by bit, with whatever comes over the bus in between.
    void pass(double seconds) {
        constexpr double bit = 0.5;
        for (double passed = 0; passed < seconds; passed += bit) {
            runLoop.advance(bit);
            settleService();
            runReady();
        }
    }

    std::optional<HotKeyReference> take(std::uint32_t id, std::uint32_t keyCode,
                                        std::uint32_t modifiers = both) {
        const std::string number = std::to_string(id);
        platform->describe({1, id}, {"action" + number, "Action " + number});
        return platform->registerHotKey(keyCode, modifiers, {1, id});
    }

    /// A question answered by the service after everything that was asked before.
    void settleService() {
        if (channel->connection() == nullptr) {
            return;
        }
        channel->connection()->callNow(
            {"org.kde.kglobalaccel", "/kglobalaccel", "org.kde.KGlobalAccel", "unregister"},
            g_variant_new("(ss)", "nobody", "nothing"), 5000);
        runLoop.settle();
    }

    PrivateSession session{""};
    std::optional<FakeShortcutService> service{std::in_place, address()};
    SimulatedClock clock;
    SimulatedRunLoop runLoop{clock};
    std::map<std::uint32_t, std::uint32_t> symbols{
        {keyA, XKB_KEY_a}, {keyQ, XKB_KEY_q}, {keyLeft, XKB_KEY_Left}};
    bool isKeyboardKnown = true;
    std::vector<std::uint32_t> pressed;
    std::map<std::uint32_t, std::optional<KeyCombination>> reassigned;
    int tellings = 0;
    std::unique_ptr<KWinChannel> channel;
    std::optional<KWinHotKeyPlatform> platform;
};

TEST(KWinChannelAtStart, isNotWaitedForWhereKWinTakesNoScripts) {
    PrivateSession session;
    FakeShortcutService service(session.environment().at("DBUS_SESSION_BUS_ADDRESS"), false);
    SimulatedClock clock;
    SimulatedRunLoop runLoop(clock);
    setenv("XDG_RUNTIME_DIR", session.folder().c_str(), 1);
    KWinChannel channel(session.environment().at("DBUS_SESSION_BUS_ADDRESS"), runLoop);
    channel.awaitAnswer(20);
    // Nothing else of the program has run meanwhile.
    EXPECT_EQ(channel.state(), KWinChannel::State::refused);
    runLoop.settle();
    EXPECT_EQ(channel.state(), KWinChannel::State::refused);
    EXPECT_EQ(channel.connection(), nullptr);
    unsetenv("XDG_RUNTIME_DIR");
}

TEST_F(KWinHotKeyPlatformTest, whatIsTakenIsHeardAndGivenBackAtTheEnd) {
    ASSERT_TRUE(take(1, keyLeft));
    ASSERT_TRUE(take(2, keyA));
    EXPECT_EQ(service->keyOf("action1"), keyFor(XKB_KEY_Left));
    EXPECT_EQ(service->actions().at("lumatile/action1").title, "Action 1");
    EXPECT_EQ(service->actions().at("lumatile/action1").programName, "Lumatile");
    service->press("action2");
    service->press("nothing of ours");
    service->press("action1");
    ASSERT_TRUE(serve([&] { return pressed.size() == 2; }));
    EXPECT_EQ(pressed, (std::vector<std::uint32_t>{2, 1}));
    platform.reset();
    settleService();
    EXPECT_THAT(service->actions(), IsEmpty());
}

TEST_F(KWinHotKeyPlatformTest, aSilentServiceHoldsTheProgramUpOnceAndIsHeardWhenItSpeaks) {
    service->setSilent(true);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(take(1, keyLeft));
    EXPECT_TRUE(take(2, keyA));
    const auto third = take(3, keyQ);
    EXPECT_TRUE(third) << "nobody has refused anything";
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    ASSERT_TRUE(service->waitUntilAsked(2));
    EXPECT_EQ(service->asked(),
              (std::vector<std::string>{"globalShortcutsByKey", "globalShortcutAvailable"}))
        << "the one that was waited for, and one that tells when it speaks again";
    platform->unregisterHotKey(*third);
    runLoop.settle();
    service->setSilent(false);
    ASSERT_TRUE(serve([&] { return service->keyOf("action2") != 0; }));
    EXPECT_EQ(service->keyOf("action1"), keyFor(XKB_KEY_Left));
    EXPECT_EQ(service->keyOf("action2"), keyFor(XKB_KEY_a));
    EXPECT_EQ(service->keyOf("action3"), 0);
    EXPECT_EQ(tellings, 0) << "nothing is other than it was said to be";
}

TEST_F(KWinHotKeyPlatformTest, aServiceThatComesBackIsAskedForEverythingAnew) {
    ASSERT_TRUE(take(1, keyLeft));
    ASSERT_TRUE(take(2, keyA));
    service.reset();
    ASSERT_TRUE(serve([&] { return channel->state() == KWinChannel::State::absent; }));
    EXPECT_TRUE(take(3, keyQ)) << "there is nobody who could refuse it";
    service.emplace(address());
    // Meanwhile this one is another program's.
    service->give("kwin", "desktop1", {"Switch to Desktop 1", "KWin", keyFor(XKB_KEY_a)});
    pass(3);
    ASSERT_TRUE(serve([&] { return channel->isAnswering(); }));
    settleService();
    EXPECT_EQ(service->keyOf("action1"), keyFor(XKB_KEY_Left));
    EXPECT_EQ(service->keyOf("action3"), keyFor(XKB_KEY_q));
    EXPECT_EQ(platform->holder({keyA, both}), "Switch to Desktop 1 of KWin");
    EXPECT_EQ(tellings, 1);
    service->press("action3");
    EXPECT_TRUE(serve([&] { return pressed == std::vector<std::uint32_t>{3}; }));
    service->change("lumatile", "action1", keyFor(XKB_KEY_a));
    EXPECT_TRUE(serve([&] { return reassigned.contains(1); }));
}

TEST_F(KWinHotKeyPlatformTest, aServiceThatIsNotThereIsAskedAgainAndAgain) {
    service->setFailing(true);
    EXPECT_TRUE(take(1, keyLeft));
    EXPECT_TRUE(take(2, keyA));
    pass(40);
    // After 1, 3, 7, 15 and 31 s, and at the beginning.
    EXPECT_EQ(std::ranges::count(service->asked(), "globalShortcutAvailable"), 6);
    service->setFailing(false);
    pass(31);
    EXPECT_EQ(service->keyOf("action1"), keyFor(XKB_KEY_Left));
    EXPECT_EQ(service->keyOf("action2"), keyFor(XKB_KEY_a));
}

TEST_F(KWinHotKeyPlatformTest, whatTurnsOutToBeRefusedIsTold) {
    service->give("kwin", "desktop1", {"Switch to Desktop 1", "KWin", keyFor(XKB_KEY_a)});
    service->setSilent(true);
    EXPECT_TRUE(take(1, keyLeft));
    EXPECT_TRUE(take(2, keyA));
    service->setSilent(false);
    ASSERT_TRUE(serve([&] { return tellings == 1; }));
    EXPECT_EQ(platform->holder({keyA, both}), "Switch to Desktop 1 of KWin");
    EXPECT_EQ(service->keyOf("action1"), keyFor(XKB_KEY_Left));
    // As whoever is told does.
    EXPECT_FALSE(take(2, keyA));
    settleService();
    EXPECT_EQ(tellings, 1);
}

TEST_F(KWinHotKeyPlatformTest, whatWasRefusedCountsAsRefusedWhileNobodyCanBeAsked) {
    service->give("kwin", "desktop1", {"Switch to Desktop 1", "KWin", keyFor(XKB_KEY_a)});
    EXPECT_FALSE(take(1, keyA));
    service->setSilent(true);
    EXPECT_FALSE(take(1, keyA)) << "the service is asked";
    EXPECT_FALSE(take(1, keyA)) << "it is known to be silent";
    EXPECT_EQ(platform->holder({keyA, both}), "Switch to Desktop 1 of KWin");
    isKeyboardKnown = false;
    EXPECT_FALSE(take(1, keyA));
    isKeyboardKnown = true;
    runLoop.settle();
    EXPECT_EQ(tellings, 0);
    service->takeAway("kwin", "desktop1");
    service->setSilent(false);
    ASSERT_TRUE(serve([&] { return tellings == 1; }));
    EXPECT_TRUE(take(1, keyA));
    settleService();
    EXPECT_EQ(service->keyOf("action1"), keyFor(XKB_KEY_a));
}

TEST_F(KWinHotKeyPlatformTest, whatWasRefusedCountsAsRefusedUntilKWinIsBack) {
    service->give("kwin", "desktop1", {"Switch to Desktop 1", "KWin", keyFor(XKB_KEY_a)});
    EXPECT_FALSE(take(1, keyA));
    service.reset();
    ASSERT_TRUE(serve([&] { return channel->state() == KWinChannel::State::absent; }));
    EXPECT_FALSE(take(1, keyA));
    service.emplace(address());
    pass(3);
    ASSERT_TRUE(serve([&] { return tellings == 1; }));
    EXPECT_TRUE(take(1, keyA));
    EXPECT_EQ(service->keyOf("action1"), keyFor(XKB_KEY_a));
}

TEST_F(KWinHotKeyPlatformTest, whatIsRefusedIsNamedAndToldWhenThePageGivesItAway) {
    service->give("kwin", "desktop1", {"Switch to Desktop 1", "KWin", keyFor(XKB_KEY_a)});
    EXPECT_FALSE(take(1, keyA));
    EXPECT_EQ(platform->holder({keyA, both}), "Switch to Desktop 1 of KWin");
    EXPECT_EQ(platform->holder({keyQ, both}), "");
    service->change("kwin", "other", keyFor(XKB_KEY_F5));
    service->change("kwin", "desktop1", keyFor(XKB_KEY_F6));
    ASSERT_TRUE(serve([&] { return tellings == 1; }));
    EXPECT_EQ(platform->holder({keyA, both}), "");
    EXPECT_TRUE(take(1, keyA));
    EXPECT_EQ(service->keyOf("action1"), keyFor(XKB_KEY_a));
}

TEST_F(KWinHotKeyPlatformTest, whatIsGivenBackWithoutAWordIsFound) {
    service->give("player", "play", {"Play", "Player", keyFor(XKB_KEY_a)});
    EXPECT_FALSE(take(1, keyA));
    service->takeAway("player", "play");
    pass(12);
    ASSERT_TRUE(serve([&] { return tellings == 1; }));
    EXPECT_TRUE(take(1, keyA));
    // Nothing is asked any more once nothing is refused.
    service->forget();
    pass(25);
    settleService();
    EXPECT_THAT(service->asked(), Not(Contains("globalShortcutAvailable")));
}

TEST_F(KWinHotKeyPlatformTest, onlyWhatHasChangedGoesOverTheBus) {
    const auto first = take(1, keyLeft);
    const auto second = take(2, keyA);
    const auto third = take(3, keyQ);
    settleService();
    service->forget();
    for (const auto& each : {first, second, third}) {
        platform->unregisterHotKey(*each);
    }
    ASSERT_TRUE(take(1, keyLeft, both | ClassicModifier::shift));
    ASSERT_TRUE(take(2, keyA));
    ASSERT_TRUE(take(3, keyQ));
    settleService();
    EXPECT_EQ(service->asked(), (std::vector<std::string>{"globalShortcutsByKey", "doRegister",
                                                          "setShortcutKeys", "unregister"}));
    EXPECT_EQ(service->keyOf("action1"),
              KWinKey::of(XKB_KEY_Left, both | ClassicModifier::shift).value());
}

TEST_F(KWinHotKeyPlatformTest, twoActionsCanSwapTheirKeys) {
    const auto first = take(1, keyA);
    const auto second = take(2, keyQ);
    platform->unregisterHotKey(*first);
    platform->unregisterHotKey(*second);
    EXPECT_TRUE(take(1, keyQ));
    EXPECT_TRUE(take(2, keyA));
    settleService();
    EXPECT_EQ(service->keyOf("action1"), keyFor(XKB_KEY_q));
    EXPECT_EQ(service->keyOf("action2"), keyFor(XKB_KEY_a));
}

TEST_F(KWinHotKeyPlatformTest, aCombinationThatThisProgramHasIsRefused) {
    ASSERT_TRUE(take(1, keyA));
    EXPECT_FALSE(take(2, keyA));
    settleService();
    EXPECT_EQ(service->keyOf("action1"), keyFor(XKB_KEY_a));
    EXPECT_FALSE(service->actions().contains("lumatile/action2"));
}

TEST_F(KWinHotKeyPlatformTest, whatAnEarlierRunLeftIsNotInTheWay) {
    service->give("lumatile", "removed", {"An Area of Mine", "Lumatile", keyFor(XKB_KEY_a)});
    EXPECT_TRUE(take(1, keyA));
    settleService();
    EXPECT_EQ(service->keyOf("action1"), keyFor(XKB_KEY_a));
    EXPECT_FALSE(service->actions().contains("lumatile/removed"));
}

TEST_F(KWinHotKeyPlatformTest, whatIsRefusedInPlaceOfAnotherIsGivenBackAltogether) {
    service->give("kwin", "desktop1", {"Switch to Desktop 1", "KWin", keyFor(XKB_KEY_a)});
    const auto first = take(1, keyQ);
    platform->unregisterHotKey(*first);
    EXPECT_FALSE(take(1, keyA));
    runLoop.settle();
    settleService();
    EXPECT_FALSE(service->actions().contains("lumatile/action1"));
}

TEST_F(KWinHotKeyPlatformTest, theCombinationsFollowTheLayout) {
    ASSERT_TRUE(take(1, keyA));
    ASSERT_TRUE(take(2, keyQ));
    service->give("kwin", "zoom", {"Zoom", "KWin", keyFor(XKB_KEY_udiaeresis)});
    EXPECT_EQ(service->keyOf("action1"), keyFor(XKB_KEY_a));
    symbols[keyA] = XKB_KEY_q;  // As on a French keyboard.
    symbols[keyQ] = XKB_KEY_a;
    platform->followKeyboard();
    settleService();
    EXPECT_EQ(service->keyOf("action1"), keyFor(XKB_KEY_q));
    EXPECT_EQ(service->keyOf("action2"), keyFor(XKB_KEY_a));
    EXPECT_EQ(tellings, 0);
    symbols[keyQ] = XKB_KEY_udiaeresis;
    platform->followKeyboard();
    ASSERT_TRUE(serve([&] { return tellings == 1; })) << "this one is lost";
    settleService();
    EXPECT_EQ(platform->holder({keyQ, both}), "Zoom of KWin");
    EXPECT_EQ(service->keyOf("action2"), 0);
    symbols[keyQ] = XKB_KEY_a;
    EXPECT_FALSE(service->actions().contains("lumatile/action2"));
    platform->followKeyboard();
    ASSERT_TRUE(serve([&] { return tellings == 2; })) << "and can be had again";
}

TEST_F(KWinHotKeyPlatformTest, whileTheKeyboardIsNotKnownEverythingCountsAsHeld) {
    isKeyboardKnown = false;
    ASSERT_TRUE(take(1, keyA));
    EXPECT_FALSE(service->actions().contains("lumatile/action1"));
    isKeyboardKnown = true;
    platform->followKeyboard();
    EXPECT_EQ(service->keyOf("action1"), keyFor(XKB_KEY_a));
}

TEST_F(KWinHotKeyPlatformTest, whatTheUserChangesOnPlasmasPageIsTold) {
    ASSERT_TRUE(take(1, keyA));
    ASSERT_TRUE(take(2, keyQ));
    service->change("lumatile", "action1",
                    KWinKey::of(XKB_KEY_Left, ClassicModifier::command).value());
    ASSERT_TRUE(serve([&] { return !reassigned.empty(); }));
    EXPECT_EQ(reassigned[1], (KeyCombination{keyLeft, ClassicModifier::command}));
    reassigned.clear();
    service->change("lumatile", "action2", 0);
    ASSERT_TRUE(serve([&] { return !reassigned.empty(); }));
    ASSERT_TRUE(reassigned.contains(2));
    EXPECT_FALSE(reassigned[2].has_value());
    reassigned.clear();
    // A key that no shortcut of this program can name: the page shows again what is so.
    service->change("lumatile", "action1", keyFor(XKB_KEY_Greek_omega));
    ASSERT_TRUE(serve([&] { return service->keyOf("action1") == keyFor(XKB_KEY_a); }));
    EXPECT_TRUE(reassigned.empty());
}

TEST_F(KWinHotKeyPlatformTest, whatCannotBePutRightIsGivenBackAndTold) {
    ASSERT_TRUE(take(1, keyA));
    service->change("lumatile", "action1", keyFor(XKB_KEY_Greek_omega));
    service->give("kwin", "desktop1", {"Switch to Desktop 1", "KWin", keyFor(XKB_KEY_a)});
    ASSERT_TRUE(serve([&] { return tellings == 1; }));
    settleService();
    EXPECT_FALSE(service->actions().contains("lumatile/action1"));
    EXPECT_EQ(platform->holder({keyA, both}), "Switch to Desktop 1 of KWin");
}

}  // namespace
}  // namespace lumatile::desktop
