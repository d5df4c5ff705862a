#include "platform/simulated/SimulatedStatusItem.h"

#include <utility>
#include <variant>

namespace lumatile {

void SimulatedStatusItem::setImage(const StatusImage& image) {
    image_ = image;
    images_.push_back(image);
}

void SimulatedStatusItem::setMenu(StatusMenu menu, std::function<void()> menuWillOpen) {
    menu_ = std::move(menu);
    menuWillOpen_ = std::move(menuWillOpen);
    ++rebuilds_;
}

void SimulatedStatusItem::setStatusLine(std::size_t index, const StatusLine& line) {
    if (index < menu_.size() && std::holds_alternative<StatusLine>(menu_[index])) {
        menu_[index] = line;
    }
}

void SimulatedStatusItem::setChecked(std::size_t index, bool checked) {
    if (index < menu_.size()) {
        if (auto* item = std::get_if<ClosureMenuItem>(&menu_[index])) {
            item->isChecked = checked;
        }
    }
}

void SimulatedStatusItem::open() {
    // A copy: the program may install another menu meanwhile.
    runLoop_.post([willOpen = menuWillOpen_] {
        if (willOpen) {
            willOpen();
        }
    });
    runLoop_.settle();
}

bool SimulatedStatusItem::choose(std::string_view title) {
    open();
    const ClosureMenuItem* const item = find(title);
    if (item == nullptr || !item->isEnabled) {
        return false;
    }
    runLoop_.post([item = *item] { item.fire(); });
    runLoop_.settle();
    return true;
}

std::vector<std::string> SimulatedStatusItem::lines() const {
    std::vector<std::string> result;
    result.reserve(menu_.size());
    for (const StatusMenuItem& item : menu_) {
        if (const auto* line = std::get_if<StatusLine>(&item)) {
            result.push_back(line->title);
        } else if (const auto* closure = std::get_if<ClosureMenuItem>(&item)) {
            result.push_back(closure->title);
        } else if (const auto* header = std::get_if<MenuHeader>(&item)) {
            result.push_back("[" + header->title + "]");
        } else {
            result.emplace_back("-");
        }
    }
    return result;
}

const ClosureMenuItem* SimulatedStatusItem::find(std::string_view title) const {
    for (const StatusMenuItem& item : menu_) {
        const auto* closure = std::get_if<ClosureMenuItem>(&item);
        if (closure != nullptr && closure->title == title) {
            return closure;
        }
    }
    return nullptr;
}

}  // namespace lumatile
