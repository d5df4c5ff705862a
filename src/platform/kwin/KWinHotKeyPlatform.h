#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/Lifeline.h"
#include "hotkeys/HotKeyPlatform.h"
#include "platform/kwin/KWinChannel.h"
#include "platform/kwin/KWinGlobalShortcuts.h"
#include "ports/RunLoop.h"

namespace lumatile {

/// Hot keys through Plasma's service of global shortcuts, which KWin serves itself: the user finds
/// them on Plasma's page, each under the name of what it does. Plasma knows symbols and no places,
/// so a combination is that of the symbol on its key, and follows the layout.
class KWinHotKeyPlatform final : public HotKeyPlatform {
public:
    /// What is on a key without modifiers in the layout in force; 0 for nothing, absent as long as
    /// the keyboard is not known.
    using SymbolAt = std::function<std::optional<std::uint32_t>(std::uint32_t virtualKeyCode)>;

    /// @param channel and `runLoop` outlive the platform
    KWinHotKeyPlatform(KWinChannel& channel, RunLoop& runLoop, SymbolAt symbolAt);
    KWinHotKeyPlatform(const KWinHotKeyPlatform&) = delete;
    KWinHotKeyPlatform& operator=(const KWinHotKeyPlatform&) = delete;
    ~KWinHotKeyPlatform() override;

    void installHandler(Handler handler) override;
    void installReassigned(const Reassigned& reassigned) override { reassigned_ = reassigned; }
    void installAvailabilityChanged(const AvailabilityChanged& changed) override {
        availabilityChanged_ = changed;
    }
    std::string holder(const KeyCombination& combination) override;
    void describe(HotKeyID id, const HotKeyPurpose& purpose) override;
    std::optional<HotKeyReference> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                  HotKeyID id) override;
    void unregisterHotKey(HotKeyReference reference) override;

    /// The layout is another one: the combinations follow their keys.
    void followKeyboard();

private:
    struct Registration {
        std::uint32_t keyCode = 0;
        std::uint32_t modifiers = 0;
        HotKeyID id;
        std::string action;
        std::string title;
    };

    /// A combination that this program wants and does not have.
    struct Refused {
        KeyCombination combination;
        std::string holder;    // Empty: not known.
        std::int32_t key = 0;  // As of `KWinKey`; 0: no key of this keyboard has it.
    };

    /// What the service has of this program.
    struct Taken {
        std::int32_t key = 0;
        std::string title;
        bool isWanted = true;
    };

    bool take(const Registration& registration);
    bool takeUnasked(const Registration& registration);
    bool isTakenForAnother(const Registration& registration, std::int32_t key) const;
    void noteRefused(const Registration& registration, std::int32_t key, std::string holder);
    void takeAnew();
    void giveUnwantedBackLater();
    void giveUnwantedBack(std::optional<std::int32_t> key = std::nullopt);
    void followService();
    void awaitAnswer(std::int32_t key);
    void noteAnswer(std::int32_t key, bool isAnswer);
    void lookAgainLater();
    void lookAgain();
    void noteFree(std::int32_t key);
    void tellAvailability();
    void notePress(GVariant* arguments);
    void noteChange(GVariant* arguments);
    void reassign(const std::string& action, std::int32_t key);
    void deliver(const std::string& action);

    KWinChannel& channel_;
    RunLoop& runLoop_;
    SymbolAt symbolAt_;
    Handler handler_;
    Reassigned reassigned_;
    AvailabilityChanged availabilityChanged_;
    std::map<std::uint32_t, HotKeyPurpose> purposes_;        // By id, until it is registered.
    std::map<HotKeyReference, Registration> registrations_;  // In the order of registration.
    std::map<std::string, Taken> taken_;                     // By action.
    std::vector<Refused> refused_;
    std::map<KeyCombination, std::string> lastRefused_;  // By whom, when the service was asked.
    HotKeyReference nextReference_ = 1;
    LoneBusConnection* listening_ = nullptr;  // Where presses are heard; compared, never used.
    bool isGivingBack_ = false;
    bool isLookingAgain_ = false;
    bool isTelling_ = false;
    bool isSilent_ = false;                // The service is too busy to answer.
    std::unique_ptr<RunLoopTimer> retry_;  // Until it is asked again.
    double retryAfter_;                    // Seconds.
    std::unique_ptr<RunLoopTimer> look_;   // While something is refused.
    KWinChannel::StateSubscription states_;
    Lifeline lifeline_;
};

}  // namespace lumatile
