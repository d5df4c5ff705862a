#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "windows/WindowControlling.h"

namespace lumatile {

class DraggedHandle final : public ElementHandle {
public:
    bool equals(const ElementHandle& other) const override { return this == &other; }
    std::size_t hash() const override { return 1; }
};

/// A window in memory that can be dragged and notes where it is put.
class DraggedWindow final : public WindowControlling {
public:
    explicit DraggedWindow(const Rect& frame) : current(frame) {}

    AXElementKey key() const override { return {handle_}; }
    std::optional<Rect> frame() const override {
        return isReadable ? std::optional(current) : std::nullopt;
    }
    void setFrame(const Rect& frame) override {
        current = frame;
        placed.push_back(frame);
    }
    void setPosition(const Point& position) override {
        current.x = position.x;
        current.y = position.y;
    }
    std::optional<Pid> pid() const override { return 1; }
    bool isWindow() const override { return true; }

    Rect current;
    bool isReadable = true;
    std::vector<Rect> placed;

private:
    std::shared_ptr<DraggedHandle> handle_ = std::make_shared<DraggedHandle>();
};

}  // namespace lumatile
