#include "windows/AXWindow.h"

#include "windows/AXAttribute.h"
#include "windows/AXRead.h"

namespace lumatile {

std::optional<Rect> AXWindow::frame() const {
    const auto position = AXRead::value<Point>(platform_, element_, AXAttribute::position);
    if (!position) {
        return std::nullopt;
    }
    const auto size = AXRead::value<Size>(platform_, element_, AXAttribute::size);
    if (!size) {
        return std::nullopt;
    }
    return Rect{position->x, position->y, size->width, size->height};
}

void AXWindow::setFrame(const Rect& frame) {
    AXElement enhanced;
    if (const std::optional<Pid> owner = pid()) {
        const AXElement application = platform_.applicationElement(*owner);
        if (AXRead::boolean(platform_, application, AXAttribute::enhancedUserInterface)
                .value_or(false)) {
            platform_.write(application, AXAttribute::enhancedUserInterface, AXValue(false));
            enhanced = application;
        }
    }
    platform_.write(element_, AXAttribute::position, AXValue(frame.origin()));
    platform_.write(element_, AXAttribute::size, AXValue(frame.size()));
    platform_.write(element_, AXAttribute::position, AXValue(frame.origin()));
    if (enhanced) {
        platform_.write(enhanced, AXAttribute::enhancedUserInterface, AXValue(true));
    }
}

void AXWindow::setPosition(const Point& position) {
    platform_.write(element_, AXAttribute::position, AXValue(position));
}

std::optional<Pid> AXWindow::pid() const { return platform_.pid(element_); }

bool AXWindow::isWindow() const {
    return AXRead::value<std::string>(platform_, element_, AXAttribute::role) ==
           AXAttribute::windowRole;
}

}  // namespace lumatile
