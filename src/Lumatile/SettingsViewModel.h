#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/ObserverList.h"
#include "base/UUID.h"
#include "commands/Shortcut.h"
#include "commands/SnapCommand.h"
#include "geometry/CellRect.h"
#include "oled_protection/OLEDSettings.h"
#include "settings_core/GridCell.h"
#include "settings_core/SettingsSection.h"

namespace lumatile {

/// What the settings window shows and edits. Every edit goes through here and is told on at once;
/// there is nothing to apply or to cancel. One for the whole run, from the first time that the
/// window is opened.
class SettingsViewModel {
public:
    /// Why a recorded shortcut was not taken.
    struct Refusal {
        enum class Reason : std::uint8_t { bareKey, taken, noCode };
        Reason reason = Reason::bareKey;
        std::optional<SnapCommand> holder;  ///< The command that has it, where it is taken.

        bool operator==(const Refusal&) const = default;
    };

    /// The place of a new area on the landscape grid: half the screen's width and height, in its
    /// middle.
    static constexpr CellRect newArea{6, 3, 12, 6};

    /// Called after each edit of `commands`, with all of them.
    std::function<void(const std::vector<SnapCommand>&)> onChange;

    /// Called after each edit of `oled`.
    std::function<void(const OLEDSettings&)> onOLEDChange;

    /// Called with true before a shortcut is recorded and with false afterwards.
    std::function<void(bool)> onRecording;

    SettingsViewModel(std::vector<SnapCommand> commands, const OLEDSettings& oled);
    SettingsViewModel(const SettingsViewModel&) = delete;
    SettingsViewModel& operator=(const SettingsViewModel&) = delete;
    ~SettingsViewModel() = default;

    /// Being told of changes; destroying it ends that. May outlive the model.
    using Observation = ObserverList<>::Subscription;

    /// Calls `changed` after anything here has changed.
    [[nodiscard]] Observation observe(std::function<void()> changed);

    SettingsSection section() const { return section_; }
    void setSection(SettingsSection section);

    /// The command that the snap areas show; absent when there is none.
    const std::optional<UUID>& selectedID() const { return selectedID_; }
    const SnapCommand* selected() const;
    void select(const std::optional<UUID>& id);

    const std::vector<SnapCommand>& commands() const { return commands_; }
    const OLEDSettings& oled() const { return oled_; }

    /// The areas that the list shows under "Built-in" or under "Your Areas", in stored order.
    std::vector<SnapCommand> areas(bool custom) const;

    /// Adds an area of the user's under the next free name and selects it; nothing when the list is
    /// as long as it may get.
    void addCustomArea();

    /// Deletes the selected area of the user's; afterwards none is selected.
    void deleteSelected();

    /// @return false, and nothing changes, for a built-in command and a name that is blank
    bool renameSelected(std::string_view name);

    /// Gives the selected command the shortcut, unless it is a bare key or another command has it.
    /// A twin with the same keys gets it too. A bare Escape changes nothing, without a word.
    void record(const Shortcut& shortcut);

    /// A key was to be recorded that shortcuts cannot be stored with.
    void recordUnusableKey();
    const std::optional<Refusal>& refusal() const { return refusal_; }

    /// While a shortcut is recorded, our own are not to act on it.
    void setRecording(bool isRecording);

    /// Both also for a twin with the same keys.
    void removeShortcut();
    void setShortcutEnabled(bool enabled);

    /// The twin of `command` for the other screen orientation while both have the same keys, or
    /// none; absent otherwise. What is done to the shortcut of one is done to both.
    std::optional<SnapCommand> sharingTwin(const SnapCommand& command) const;

    /// The other command that has the shortcut of `command`. Its twin for the other screen
    /// orientation has it rightly and does not count.
    std::optional<SnapCommand> conflict(const SnapCommand& command) const;

    /// The commands whose shortcut belongs to another program on this desktop.
    const std::vector<UUID>& refusedShortcuts() const { return refusedShortcuts_; }
    /// @param holders who has them, where the desktop tells
    void setRefusedShortcuts(std::vector<UUID> commands,
                             std::unordered_map<UUID, std::string> holders = {});
    bool isShortcutRefused(const SnapCommand& command) const;

    /// Who has a shortcut that belongs to another program, as the user knows it; empty where that
    /// is not known.
    std::string shortcutHolder(const SnapCommand& command) const;

    /// The first of the listed areas whose shortcut belongs to another program.
    std::optional<UUID> firstRefusedArea() const;

    /// Shows the block that two cells span in place of the selected area; cells outside the grid
    /// count as those on its edge. Nothing is edited.
    void paint(const GridCell& from, const GridCell& to);

    /// Makes the painted block the area; nothing when none is painted or it is the same.
    void commitPaint();

    /// The area as it is stored is shown again.
    void cancelPaint();

    /// The selected command as the grid shows it: with the painted block, while there is one.
    std::optional<SnapCommand> painted() const;

    /// The selected built-in area as it came.
    void restoreDefaultArea();
    /// Whether that would change it.
    bool differsFromDefault() const;

    void setOLED(const OLEDSettings& settings);

    /// What another machine or another process has changed: taken over without telling it on.
    void replace(std::vector<SnapCommand> commands, const OLEDSettings& oled);

private:
    void edited();
    /// As many as there are commands where none is selected.
    std::size_t indexOfSelected() const;
    SnapCommand* selectedCommand();
    void deselectGone();
    void refuse(Refusal refusal);
    /// Changes the shortcut of the selected command and of the twin that shares it, and tells of
    /// that once, if anything came of it.
    void editShortcuts(const std::function<void(std::optional<Shortcut>&)>& edit);

    SettingsSection section_ = SettingsSection::general;
    std::optional<UUID> selectedID_;
    std::vector<SnapCommand> commands_;
    OLEDSettings oled_;
    std::vector<UUID> refusedShortcuts_;
    std::unordered_map<UUID, std::string> shortcutHolders_;
    std::optional<Refusal> refusal_;
    std::optional<CellRect> painted_;
    bool isRecording_ = false;
    ObserverList<> observers_;
};

}  // namespace lumatile
