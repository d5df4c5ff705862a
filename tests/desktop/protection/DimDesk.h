#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/simulated/SimulatedLog.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11DimOverlays.h"
#include "platform/x11/X11Monitors.h"
#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/ScreenColors.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// An overlay as another program finds it.
struct FoundOverlay {
    xcb_window_t window = XCB_WINDOW_NONE;
    PixelRect area;
    bool isMapped = false;
    bool isManaged = true;  ///< False where no window manager may interfere.
};

/// The overlays under test on a connection of their own, and what is to be seen of them.
class DimDesk {
public:
    explicit DimDesk(const std::string& display);

    X11Connection& connection() { return *connection_; }
    X11DimOverlays& overlays() { return *overlays_; }
    XClient& client() { return colors_; }
    const SimulatedLog& log() const { return log_; }

    /// Ends the overlays as the end of the program does.
    void closeOverlays() { overlays_.reset(); }

    /// Ends the connection as the end of a killed program does.
    void abandon();

    /// Runs what has arrived, as the run loop does, and returns when the server has carried
    /// everything out.
    void catchUp();

    /// Runs events until `condition` holds.
    bool runUntil(const std::function<bool()>& condition);

    /// Lowest first.
    std::vector<FoundOverlay> found();

    /// All children of the root, lowest first.
    std::vector<xcb_window_t> stacking();

    /// Whether every overlay lies above `window`, or above the frame that holds it.
    bool areAbove(xcb_window_t window);

    ScreenColor colorAt(int x, int y) { return colors_.at(x, y); }

    /// Waits until the screen shows this colour at this place, give or take what compositors lose
    /// by rounding.
    /// @return what it shows then, or at the deadline
    ScreenColor shownAt(int x, int y, const ScreenColor& expected);

    /// Waits until it does, and makes the test fail when it does not.
    void expectShown(int x, int y, const ScreenColor& expected);

    /// Compositors scale opacity and colour to 8 bits each; two steps of rounding.
    static constexpr int tolerance = 2;

private:
    std::unique_ptr<X11Connection> connection_;
    X11Monitors monitors_;
    SimulatedLog log_;
    std::unique_ptr<X11DimOverlays> overlays_;
    ScreenColors colors_;
};

/// A window of one colour that no window manager manages, mapped in front of all others.
class Backdrop : public XClient {
public:
    Backdrop(const std::string& display, std::uint32_t color, const PixelRect& area);
    Backdrop(const Backdrop&) = delete;
    Backdrop& operator=(const Backdrop&) = delete;
    ~Backdrop() override;

    xcb_window_t id() const { return window_; }

private:
    xcb_window_t window_;
};

}  // namespace lumatile::desktop
