#pragma once

#include <cstdint>
#include <vector>

#include "displays/ScreenList.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Monitors.h"
#include "platform/x11/X11ReservedRoom.h"

namespace lumatile {

/// The monitors less the panels that touch them. A request takes in what the server has told by
/// then: a monitor that is plugged in and a panel that moves count from the next request on. It
/// costs a few round trips, however many windows there are, when something has changed, and none
/// otherwise: while a window is dragged there is one for every movement of the mouse.
class X11ScreenList final : public ScreenList {
public:
    /// Both outlive the list.
    X11ScreenList(X11Connection& connection, X11Monitors& monitors);

    std::vector<PlatformScreen> screens() override;
    Point origin() override;

private:
    void note(const xcb_generic_event_t& event);
    std::vector<Rect> readVisible(const std::vector<Rect>& monitors);
    void read();

    X11Connection& connection_;
    X11Monitors& monitors_;
    X11ReservedRoom room_;
    std::vector<PlatformScreen> screens_;
    std::uint64_t monitorChanges_ = 0;  // Of the monitors when the screens were read.
    bool isStale_ = true;
    X11Connection::Subscription subscription_;  // Last: its observer names the fields above.
};

}  // namespace lumatile
