#pragma once

#include <optional>
#include <utility>

#include "windows/WindowControlling.h"

namespace lumatile {

/// A window of another program, reached through the accessibility platform.
class AXWindow final : public WindowControlling {
public:
    /// @param platform outlives the window
    AXWindow(AccessibilityPlatform& platform, Element element)
        : platform_(platform), element_(std::move(element)) {}

    const Element& element() const { return element_; }

    AXElementKey key() const override { return {element_}; }
    std::optional<Rect> frame() const override;

    /// Writes position, size and position again, as one change. The second position write is
    /// needed: a program that fits its new size to the screen may have moved itself while it did
    /// so. Where the application animates its moves for assistive programs, that mode is off
    /// meanwhile.
    void setFrame(const Rect& frame) override;

    void setPosition(const Point& position) override;
    std::optional<Pid> pid() const override;
    bool isWindow() const override;

private:
    AccessibilityPlatform& platform_;
    Element element_;
};

}  // namespace lumatile
