#include "Lumatile/SettingsViewModel.h"

#include <algorithm>
#include <utility>

#include "commands/CommandStore.h"
#include "commands/ShortcutAvailability.h"
#include "settings_core/GridEditing.h"
#include "settings_core/ShortcutValidator.h"

namespace lumatile {

namespace {

/// Whether on or off. Two that have none are the same too.
bool haveSameKeys(const std::optional<Shortcut>& one, const std::optional<Shortcut>& other) {
    return one && other ? one->carbonKeyCode == other->carbonKeyCode &&
                              one->carbonModifiers == other->carbonModifiers
                        : one.has_value() == other.has_value();
}

}  // namespace

SettingsViewModel::SettingsViewModel(std::vector<SnapCommand> commands, const OLEDSettings& oled)
    : commands_(std::move(commands)), oled_(oled) {}

SettingsViewModel::Observation SettingsViewModel::observe(std::function<void()> changed) {
    return observers_.add(std::move(changed));
}

void SettingsViewModel::setSection(SettingsSection section) {
    if (section != section_) {
        section_ = section;
        observers_.notify();
    }
}

std::size_t SettingsViewModel::indexOfSelected() const {
    const auto found = std::find_if(commands_.begin(), commands_.end(),
                                    [this](const auto& each) { return each.id == selectedID_; });
    return static_cast<std::size_t>(found - commands_.begin());
}

const SnapCommand* SettingsViewModel::selected() const {
    const std::size_t index = indexOfSelected();
    return index < commands_.size() ? &commands_[index] : nullptr;
}

SnapCommand* SettingsViewModel::selectedCommand() {
    const std::size_t index = indexOfSelected();
    return index < commands_.size() ? &commands_[index] : nullptr;
}

void SettingsViewModel::select(const std::optional<UUID>& id) {
    if (id == selectedID_) {
        return;
    }
    selectedID_ = id;
    refusal_.reset();
    painted_.reset();
    observers_.notify();
}

std::vector<SnapCommand> SettingsViewModel::areas(bool custom) const {
    std::vector<SnapCommand> found;
    std::copy_if(commands_.begin(), commands_.end(), std::back_inserter(found),
                 [custom](const SnapCommand& each) {
                     return each.kind == Kind::area && each.isCustom() == custom;
                 });
    return found;
}

void SettingsViewModel::addCustomArea() {
    CommandStore store(commands_);
    const auto id = store.addCustomArea(newArea.ox, newArea.oy, newArea.w, newArea.h);
    if (!id) {
        return;
    }
    commands_ = std::move(store.commands);
    selectedID_ = id;
    refusal_.reset();
    painted_.reset();
    edited();
}

void SettingsViewModel::deleteSelected() {
    const SnapCommand* command = selected();
    if (command == nullptr || !command->isCustom()) {
        return;
    }
    std::erase_if(commands_, [this](const SnapCommand& each) { return each.id == selectedID_; });
    selectedID_.reset();
    refusal_.reset();
    painted_.reset();
    edited();
}

bool SettingsViewModel::renameSelected(std::string_view name) {
    SnapCommand* command = selectedCommand();
    if (command == nullptr) {
        return false;
    }
    const SnapCommand before = *command;
    if (!command->rename(name)) {
        return false;
    }
    if (*command != before) {
        edited();
    }
    return true;
}

void SettingsViewModel::record(const Shortcut& shortcut) {
    const SnapCommand* command = selected();
    if (command == nullptr || ShortcutValidator::isAbandoning(shortcut)) {
        return;
    }
    SnapCommand recorded = *command;
    recorded.shortcut = shortcut;
    const std::optional<SnapCommand> holder = conflict(recorded);
    if (!ShortcutValidator::isAcceptable(shortcut)) {
        refuse({Refusal::Reason::bareKey, std::nullopt});
    } else if (holder) {
        refuse({Refusal::Reason::taken, holder});
    } else {
        editShortcuts([&](auto& edited) { edited = shortcut; });
    }
}

void SettingsViewModel::recordUnusableKey() {
    if (selected() != nullptr) {
        refuse({Refusal::Reason::noCode, std::nullopt});
    }
}

void SettingsViewModel::refuse(Refusal refusal) {
    refusal_ = std::move(refusal);
    observers_.notify();
}

void SettingsViewModel::setRecording(bool isRecording) {
    if (isRecording == isRecording_) {
        return;
    }
    isRecording_ = isRecording;
    if (isRecording && refusal_) {
        refusal_.reset();
        observers_.notify();
    }
    if (onRecording) {
        onRecording(isRecording);
    }
}

void SettingsViewModel::removeShortcut() {
    editShortcuts([](auto& edited) { edited.reset(); });
}

void SettingsViewModel::setShortcutEnabled(bool enabled) {
    editShortcuts([enabled](auto& edited) {
        if (edited) {
            edited->enabled = enabled;
        }
    });
}

std::optional<SnapCommand> SettingsViewModel::sharingTwin(const SnapCommand& command) const {
    const auto found =
        std::find_if(commands_.begin(), commands_.end(), [&](const SnapCommand& each) {
            return each.nameKey == command.nameKey && each.axis != command.axis &&
                   haveSameKeys(each.shortcut, command.shortcut);
        });
    return found != commands_.end() ? std::optional(*found) : std::nullopt;
}

void SettingsViewModel::editShortcuts(const std::function<void(std::optional<Shortcut>&)>& edit) {
    const SnapCommand* command = selected();
    if (command == nullptr) {
        return;
    }
    const std::optional<SnapCommand> twin = sharingTwin(*command);
    const std::vector<SnapCommand> before = commands_;
    for (SnapCommand& each : commands_) {
        if (each.id == selectedID_ || (twin && each.id == twin->id)) {
            edit(each.shortcut);
        }
    }
    if (commands_ != before) {
        refusal_.reset();
        edited();
    } else if (std::exchange(refusal_, std::nullopt)) {
        observers_.notify();
    }
}

std::optional<SnapCommand> SettingsViewModel::conflict(const SnapCommand& command) const {
    if (!command.shortcut) {
        return std::nullopt;
    }
    std::vector<SnapCommand> others;
    std::copy_if(commands_.begin(), commands_.end(), std::back_inserter(others),
                 [&](const SnapCommand& each) { return each.nameKey != command.nameKey; });
    return ShortcutValidator::conflict(*command.shortcut, others, command.id);
}

void SettingsViewModel::setRefusedShortcuts(std::vector<UUID> commands,
                                            std::unordered_map<UUID, std::string> holders) {
    if (commands != refusedShortcuts_ || holders != shortcutHolders_) {
        refusedShortcuts_ = std::move(commands);
        shortcutHolders_ = std::move(holders);
        observers_.notify();
    }
}

bool SettingsViewModel::isShortcutRefused(const SnapCommand& command) const {
    return ShortcutAvailability::isRefused(command, commands_, refusedShortcuts_);
}

std::string SettingsViewModel::shortcutHolder(const SnapCommand& command) const {
    for (const SnapCommand& each : commands_) {
        const auto holder = shortcutHolders_.find(each.id);
        if (holder != shortcutHolders_.end() && each.shortcut == command.shortcut) {
            return holder->second;
        }
    }
    return {};
}

std::optional<UUID> SettingsViewModel::firstRefusedArea() const {
    for (const bool custom : {false, true}) {
        for (const SnapCommand& command : areas(custom)) {
            if (isShortcutRefused(command)) {
                return command.id;
            }
        }
    }
    return std::nullopt;
}

void SettingsViewModel::paint(const GridCell& from, const GridCell& to) {
    const SnapCommand* command = selected();
    if (command == nullptr) {
        return;
    }
    const CellRect block = GridEditing::rect(GridEditing::clamp(from, command->axis),
                                             GridEditing::clamp(to, command->axis));
    if (painted_ != block) {
        painted_ = block;
        observers_.notify();
    }
}

void SettingsViewModel::commitPaint() {
    SnapCommand* command = selectedCommand();
    const std::optional<CellRect> block = std::exchange(painted_, std::nullopt);
    if (command == nullptr || !block) {
        return;
    }
    const SnapCommand before = *command;
    GridEditing::setTarget(*command, *block);
    if (*command != before) {
        edited();
    } else {
        observers_.notify();
    }
}

void SettingsViewModel::cancelPaint() {
    if (std::exchange(painted_, std::nullopt)) {
        observers_.notify();
    }
}

std::optional<SnapCommand> SettingsViewModel::painted() const {
    const SnapCommand* command = selected();
    if (command == nullptr) {
        return std::nullopt;
    }
    SnapCommand shown = *command;
    if (painted_) {
        GridEditing::setTarget(shown, *painted_);
    }
    return shown;
}

void SettingsViewModel::restoreDefaultArea() {
    if (!differsFromDefault()) {
        return;
    }
    SnapCommand& command = commands_.at(indexOfSelected());
    command.targetSegments = GridEditing::defaultOf(command)->targetSegments;
    painted_.reset();
    edited();
}

bool SettingsViewModel::differsFromDefault() const {
    const SnapCommand* command = selected();
    const auto builtIn = command != nullptr ? GridEditing::defaultOf(*command) : std::nullopt;
    return builtIn && builtIn->targetSegments != command->targetSegments;
}

void SettingsViewModel::setOLED(const OLEDSettings& settings) {
    if (settings == oled_) {
        return;
    }
    oled_ = settings;
    if (onOLEDChange) {
        onOLEDChange(oled_);
    }
    observers_.notify();
}

void SettingsViewModel::replace(std::vector<SnapCommand> commands, const OLEDSettings& oled) {
    if (commands == commands_ && oled == oled_) {
        return;
    }
    commands_ = std::move(commands);
    oled_ = oled;
    deselectGone();
    observers_.notify();
}

void SettingsViewModel::deselectGone() {
    if (selected() == nullptr) {
        selectedID_.reset();
        refusal_.reset();
        painted_.reset();
    }
}

void SettingsViewModel::edited() {
    if (onChange) {
        onChange(commands_);
    }
    observers_.notify();
}

}  // namespace lumatile
