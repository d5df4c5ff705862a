#include "hotkeys/HotkeyService.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace lumatile {
namespace {

/// Accepts everything but the key codes that another program has.
class RecordingHotKeys final : public HotKeyPlatform {
public:
    void installHandler(Handler handler) override {
        ++installations;
        handler_ = std::move(handler);
    }

    std::optional<HotKeyReference> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                  HotKeyID id) override {
        requested.push_back(id);
        if (taken.contains(keyCode)) {
            return std::nullopt;
        }
        const HotKeyReference reference = ++lastReference_;
        held[reference] = {keyCode, modifiers};
        return reference;
    }

    void installReassigned(const Reassigned& reassigned) override { reassign = reassigned; }
    void installAvailabilityChanged(const AvailabilityChanged& changed) override {
        availabilityChanged = changed;
    }
    void describe(HotKeyID id, const HotKeyPurpose& purpose) override {
        described.emplace_back(id, purpose.title);
    }

    void unregisterHotKey(HotKeyReference reference) override {
        unregistered.push_back(reference);
        held.erase(reference);
    }

    std::int32_t press(std::optional<HotKeyID> id) { return handler_(id); }

    int installations = 0;
    Reassigned reassign;
    AvailabilityChanged availabilityChanged;
    std::vector<std::pair<HotKeyID, std::string>> described;
    std::set<std::uint32_t> taken;
    std::vector<HotKeyID> requested;
    std::vector<HotKeyReference> unregistered;
    std::map<HotKeyReference, std::pair<std::uint32_t, std::uint32_t>> held;

private:
    Handler handler_;
    HotKeyReference lastReference_ = 100;
};

HotKeyID idOf(std::uint32_t id) { return {HotkeyService::signature, id}; }

TEST(HotkeyService, theFirstRegistrationInstallsTheHandlerAndLaterOnesDoNot) {
    RecordingHotKeys platform;
    HotkeyService service(platform);
    EXPECT_EQ(platform.installations, 0);
    service.registerHotKey(123, 6144, [] {});
    service.registerHotKey(124, 6144, [] {});
    service.unregisterAll();
    service.registerHotKey(125, 6144, [] {});
    EXPECT_EQ(platform.installations, 1);
}

TEST(HotkeyService, idsCountUpAndGoOnAfterUnregistering) {
    RecordingHotKeys platform;
    HotkeyService service(platform);
    EXPECT_EQ(service.registerHotKey(1, 0, [] {}), 1U);
    EXPECT_EQ(service.registerHotKey(2, 0, [] {}), 2U);
    EXPECT_EQ(service.registerHotKey(3, 0, [] {}), 3U);
    service.unregisterAll();
    EXPECT_EQ(service.registerHotKey(1, 0, [] {}), 4U);
}

TEST(HotkeyService, registersUnderItsSignature) {
    RecordingHotKeys platform;
    HotkeyService service(platform);
    service.registerHotKey(123, 6144, [] {});
    EXPECT_EQ(platform.requested, (std::vector<HotKeyID>{{0x4C554D41, 1}}));
    EXPECT_EQ(platform.held.begin()->second, (std::pair<std::uint32_t, std::uint32_t>{123, 6144}));
}

TEST(HotkeyService, aPressCallsTheActionOfItsIdSynchronously) {
    RecordingHotKeys platform;
    HotkeyService service(platform);
    std::vector<int> calls;
    service.registerHotKey(1, 0, [&] { calls.push_back(1); });
    const std::uint32_t second = service.registerHotKey(2, 0, [&] { calls.push_back(2); });
    EXPECT_EQ(platform.press(idOf(second)), 0);
    EXPECT_EQ(calls, (std::vector<int>{2}));
}

TEST(HotkeyService, theSignatureOfAPressIsNotCompared) {
    RecordingHotKeys platform;
    HotkeyService service(platform);
    int calls = 0;
    const std::uint32_t id = service.registerHotKey(1, 0, [&] { ++calls; });
    EXPECT_EQ(platform.press(HotKeyID{0, id}), 0);
    EXPECT_EQ(calls, 1);
}

TEST(HotkeyService, aRefusedRegistrationHasAnIdButIsNeverUnregistered) {
    RecordingHotKeys platform;
    platform.taken = {123};
    HotkeyService service(platform);
    EXPECT_EQ(service.registerHotKey(123, 6144, [] {}), 1U);
    EXPECT_EQ(service.registerHotKey(124, 6144, [] {}), 2U);
    ASSERT_EQ(platform.held.size(), 1U);
    const HotKeyReference accepted = platform.held.begin()->first;
    service.unregisterAll();
    EXPECT_EQ(platform.unregistered, (std::vector<HotKeyReference>{accepted}));
}

TEST(HotkeyService, anUnknownOrUnreadableIdDoesNothingAndCountsAsHandled) {
    RecordingHotKeys platform;
    HotkeyService service(platform);
    int calls = 0;
    const std::uint32_t id = service.registerHotKey(1, 0, [&] { ++calls; });
    EXPECT_EQ(platform.press(idOf(99)), 0);
    EXPECT_EQ(platform.press(std::nullopt), 0);
    service.unregisterAll();
    EXPECT_EQ(platform.press(idOf(id)), 0);
    EXPECT_EQ(calls, 0);
}

TEST(HotkeyService, unregisteringTwiceGivesBackOnce) {
    RecordingHotKeys platform;
    HotkeyService service(platform);
    service.registerHotKey(1, 0, [] {});
    service.unregisterAll();
    service.unregisterAll();
    EXPECT_EQ(platform.unregistered.size(), 1U);
    EXPECT_TRUE(platform.held.empty());
}

TEST(HotkeyService, aPurposeIsToldBeforeItsCombinationIsRegistered) {
    RecordingHotKeys platform;
    HotkeyService service(platform);
    service.registerHotKey(123, 6144, [] {}, {"left", "Left Half"});
    service.registerHotKey(124, 6144, [] {});
    EXPECT_EQ(platform.described, (std::vector{std::pair(idOf(1), std::string("Left Half"))}));
}

TEST(HotkeyService, aCombinationThatIsChangedElsewhereIsToldByItsId) {
    RecordingHotKeys platform;
    HotkeyService service(platform);
    std::vector<std::pair<std::uint32_t, std::optional<KeyCombination>>> told;
    service.onReassigned = [&](std::uint32_t id, const auto& to) { told.emplace_back(id, to); };
    service.registerHotKey(123, 6144, [] {});
    platform.reassign(idOf(1), KeyCombination{5, 6144});
    platform.reassign(idOf(99), KeyCombination{6, 6144});
    ASSERT_EQ(told.size(), 1U) << "not of what it does not hold";
    EXPECT_EQ(told[0].first, 1U);
    EXPECT_EQ(told[0].second, (KeyCombination{5, 6144}));
    service.unregisterAll();
    platform.reassign(idOf(1), std::nullopt);
    EXPECT_EQ(told.size(), 1U);
}

TEST(HotkeyService, whoeverIsToldOfWhatCanBeHadMayRegisterAnew) {
    RecordingHotKeys platform;
    platform.taken = {124};
    {
        HotkeyService service(platform);
        int told = 0;
        std::uint32_t id = service.registerHotKey(124, 6144, [] {});
        EXPECT_FALSE(service.holds(id));
        service.onAvailabilityChanged = [&] {
            ++told;
            service.onAvailabilityChanged = nullptr;  // Set anew, as is what registers.
            id = service.registerHotKey(124, 6144, [] {});
        };
        platform.taken.clear();
        platform.availabilityChanged();
        EXPECT_EQ(told, 1);
        EXPECT_TRUE(service.holds(id));
        platform.availabilityChanged();
        EXPECT_EQ(told, 1);
    }
    platform.availabilityChanged();  // The service is gone.
}

TEST(HotkeyService, anActionMayRegisterAnew) {
    RecordingHotKeys platform;
    HotkeyService service(platform);
    int calls = 0;
    const std::uint32_t id = service.registerHotKey(1, 0, [&] {
        service.unregisterAll();
        service.registerHotKey(2, 0, [] {});
        ++calls;
    });
    platform.press(idOf(id));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(platform.held.size(), 1U);
}

TEST(HotkeyService, theEndOfTheServiceGivesEverythingBackAndALatePressDoesNothing) {
    RecordingHotKeys platform;
    int calls = 0;
    std::uint32_t id = 0;
    {
        HotkeyService service(platform);
        id = service.registerHotKey(1, 0, [&] { ++calls; });
    }
    EXPECT_TRUE(platform.held.empty());
    EXPECT_EQ(platform.press(idOf(id)), 0);
    EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace lumatile
