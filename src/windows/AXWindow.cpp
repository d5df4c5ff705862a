#include "windows/AXWindow.h"

#include "windows/AttributeName.h"
#include "windows/AttributeReader.h"
#include "windows/JoinedWrites.h"

namespace lumatile {

std::optional<Rect> AXWindow::frame() const {
    const auto position =
        AttributeReader::value<Point>(platform_, element_, AttributeName::position);
    if (!position) {
        return std::nullopt;
    }
    const auto size = AttributeReader::value<Size>(platform_, element_, AttributeName::size);
    if (!size) {
        return std::nullopt;
    }
    return Rect{position->x, position->y, size->width, size->height};
}

void AXWindow::setFrame(const Rect& frame) {
    Element enhanced;
    if (const std::optional<Pid> owner = pid()) {
        const Element application = platform_.applicationElement(*owner);
        if (AttributeReader::boolean(platform_, application, AttributeName::enhancedUserInterface)
                .value_or(false)) {
            platform_.write(application, AttributeName::enhancedUserInterface,
                            AttributeValue(false));
            enhanced = application;
        }
    }
    {
        const JoinedWrites together(platform_, element_);
        platform_.write(element_, AttributeName::position, AttributeValue(frame.origin()));
        platform_.write(element_, AttributeName::size, AttributeValue(frame.size()));
        platform_.write(element_, AttributeName::position, AttributeValue(frame.origin()));
    }
    if (enhanced) {
        platform_.write(enhanced, AttributeName::enhancedUserInterface, AttributeValue(true));
    }
}

void AXWindow::setPosition(const Point& position) {
    platform_.write(element_, AttributeName::position, AttributeValue(position));
}

std::optional<Pid> AXWindow::pid() const { return platform_.pid(element_); }

bool AXWindow::isWindow() const {
    return AttributeReader::value<std::string>(platform_, element_, AttributeName::role) ==
           AttributeName::windowRole;
}

}  // namespace lumatile
