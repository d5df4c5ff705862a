#pragma once

#include <sys/types.h>

#include <array>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// Something that a program asked the window manager for.
struct RootMessage {
    xcb_window_t window = XCB_WINDOW_NONE;  ///< The window that it is about.
    std::string type;                       ///< "_NET_MOVERESIZE_WINDOW", "_NET_WM_STATE" …
    std::array<std::uint32_t, 5> data{};

    bool operator==(const RootMessage&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const RootMessage& message);

/// Overhears what is sent to the root window: what was asked of the window manager, apart from what
/// it made of it.
class DesktopObserver : public XClient {
public:
    explicit DesktopObserver(const std::string& display);

    /// Everything asked since the last `forget`, in order.
    const std::vector<RootMessage>& messages();
    std::vector<RootMessage> messages(xcb_window_t window, const std::string& type = {});

    void forget();

    /// The active window as the window manager states it.
    xcb_window_t activeWindow();

    /// The first managed window of this class, else none.
    xcb_window_t windowOfClass(const std::string& windowClass);

    /// A viewable window of this process that no window manager frames or lists, as a menu is; else
    /// none.
    xcb_window_t unmanagedWindowOf(pid_t pid);

protected:
    void handle(const xcb_generic_event_t& event) override;

private:
    std::vector<RootMessage> messages_;
};

}  // namespace lumatile::desktop
