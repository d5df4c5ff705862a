#include "Lumatile/ApplicationConductor.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Lumatile/SettingsDifferences.h"
#include "Lumatile/SharedSettings.h"
#include "displays/NSScreenProvider.h"
#include "oled_protection/OLEDSettingsCodec.h"
#include "ports/Preferences.h"

namespace lumatile {

namespace {

OLEDSettings storedOLEDSettings(Preferences& preferences) {
    const std::optional<Bytes> stored = preferences.bytes(OLEDSettings::preferenceKey);
    if (!stored) {
        return OLEDSettings::recommended;
    }
    return OLEDSettingsCodec::decode(*stored).value_or(OLEDSettings::recommended);
}

}  // namespace

ApplicationConductor::ApplicationConductor(Platform platform)
    : platform_(platform),
      store_(CommandStore::fromStored(platform.preferences.bytes(CommandStore::preferenceKey))),
      oledSettings_(storedOLEDSettings(platform.preferences)),
      protection_(platform, blacklist_),
      snapExecution_({platform, store_, blacklist_, protection_.jitter(), protection_.orbit(),
                      [this]() -> const DisplayService& { return displays(); }}),
      hotkeys_(platform.hotKeys),
      refusedShortcutLog_(platform.log, platform.keyCodes),
      dragToSnap_({platform, store_, protection_.jitter(), protection_.orbit(),
                   [this]() -> const DisplayService& { return displays(); }}),
      syncConflict_(platform.syncConflict) {
    applyOLEDSettings();
}

ApplicationConductor::~ApplicationConductor() = default;

void ApplicationConductor::createStatusMenu() {
    if (!statusMenu_) {
        statusMenu_ =
            std::make_shared<StatusMenuController>(platform_.statusItem, statusMenuClosures());
        rebuildStatusMenu();
    }
}

void ApplicationConductor::rebuildStatusMenu() {
    if (statusMenu_) {
        statusMenu_->rebuild(store_.commands);
    }
}

void ApplicationConductor::refreshStatusIcon() {
    if (statusMenu_) {
        statusMenu_->setProtected(isProtectionActive());
    }
}

void ApplicationConductor::startFeatures() {
    if (accessibilityGranted_ && !featuresRunning_) {
        featuresRunning_ = true;
        applyOLEDSettings();
        registerHotkeys();
        dragToSnap_.start();
        protection_.start();
    }
    rebuildStatusMenu();
}

void ApplicationConductor::stopFeatures() {
    featuresRunning_ = false;
    unregisterHotkeys();
    dragToSnap_.stop();
    protection_.stop();
    refreshStatusIcon();
}

void ApplicationConductor::shutdown() {
    stopFeatures();
    if (sync_) {
        sync_->stop();
    }
}

void ApplicationConductor::startPreferenceSync() { sync().start(); }

SettingsSync& ApplicationConductor::sync() {
    if (sync_) {
        return *sync_;
    }
    const auto onConductor = [this](auto operation) {
        return [conductor = weak_from_this(), operation](const auto&... arguments) {
            if (const auto alive = conductor.lock()) {
                ((*alive).*operation)(arguments...);
            }
        };
    };
    sync_ = std::make_unique<SettingsSync>(
        platform_.preferences, platform_.sharedStore,
        [&runLoop = platform_.runLoop] { return runLoop.now(); },
        SettingsSync::Closures{
            onConductor(&ApplicationConductor::reloadCommands),
            onConductor(&ApplicationConductor::reloadOLEDSettings),
            onConductor(&ApplicationConductor::presentConflict),
            [](const SharedSet& set) { return SharedSettings::decode(set).has_value(); }});
    return *sync_;
}

void ApplicationConductor::reloadCommands() {
    const std::optional<Bytes> stored = platform_.preferences.bytes(CommandStore::preferenceKey);
    applyCommands(CommandStore::fromStored(stored).commands);
    // What cannot be decoded stays as it is: perhaps a newer version wrote it here.
    if (stored && CommandStore::decode(*stored)) {
        platform_.preferences.setBytes(CommandStore::preferenceKey, store_.encode());
    }
}

void ApplicationConductor::reloadOLEDSettings() {
    oledSettings_ = storedOLEDSettings(platform_.preferences);
    applyOLEDSettings();
    showChangedSettings();
}

void ApplicationConductor::presentConflict(const ConflictSummary& summary) {
    const auto elsewhere = SharedSettings::decode(sync_->sharedSet());
    syncConflict_.present(
        summary,
        [conductor = weak_from_this()](bool preferLocal) {
            if (const auto alive = conductor.lock()) {
                alive->sync_->settleConflict(preferLocal);
            }
        },
        elsewhere ? settingsDifferences({store_.commands, oledSettings_}, *elsewhere)
                  : ConflictDifferences());
}

void ApplicationConductor::performCommand(const SnapCommand& command) {
    snapExecution_.performCommand(command);
}

void ApplicationConductor::performCommandBehindUs(const SnapCommand& command) {
    snapExecution_.performCommandBehindUs(command);
}

void ApplicationConductor::applyOLEDSettings() {
    protection_.apply(oledSettings_, exaggerated_);
    refreshStatusIcon();
}

void ApplicationConductor::changeOLEDSettings(const OLEDSettings& settings) {
    if (settings == oledSettings_) {
        return;
    }
    oledSettings_ = settings;
    platform_.preferences.setBytes(OLEDSettings::preferenceKey,
                                   OLEDSettingsCodec::encode(settings));
    applyOLEDSettings();
    showChangedSettings();
    sync().recordLocalChange();
}

void ApplicationConductor::registerHotkeys() {
    hotkeys_.unregisterAll();
    if (isRecordingShortcut_) {
        return;
    }
    refusedShortcuts_.clear();
    shortcutHolders_.clear();
    hotkeyCommands_.clear();
    hotkeys_.onReassigned = [conductor = weak_from_this()](std::uint32_t id, const auto& to) {
        if (const auto alive = conductor.lock()) {
            alive->noteReassigned(id, to);
        }
    };
    hotkeys_.onAvailabilityChanged = [conductor = weak_from_this()] {
        const auto alive = conductor.lock();
        if (alive && alive->featuresRunning_) {
            alive->registerHotkeys();
        }
    };
    std::vector<RefusedShortcutLog::Refused> refused;
    std::set<KeyCombination> held;
    for (const SnapCommand& command : store_.hotkeyBindings()) {
        const KeyCombination combination{command.shortcut->carbonKeyCode,
                                         command.shortcut->carbonModifiers};
        const std::uint32_t id =
            hotkeys_.registerHotKey(combination.keyCode, combination.modifiers,
                                    [conductor = weak_from_this(), command] {
                                        if (const auto alive = conductor.lock()) {
                                            alive->performCommand(command);
                                        }
                                    },
                                    {command.id.lowercaseText(), command.displayName()});
        hotkeyCommands_[id] = command.id;
        if (hotkeys_.holds(id)) {
            held.insert(combination);
            continue;
        }
        refusedShortcuts_.push_back(command.id);
        const std::string holder = platform_.hotKeys.holder(combination);
        if (!holder.empty()) {
            shortcutHolders_[command.id] = holder;
        }
        refused.push_back({combination, holder});
    }
    refusedShortcutLog_.note(refused, held);
    showRefusedShortcuts();
}

void ApplicationConductor::unregisterHotkeys() {
    hotkeys_.unregisterAll();
    refusedShortcuts_.clear();
    shortcutHolders_.clear();
    showRefusedShortcuts();
}

/// What the user has changed in the desktop's own list of shortcuts counts as changed in ours.
void ApplicationConductor::noteReassigned(std::uint32_t hotkey,
                                          const std::optional<KeyCombination>& combination) {
    const auto id = hotkeyCommands_.find(hotkey);
    std::vector<SnapCommand> commands = store_.commands;
    const auto changed =
        id == hotkeyCommands_.end()
            ? commands.end()
            : std::find_if(commands.begin(), commands.end(),
                           [&](const SnapCommand& each) { return each.id == id->second; });
    if (changed == commands.end() || !changed->shortcut) {
        return;
    }
    const Shortcut before = *changed->shortcut;
    const std::string nameKey = changed->nameKey;
    // Its twin for the other screen orientation is run by the same keys.
    for (SnapCommand& each : commands) {
        if (each.nameKey != nameKey || each.shortcut != before) {
            continue;
        }
        if (combination) {
            each.shortcut = Shortcut{combination->keyCode, combination->modifiers, true};
        } else {
            each.shortcut->enabled = false;
        }
    }
    changeCommands(commands);
}

void ApplicationConductor::showRefusedShortcuts() {
    if (settingsVM_) {
        settingsVM_->setRefusedShortcuts(refusedShortcuts_, shortcutHolders_);
    }
}

void ApplicationConductor::noteRecording(bool isRecording) {
    isRecordingShortcut_ = isRecording;
    if (isRecording) {
        // Without a word about what is refused: that is so afterwards as it was before.
        hotkeys_.unregisterAll();
    } else if (featuresRunning_) {
        registerHotkeys();
    }
}

void ApplicationConductor::openSettings(std::optional<SettingsSection> section) {
    if (!settingsWC_) {
        makeSettings();
    }
    if (section) {
        settingsVM_->setSection(*section);
    }
    settingsWC_->show();
}

void ApplicationConductor::makeSettings() {
    settingsVM_ = std::make_shared<SettingsViewModel>(store_.commands, oledSettings_);
    settingsVM_->setRefusedShortcuts(refusedShortcuts_, shortcutHolders_);
    const std::weak_ptr<ApplicationConductor> conductor = weak_from_this();
    settingsVM_->onChange = [conductor](const std::vector<SnapCommand>& commands) {
        if (const auto alive = conductor.lock()) {
            alive->changeCommands(commands);
        }
    };
    settingsVM_->onOLEDChange = [conductor](const OLEDSettings& settings) {
        if (const auto alive = conductor.lock()) {
            alive->changeOLEDSettings(settings);
        }
    };
    settingsVM_->onRecording = [conductor](bool isRecording) {
        if (const auto alive = conductor.lock()) {
            alive->noteRecording(isRecording);
        }
    };
    settingsWC_ = platform_.settings.make(settingsVM_);
}

void ApplicationConductor::changeCommands(const std::vector<SnapCommand>& commands) {
    if (commands == store_.commands) {
        return;
    }
    // Stored before anything else, which may fail.
    platform_.preferences.setBytes(CommandStore::preferenceKey, CommandStore(commands).encode());
    applyCommands(commands);
    sync().recordLocalChange();
}

void ApplicationConductor::applyCommands(std::vector<SnapCommand> commands) {
    store_.commands = std::move(commands);
    if (featuresRunning_) {
        registerHotkeys();
    }
    rebuildStatusMenu();
    showChangedSettings();
}

void ApplicationConductor::showChangedSettings() {
    if (settingsVM_) {
        settingsVM_->replace(store_.commands, oledSettings_);
    }
}

void ApplicationConductor::setExaggerated(bool exaggerated) {
    if (exaggerated != exaggerated_) {
        exaggerated_ = exaggerated;
        applyOLEDSettings();
    }
}

StatusMenuController::Closures ApplicationConductor::statusMenuClosures() {
    const auto onTarget = [this](std::function<void()> MenuTargets::*target) {
        return [conductor = weak_from_this(), target] {
            const auto alive = conductor.lock();
            // A copy: what is called may set it anew.
            if (const auto call = alive ? alive->menuTargets.*target : nullptr) {
                call();
            }
        };
    };
    return {
        [conductor = weak_from_this()](const SnapCommand& command) {
            if (const auto alive = conductor.lock()) {
                alive->performCommand(command);
            }
        },
        [conductor = weak_from_this()] {
            if (const auto alive = conductor.lock()) {
                alive->openSettings();
            }
        },
        onTarget(&MenuTargets::openAbout),
        onTarget(&MenuTargets::checkForUpdates),
        [conductor = weak_from_this()] {
            const auto alive = conductor.lock();
            if (!alive) {
                return std::vector<std::string>();
            }
            const auto lines = alive->oledStatusLines();
            return std::vector<std::string>(lines.begin(), lines.end());
        },
        [conductor = weak_from_this()] {
            const auto alive = conductor.lock();
            return alive && alive->isExaggerated();
        },
        [conductor = weak_from_this()](bool exaggerated) {
            if (const auto alive = conductor.lock()) {
                alive->setExaggerated(exaggerated);
            }
        },
        onTarget(&MenuTargets::terminate),
    };
}

const DisplayService& ApplicationConductor::displays() {
    if (!displays_) {
        displays_ = DisplayService{std::make_shared<NSScreenProvider>(platform_.screenList)};
    }
    return *displays_;
}

}  // namespace lumatile
