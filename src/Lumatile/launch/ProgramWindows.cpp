#include "Lumatile/launch/ProgramWindows.h"

#include <string_view>
#include <vector>

#include "Lumatile/ApplicationConductor.h"
#include "Lumatile/FullScreenWindows.h"
#include "Lumatile/PackageUpdateController.h"
#include "Lumatile/launch/ToolkitApplication.h"
#include "Lumatile/widgets/WindowForeground.h"

namespace lumatile {

namespace {

// Seconds. At login the window manager may come a moment later than this program, and then nobody
// is to be bothered with its absence.
constexpr double onboardingPatience = 3;

}  // namespace

ProgramWindows::ProgramWindows(const Parts& parts)
    : parts_(parts),
      say_([&words = parts.services.words](std::string_view text) {
          return QString::fromStdString(words.apply(text));
      }),
      // The answer comes in a window that puts itself in front.
      updater_([this] { return makeUpdateController(); }, [] {}),
      about_(LUMATILE_VERSION, say_,
             {[this] {
                  if (const auto alive = conductor_.lock()) {
                      alive->openSettings();
                  }
              },
              ToolkitApplication::terminate}),
      settings_([this] { return settingsServices(); }),
      onboarding_({parts.runLoop, say_, onboardingPatience}),
      syncConflict_(parts.runLoop, say_) {
    askDesktopForFront(parts.session.bringToFront);
}

ProgramWindows::~ProgramWindows() { askDesktopForFront({}); }

void ProgramWindows::serve(ApplicationConductor& conductor) {
    conductor_ = conductor.weak_from_this();
    conductor.menuTargets = {[this] { about_.show(settings_.window()); },
                             [this] { updater_.checkForUpdates(); }, ToolkitApplication::terminate};
}

SettingsServices ProgramWindows::settingsServices() {
    return {parts_.session.keyCodes,
            parts_.preferences,
            parts_.services.launchAtLogin,
            updater_,
            parts_.services.tiling,
            parts_.sharedStore,
            parts_.runLoop,
            say_,
            LUMATILE_VERSION,
            parts_.facts.shortcomings,
            [this] {
                const auto alive = conductor_.lock();
                return alive ? alive->store().commands : std::vector<SnapCommand>();
            },
            [this](const SnapCommand& command) {
                if (const auto alive = conductor_.lock()) {
                    alive->performCommandBehindUs(command);
                }
            },
            ToolkitApplication::terminate};
}

std::shared_ptr<UpdateController> ProgramWindows::makeUpdateController() {
    return std::make_shared<PackageUpdateController>(PackageUpdateController::Parts{
        parts_.services.packages, parts_.services.notifications, notices_, parts_.preferences,
        parts_.runLoop, parts_.log,
        [&session = parts_.session] {
            return isAnyWindowFullScreen(session.workspace, session.accessibility);
        },
        LUMATILE_VERSION});
}

}  // namespace lumatile
