#pragma once

#include <optional>
#include <vector>

#include "displays/ScreenList.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Monitors.h"
#include "platform/x11/X11Struts.h"

namespace lumatile {

/// The monitors less the panels that touch them. Nothing is kept between two requests: a monitor
/// that is plugged in and a panel that moves count from the next request on. A request costs two
/// round trips, however many windows there are.
class X11ScreenList final : public ScreenList {
public:
    /// Both outlive the list.
    X11ScreenList(X11Connection& connection, X11Monitors& monitors);

    std::vector<PlatformScreen> screens() override;

private:
    std::vector<X11Strut> strutsOf(const std::vector<xcb_window_t>& windows);

    X11Connection& connection_;
    X11Monitors& monitors_;
};

}  // namespace lumatile
