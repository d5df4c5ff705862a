#pragma once

#include <memory>

#include "Lumatile/Updater.h"
#include "Lumatile/conflict/SyncConflictWindow.h"
#include "Lumatile/launch/DesktopServices.h"
#include "Lumatile/onboarding/OnboardingWindowController.h"
#include "Lumatile/settings/AboutPanel.h"
#include "Lumatile/settings/NoticeWindow.h"
#include "Lumatile/settings/SettingsWindowController.h"
#include "Lumatile/widgets/Saying.h"
#include "ports/DesktopSession.h"
#include "ports/PresentSession.h"

namespace lumatile {

class ApplicationConductor;

/// The program's own windows, and what looks for updates and answers in one of them. Each is made
/// when it is first wanted.
class ProgramWindows {
public:
    /// All outlive the windows.
    struct Parts {
        const SessionFacts& facts;
        const DesktopSession& session;
        DesktopServices& services;
        Preferences& preferences;
        SharedStore& sharedStore;
        RunLoop& runLoop;
        SystemLog& log;
    };

    explicit ProgramWindows(const Parts& parts);
    ProgramWindows(const ProgramWindows&) = delete;
    ProgramWindows& operator=(const ProgramWindows&) = delete;
    ~ProgramWindows();

    /// Connects them with the conductor that works with them, which may go before them.
    void serve(ApplicationConductor& conductor);

    SettingsPresenter& settings() { return settings_; }
    OnboardingPresenter& onboarding() { return onboarding_; }
    SyncConflictPresenter& syncConflict() { return syncConflict_; }
    Updater& updater() { return updater_; }

private:
    SettingsServices settingsServices();
    std::shared_ptr<UpdateController> makeUpdateController();

    Parts parts_;
    Saying say_;
    std::weak_ptr<ApplicationConductor> conductor_;
    Updater updater_;
    NoticeWindow notices_;
    AboutPanel about_;
    SettingsWindowMaker settings_;
    OnboardingWindowMaker onboarding_;
    SyncConflictWindowMaker syncConflict_;
};

}  // namespace lumatile
