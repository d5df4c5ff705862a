#pragma once

#include <initializer_list>
#include <vector>

#include "displays/ScreenList.h"

namespace lumatile {

/// Screens that a test sets by hand.
class FixedScreenList final : public ScreenList {
public:
    FixedScreenList() = default;
    FixedScreenList(std::initializer_list<PlatformScreen> screens) : list(screens) {}

    std::vector<PlatformScreen> screens() override { return list; }
    Point origin() override { return {}; }

    /// A screen without panels. `frame` is in the platform's bottom-left space.
    static PlatformScreen bare(const Rect& frame) { return {frame, frame}; }

    std::vector<PlatformScreen> list;
};

}  // namespace lumatile
