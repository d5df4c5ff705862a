#include "tests/desktop/support/ShiftingApplication.h"

#include <algorithm>

#include "oled_protection/OLEDSettings.h"
#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

ShiftingApplication::ShiftingApplication(VirtualTime& time, const Adapters& adapters,
                                         std::string_view oledSettings)
    : runLoop_(time.runLoop),
      preferences_(log_, runLoop_),
      sharedFolder_(time.clock, runLoop_),
      hotKeys_(runLoop_),
      input_(time.clock),
      statusItem_(runLoop_),
      dimOverlays_(noScreens_) {
    preferences_.storeOnDisk(OLEDSettings::preferenceKey, Bytes(oledSettings));
    conductor_ = std::make_shared<ApplicationConductor>(Platform{adapters.accessibility,
                                                                 adapters.screenList,
                                                                 hotKeys_,
                                                                 keyCodes_,
                                                                 adapters.workspace,
                                                                 runLoop_,
                                                                 preferences_,
                                                                 sharedFolder_.join(std::nullopt),
                                                                 log_,
                                                                 input_,
                                                                 dimOverlays_,
                                                                 adapters.mouseTaps,
                                                                 statusItem_,
                                                                 settings_,
                                                                 onboarding_,
                                                                 conflictPrompt_,
                                                                 tiling_,
                                                                 {}});
    conductor_->setAccessibilityGranted();
    conductor_->startFeatures();
    // So that steps fall in the middle of what a test lets pass.
    runLoop_.advance(ShiftingPace::interval / 2);
}

void ShiftingApplication::run(std::string_view nameKey) {
    const auto& commands = conductor_->store().commands;
    const auto found = std::find_if(commands.begin(), commands.end(), [&](const auto& each) {
        return each.nameKey == nameKey && each.axis == Axis::horizontal;
    });
    if (found == commands.end()) {
        throw DesktopError("no such command");
    }
    conductor_->performCommand(*found);
}

PixelRect shifted(const PixelRect& frame, const Offset& offset) {
    return {frame.x + static_cast<int>(offset.dx), frame.y + static_cast<int>(offset.dy),
            frame.width, frame.height};
}

}  // namespace lumatile::desktop
