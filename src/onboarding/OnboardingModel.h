#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "onboarding/AccessibilityGrantFlow.h"
#include "onboarding/GrantState.h"
#include "onboarding/SystemTiling.h"
#include "windows/TrustObstacle.h"

namespace lumatile {

/// What the onboarding window shows and does: it sees the permission arrive, and leads the user to
/// where it is granted. To be owned by a shared pointer: timers and callbacks may outlive it.
class OnboardingModel : public std::enable_shared_from_this<OnboardingModel> {
public:
    /// Seconds between two looks at the permission: soon enough that the window seems to follow,
    /// and no system tells of a change by itself.
    static constexpr double pollInterval = 0.8;

    /// Seconds between two looks whether the system's own request has come or gone.
    static constexpr double promptInterval = 0.25;

    /// Seconds after which a request that has not come is not waited for any more.
    static constexpr double promptPatience = 1.5;

    /// What the model works with.
    struct Surroundings {
        /// Calls `tick` every `seconds` until what it answers is destroyed.
        std::function<std::shared_ptr<void>(double seconds, std::function<void()> tick)> repeat;
        /// Seconds since 1970-01-01 00:00 UTC.
        std::function<double()> now;
        /// Opens a page of settings; false where there is none.
        std::function<bool(std::string_view address)> open;
    };

    OnboardingModel(AccessibilityGrantFlow flow, const SystemTiling& tiling,
                    Surroundings surroundings);
    OnboardingModel(const OnboardingModel&) = delete;
    OnboardingModel& operator=(const OnboardingModel&) = delete;
    ~OnboardingModel() = default;

    GrantState state() const { return state_; }
    const SystemTiling& tiling() const { return tiling_; }
    bool didRequest() const { return didRequest_; }

    /// What the session lacks: from the first look on where the session says so, otherwise once the
    /// settings were to be opened and there were none.
    std::optional<TrustObstacle> missing() const { return missing_; }

    /// A shortcut in place of those that the last page names.
    struct Advice {
        std::string keys;     ///< As `ShortcutFormatter::format` writes them; empty: none works.
        std::string command;  ///< What it does, by the name that may be the user's own.

        bool operator==(const Advice&) const = default;
    };

    /// Absent where the keys that the page names work.
    const std::optional<Advice>& advice() const { return advice_; }
    void setAdvice(std::optional<Advice> advice);

    /// Runs whenever the permission is seen to be there.
    std::function<void()> onGranted;

    /// Runs when the user has read to the end.
    std::function<void()> onDone;

    /// What to call after `state`, `missing` or `advice` has become another; not when a look finds
    /// the same.
    void onChange(std::function<void()> changed) { changed_ = std::move(changed); }

    /// Looks for the permission now and from now on, until it is there.
    void start();

    /// Looks no more.
    void stop();
    bool isPolling() const { return timer_ != nullptr; }

    /// Has the system ask the user. Where it does not, or once the user has put its question away,
    /// the settings are opened.
    void request();
    bool isFollowingRequest() const { return settingsTimer_ != nullptr; }

    /// Opens the page of settings on which the permission is granted. Where there is none,
    /// `missing` tells what the session lacks.
    void openSettings();

    void done();

private:
    void refresh();
    void setMissing(std::optional<TrustObstacle> missing);
    void tellChange() const;
    std::shared_ptr<void> repeat(double seconds, void (OnboardingModel::*tick)());
    void followRequest();

    AccessibilityGrantFlow flow_;
    SystemTiling tiling_;
    Surroundings surroundings_;
    std::function<void()> changed_;
    GrantState state_ = GrantState::requesting;
    std::optional<TrustObstacle> missing_;
    std::optional<Advice> advice_;
    bool didRequest_ = false;
    bool didOpenSettings_ = false;
    double requestTime_ = 0;
    bool wasPromptSeen_ = false;
    std::shared_ptr<void> timer_;
    std::shared_ptr<void> settingsTimer_;
};

}  // namespace lumatile
