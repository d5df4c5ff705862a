#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Lumatile/widgets/Saying.h"
#include "commands/SnapCommand.h"

namespace lumatile {

class SharedStore;
class DesktopTiling;
class KeyCodes;
class LaunchAtLogin;
class Preferences;
class RunLoop;
class Updater;

/// What the settings window works with besides the model. All of it outlives the window.
struct SettingsServices {
    KeyCodes& keys;
    Preferences& preferences;
    LaunchAtLogin& launchAtLogin;
    Updater& updater;
    DesktopTiling& tiling;
    SharedStore& sharedStore;
    RunLoop& runLoop;
    Saying say;                             ///< From a catalogue to this computer's words.
    std::string version;                    ///< Of this build.
    std::vector<std::string> shortcomings;  ///< Of this session, a sentence each.
    std::function<std::vector<SnapCommand>()> menuCommands;
    std::function<void(const SnapCommand&)> run;
    std::function<void()> quit;
};

}  // namespace lumatile
