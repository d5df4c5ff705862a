#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "Lumatile/DragToSnap.h"
#include "Lumatile/PanelProtection.h"
#include "Lumatile/RefusedShortcutLog.h"
#include "Lumatile/SettingsSync.h"
#include "Lumatile/SettingsViewModel.h"
#include "Lumatile/SnapExecution.h"
#include "Lumatile/StatusMenuController.h"
#include "Lumatile/SyncConflictCoordinator.h"
#include "blacklist/Blacklist.h"
#include "commands/CommandStore.h"
#include "displays/DisplayService.h"
#include "hotkeys/HotkeyService.h"
#include "oled_protection/OLEDSettings.h"
#include "ports/Platform.h"
#include "ports/SettingsPresenting.h"
#include "settings_core/SettingsSection.h"

namespace lumatile {

/// Owns every service, connects them, and starts and stops the features. Everything that is handed
/// a closure by the conductor may keep it for longer than the conductor lives: the closure then
/// does nothing. For that it must be owned by a shared pointer.
class ApplicationConductor : public std::enable_shared_from_this<ApplicationConductor> {
public:
    /// Loads the stored commands and settings. Nothing is started, registered or moved.
    /// @param platform the adapters behind it outlive the conductor
    explicit ApplicationConductor(Platform platform);
    ApplicationConductor(const ApplicationConductor&) = delete;
    ApplicationConductor& operator=(const ApplicationConductor&) = delete;
    ~ApplicationConductor();

    /// Notes that this session lets us control windows; nothing starts before.
    void setAccessibilityGranted() { accessibilityGranted_ = true; }

    /// What the menu leads to outside the conductor. Each does nothing until it is set.
    struct MenuTargets {
        std::function<void()> openAbout;
        std::function<void()> checkForUpdates;
        std::function<void()> terminate;  ///< Ends the program.
    };
    MenuTargets menuTargets;

    /// Puts the status item with its menu into the bar. Does nothing when it is there already.
    void createStatusMenu();

    /// Shows the present commands in the status menu, if there is one.
    void rebuildStatusMenu();

    /// Shows by the status item, if there is one, whether windows are being moved.
    void refreshStatusIcon();

    /// Shows the settings window, which is made when it is first asked for and kept.
    /// @param section absent: the one that was shown last
    void openSettings(std::optional<SettingsSection> section = std::nullopt);

    /// Takes over commands that the user has changed: stores them, registers their shortcuts where
    /// the features run, and shows them in the menu. Nothing happens when they are the present
    /// ones.
    void changeCommands(const std::vector<SnapCommand>& commands);

    /// Keeps commands and settings the same as on the user's other computers from now on. Nothing
    /// when it does already.
    void startPreferenceSync();

    /// Starts what is allowed; while running already, renews the menu alone.
    void startFeatures();

    /// Stops everything that `startFeatures` started; windows go back to their homes, the screens
    /// clear.
    void stopFeatures();

    /// For the end of the process.
    void shutdown();

    /// Runs `command` on the front window, also while the features are stopped.
    void performCommand(const SnapCommand& command);

    /// Runs `command`, chosen in a window of this program, on the window that was in front before.
    void performCommandBehindUs(const SnapCommand& command);

    /// Hands the present settings to the services that run by them.
    void applyOLEDSettings();

    /// Takes over settings that the user has changed: stores and applies them. Nothing happens when
    /// they are the present ones.
    void changeOLEDSettings(const OLEDSettings& settings);

    /// Whether windows are being moved; what the status icon shows.
    bool isProtectionActive() const { return featuresRunning_ && protection_.movesWindows(); }

    /// The lines on top of the status menu.
    std::array<std::string, 3> oledStatusLines() const { return protection_.statusLines(); }

    /// Registers the shortcuts of the present commands in place of those registered before; none
    /// while one is being recorded.
    void registerHotkeys();

    /// The commands whose shortcut belongs to another program on this desktop; empty while the
    /// features are stopped.
    const std::vector<UUID>& refusedShortcuts() const { return refusedShortcuts_; }

    /// The demonstration mode, which makes every effect large and quick. Never stored. Nothing
    /// happens when it is so already.
    void setExaggerated(bool exaggerated);
    bool isExaggerated() const { return exaggerated_; }

    bool featuresRunning() const { return featuresRunning_; }
    const CommandStore& store() const { return store_; }
    Blacklist& blacklist() { return blacklist_; }
    const OLEDSettings& oledSettings() const { return oledSettings_; }
    const DragToSnap& dragToSnap() const { return dragToSnap_; }
    const PanelProtection& protection() const { return protection_; }
    const JitterPolicy& jitter() const { return protection_.jitter(); }
    const OrbitScheduler& orbit() const { return protection_.orbit(); }
    const SnapExecution& snapExecution() const { return snapExecution_; }

private:
    const DisplayService& displays();
    StatusMenuController::Closures statusMenuClosures();
    void makeSettings();
    void noteRecording(bool isRecording);
    void unregisterHotkeys();
    void showRefusedShortcuts();
    void noteReassigned(std::uint32_t hotkey, const std::optional<KeyCombination>& combination);
    void applyCommands(std::vector<SnapCommand> commands);
    void reloadCommands();
    void reloadOLEDSettings();
    SettingsSync& sync();
    void presentConflict(const ConflictSummary& summary);
    void showChangedSettings();

    Platform platform_;
    CommandStore store_;
    Blacklist blacklist_;
    std::optional<DisplayService> displays_;
    OLEDSettings oledSettings_;
    bool exaggerated_ = false;
    PanelProtection protection_;
    SnapExecution snapExecution_;
    HotkeyService hotkeys_;
    RefusedShortcutLog refusedShortcutLog_;
    DragToSnap dragToSnap_;
    std::shared_ptr<StatusMenuController> statusMenu_;  ///< None before start-up.
    std::unique_ptr<SettingsSync> sync_;                ///< None before it is needed.
    SyncConflictCoordinator syncConflict_;
    std::unordered_map<std::uint32_t, UUID> hotkeyCommands_;  ///< By the hot key's id.
    std::vector<UUID> refusedShortcuts_;                      ///< The commands that they belong to.
    std::unordered_map<UUID, std::string> shortcutHolders_;   ///< Who has those, where it is known.
    std::shared_ptr<SettingsViewModel> settingsVM_;  ///< None before the settings are opened.
    std::unique_ptr<SettingsPresenting> settingsWC_;
    bool isRecordingShortcut_ = false;
    bool accessibilityGranted_ = false;
    bool featuresRunning_ = false;
};

}  // namespace lumatile
