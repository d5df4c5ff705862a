#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>

#include "geometry/Rect.h"
#include "windows/WindowControlling.h"

namespace lumatile {

class FakeHandle final : public ElementHandle {
public:
    explicit FakeHandle(int id) : id_(id) {}

    bool equals(const ElementHandle& other) const override {
        const auto* handle = dynamic_cast<const FakeHandle*>(&other);
        return handle && handle->id_ == id_;
    }
    /// Few values, so that maps meet windows whose hashes collide.
    std::size_t hash() const override { return static_cast<std::size_t>(id_ % 2); }

private:
    int id_;
};

/// A window in memory that counts what is asked of it. Windows of the same id have equal keys.
class FakeWindow final : public WindowControlling {
public:
    FakeWindow(int id, const Rect& frame) : current(frame), id_(id) {}

    AXElementKey key() const override { return {std::make_shared<FakeHandle>(id_)}; }

    std::optional<Rect> frame() const override {
        ++reads;
        if (onRead) {
            onRead();
        }
        return isReadable ? std::optional(current) : std::nullopt;
    }

    void setFrame(const Rect& frame) override {
        ++frameWrites;
        if (!refusesMoves) {
            current.x = frame.x;
            current.y = frame.y;
        }
        if (!refusesResizes) {
            current.width = frame.width;
            current.height = frame.height;
        }
        if (onWrite) {
            onWrite();
        }
    }

    void setPosition(const Point& position) override {
        ++positionWrites;
        if (!refusesMoves) {
            current.x = position.x;
            current.y = position.y;
        }
        if (onWrite) {
            onWrite();
        }
    }

    std::optional<Pid> pid() const override { return 1; }
    bool isWindow() const override { return isReadable; }

    int writes() const { return frameWrites + positionWrites; }

    void resetCounts() {
        reads = 0;
        frameWrites = 0;
        positionWrites = 0;
    }

    Rect current;
    bool isReadable = true;
    bool refusesMoves = false;
    bool refusesResizes = false;
    std::function<void()> onRead;
    std::function<void()> onWrite;
    mutable int reads = 0;
    int frameWrites = 0;
    int positionWrites = 0;

private:
    int id_;
};

}  // namespace lumatile
