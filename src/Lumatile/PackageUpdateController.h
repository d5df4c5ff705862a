#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/Lifeline.h"
#include "ports/Notice.h"
#include "ports/NoticePanel.h"
#include "ports/Notifications.h"
#include "ports/PackageSource.h"
#include "ports/Preferences.h"
#include "ports/RunLoop.h"
#include "ports/SystemLog.h"
#include "ports/UpdateController.h"

namespace lumatile {

/// Looks for updates in the system's package source. Only that downloads or installs anything.
class PackageUpdateController final : public UpdateController {
public:
    static constexpr std::string_view automaticKey = "automaticallyChecksForUpdates";
    static constexpr std::string_view lastCheckKey = "lastUpdateCheck";

    /// Checks by itself are at least this far apart, seconds, over restarts of the program too.
    static constexpr double day = 24 * 60 * 60;

    /// Seconds between two looks at the clock. The first comes this long after the start, when
    /// the session's own start is over; one that finds a full-screen window leaves it to the next.
    static constexpr double interval = 15 * 60;

    /// What it works with; all outlive it.
    struct Parts {
        PackageSource& source;
        Notifications& notifications;
        NoticePanel& panel;
        Preferences& preferences;
        RunLoop& runLoop;
        SystemLog& log;
        std::function<bool()> isAnyWindowFullScreen;
        std::string version;  ///< Of the running program, for the user.
    };

    explicit PackageUpdateController(Parts parts) : parts_(std::move(parts)) {}
    PackageUpdateController(const PackageUpdateController&) = delete;
    PackageUpdateController& operator=(const PackageUpdateController&) = delete;
    ~PackageUpdateController() override = default;

    void start() override;
    void checkForUpdates() override;

    /// On unless the user has switched it off.
    bool automaticallyChecksForUpdates() override;
    void setAutomaticallyChecksForUpdates(bool checks) override;

private:
    void runTimer();
    void tick();
    bool isDue();
    void noteCheck();
    void ask();
    void answer(const PackageAnswer& answer);
    void show(const PackageAnswer& answer);
    void announce();
    Notice availableNotice(const std::string& newVersion);
    void act(const std::string& newVersion);

    Parts parts_;
    std::unique_ptr<RunLoopTimer> timer_;
    bool isStarted_ = false;
    bool isAsking_ = false;
    bool userWaits_ = false;
    std::optional<std::string> unannounced_;  ///< A version that a full-screen window holds back.
    std::string announced_;                   ///< The version of the last notification.
    Lifeline lifeline_;                       // What is handed on may outlive this.
};

}  // namespace lumatile
