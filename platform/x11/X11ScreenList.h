#pragma once

#include <optional>
#include <vector>

#include "displays/ScreenList.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Monitors.h"
#include "platform/x11/X11Struts.h"

namespace lumatile {

/// The monitors less the panels that touch them. Every request asks the server anew: a monitor that
/// is plugged in and a panel that moves count from the next request on. A request costs one round
/// trip, however many windows there are, and a second one when windows have come or gone.
class X11ScreenList final : public ScreenList {
public:
    /// Both outlive the list.
    X11ScreenList(X11Connection& connection, X11Monitors& monitors);

    std::vector<PlatformScreen> screens() override;

private:
    struct StrutQuestion;

    std::vector<StrutQuestion> askStruts(const std::vector<xcb_window_t>& windows);
    std::vector<X11Strut> takeStruts(const std::vector<StrutQuestion>& questions);

    X11Connection& connection_;
    X11Monitors& monitors_;
    std::vector<xcb_window_t> lastWindows_;  // Most likely the windows of the next request too.
};

}  // namespace lumatile
