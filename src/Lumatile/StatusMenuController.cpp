#include "Lumatile/StatusMenuController.h"

#include <algorithm>
#include <type_traits>
#include <utility>
#include <variant>

#include "Lumatile/StatusMenuTexts.h"
#include "menu_model/MenuBuilder.h"
#include "menu_model/ShortcutFormatter.h"

namespace lumatile {

namespace {

constexpr double statusLinePoints = 12;

StatusLine statusLine(const std::string& text) {
    return {text,
            {text, "IBMPlexMono-Regular", statusLinePoints, StatusText::Color::secondaryLabel}};
}

}  // namespace

StatusMenuController::StatusMenuController(StatusItem& statusItem, Closures closures)
    : statusItem_(statusItem), closures_(std::move(closures)) {
    setProtected(false);
}

void StatusMenuController::rebuild(const std::vector<SnapCommand>& commands) {
    statusLineItems_ = closures_.oledStatusLines().size();
    StatusMenu menu(statusLineItems_, StatusLine{});
    // Filled before it is installed, so that a bar that shows the menu elsewhere is told once.
    const std::vector<StatusLine> lines = presentStatusLines();
    std::copy(lines.begin(), lines.end(), menu.begin());
    menu.emplace_back(MenuSeparator{});
    for (const MenuEntry& entry : MenuBuilder::build(commands, Axis::horizontal)) {
        menu.push_back(itemOf(entry));
    }
    statusItem_.setMenu(std::move(menu), [controller = weak_from_this()] {
        if (const auto alive = controller.lock()) {
            alive->menuWillOpen();
        }
    });
    refreshExaggerateItem();
}

void StatusMenuController::setProtected(bool active) {
    statusItem_.setImage(active ? StatusImage{imageActive, StatusMenuTexts::descriptionActive}
                                : StatusImage{imagePaused, StatusMenuTexts::descriptionPaused});
}

void StatusMenuController::menuWillOpen() {
    const std::vector<StatusLine> lines = presentStatusLines();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        statusItem_.setStatusLine(i, lines[i]);
    }
    refreshExaggerateItem();
}

std::vector<StatusLine> StatusMenuController::presentStatusLines() const {
    std::vector<StatusLine> lines;
    for (const std::string& text : closures_.oledStatusLines()) {
        if (lines.size() == statusLineItems_) {
            break;
        }
        lines.push_back(statusLine(text));
    }
    return lines;
}

void StatusMenuController::refreshExaggerateItem() {
    if (exaggerateItem) {
        statusItem_.setChecked(*exaggerateItem, closures_.isExaggerated());
    }
}

StatusMenuItem StatusMenuController::itemOf(const MenuEntry& entry) const {
    return std::visit(
        [this](const auto& each) -> StatusMenuItem {
            using Entry = std::decay_t<decltype(each)>;
            if constexpr (std::is_same_v<Entry, SnapCommand> || std::is_same_v<Entry, ActionID>) {
                return itemOf(each);
            } else {
                return each;
            }
        },
        entry);
}

ClosureMenuItem StatusMenuController::itemOf(const SnapCommand& command) const {
    KeyEquivalent keys;
    // A shortcut that is switched off shows its keys all the same.
    if (command.shortcut) {
        const std::uint32_t code = command.shortcut->carbonKeyCode;
        const bool hasName = ShortcutFormatter::keyName(code) != ShortcutFormatter::unknownKey;
        keys = KeyEquivalent::ofHotKey(ShortcutFormatter::keyEquivalent(code),
                                       command.shortcut->carbonModifiers,
                                       hasName ? std::nullopt : std::optional(code));
    }
    return {command.displayName(), std::move(keys),
            [run = closures_.run, command] { run(command); }};
}

ClosureMenuItem StatusMenuController::itemOf(ActionID action) const {
    switch (action) {
        case ActionID::settings:
            return {StatusMenuTexts::settings, KeyEquivalent::ofMenu(","), closures_.openSettings};
        case ActionID::checkForUpdates:
            return {StatusMenuTexts::checkForUpdates, {}, closures_.checkForUpdates};
        case ActionID::about:
            return {StatusMenuTexts::about, {}, closures_.openAbout};
        case ActionID::quit:
            break;
    }
    return {StatusMenuTexts::quit, KeyEquivalent::ofMenu("q"), closures_.terminate};
}

}  // namespace lumatile
