#pragma once

#include "displays/ScreenList.h"
#include "displays/ScreenProviding.h"

namespace lumatile {

/// The screens of the platform's list. Nothing is cached: a screen that is plugged in, moved or
/// given a panel counts from the next request on.
class NSScreenProvider final : public ScreenProviding {
public:
    /// @param list outlives the provider
    explicit NSScreenProvider(ScreenList& list) : list_(list) {}

    std::vector<Rect> screens() const override;
    std::optional<Rect> visibleFrameAt(const Point& point) const override;

private:
    ScreenList& list_;
};

}  // namespace lumatile
