#pragma once

#include "windows/WindowControlling.h"

namespace lumatile {

/// A window that has been moved a little further whenever it is looked at.
class FollowingWindow final : public WindowControlling {
public:
    AXElementKey key() const override { return {}; }
    std::optional<Rect> frame() const override { return Rect{looks_++, 100, 700, 450}; }
    void setFrame(const Rect& /*frame*/) override {}
    void setPosition(const Point& /*position*/) override {}
    std::optional<Pid> pid() const override { return 1; }
    bool isWindow() const override { return true; }

private:
    mutable double looks_ = 0;
};

}  // namespace lumatile
