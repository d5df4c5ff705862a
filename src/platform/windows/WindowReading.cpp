#include "platform/windows/WindowReading.h"

#include <algorithm>
#include <string>
#include <utility>

#include "windows/AttributeName.h"

namespace lumatile {

std::optional<AttributeValue> WindowReading::read(std::string_view attribute) const {
    if (attribute == AttributeName::role) {
        return AttributeValue(std::string(AttributeName::windowRole));
    }
    if (attribute == AttributeName::subrole) {
        return AttributeValue(std::string(subrole));
    }
    if (attribute == AttributeName::position) {
        return AttributeValue(frame().origin());
    }
    if (attribute == AttributeName::size) {
        return AttributeValue(frame().size());
    }
    if (attribute == AttributeName::minimized) {
        return AttributeValue(isMinimized);
    }
    if (attribute == AttributeName::fullScreen) {
        return AttributeValue(isFullScreen);
    }
    return std::nullopt;
}

std::optional<AttributeValue> ApplicationReading::read(std::string_view attribute) const {
    if (windows.empty()) {
        return std::nullopt;
    }
    if (attribute == AttributeName::role) {
        return AttributeValue(std::string("AXApplication"));
    }
    if (attribute == AttributeName::windows) {
        std::vector<Element> elements;
        elements.reserve(windows.size());
        for (const ApplicationWindow& window : windows) {
            elements.push_back(window.element);
        }
        return AttributeValue(std::move(elements));
    }
    if (isFocusOnFurniture) {
        return std::nullopt;
    }
    if (attribute == AttributeName::focusedWindow && focused) {
        return AttributeValue(*focused);
    }
    if (attribute == AttributeName::mainWindow) {
        const auto isOpen = [](const ApplicationWindow& window) { return window.isOpen; };
        auto main = std::find_if(windows.begin(), windows.end(), [](const auto& window) {
            return window.isOpen && !window.isElsewhere;
        });
        if (main == windows.end()) {
            main = std::find_if(windows.begin(), windows.end(), isOpen);
        }
        if (main != windows.end()) {
            return AttributeValue(main->element);
        }
    }
    return std::nullopt;
}

}  // namespace lumatile
