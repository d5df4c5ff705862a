#pragma once

#include <vector>

#include <xcb/xcb.h>

#include "geometry/Rect.h"
#include "platform/x11/X11Compositor.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11GammaRamps.h"
#include "platform/x11/X11Monitors.h"
#include "ports/DimOverlays.h"
#include "ports/SystemLog.h"

namespace lumatile {

/// Overlays as windows that no window manager manages. They are translucent only where a compositor
/// runs; without one they would be solid black, so they are not shown and the same darkness comes
/// from the gamma ramps of the screens. Compositors come and go at any time, and the one takes over
/// from the other with the opacity of that moment.
///
/// An overlay stays where its monitor was when it was made, also while that monitor is away.
class X11DimOverlays final : public DimOverlays {
public:
    /// @param connection outlives the overlays
    /// @param monitors outlives the overlays
    /// @param log outlives the overlays; gets one line when there is neither a compositor nor a
    ///        screen with gamma ramps, at the first opacity that therefore cannot be had
    X11DimOverlays(X11Connection& connection, X11Monitors& monitors, SystemLog& log);
    X11DimOverlays(const X11DimOverlays&) = delete;
    X11DimOverlays& operator=(const X11DimOverlays&) = delete;
    ~X11DimOverlays() override;

    void rebuild() override;

    /// While a compositor runs this asks the server nothing. Where the opacity is above 0 the
    /// overlays come to the front again: windows that no window manager manages may have been
    /// mapped above them.
    /// @param opacity brought into 0 to 1; what is not a number counts as 0
    void setOpacity(double opacity) override;

private:
    void makeWindow(const Rect& monitor);
    void describe(xcb_window_t window);
    void destroyWindows();
    void apply();
    void showWindows();
    void hideWindows();
    void dimByRamps();

    X11Connection& connection_;
    X11Monitors& monitors_;
    SystemLog& log_;
    X11GammaRamps ramps_;
    std::vector<xcb_window_t> windows_;
    double opacity_ = 0;
    bool isMapped_ = false;
    bool isWhole_ = false;  // Whether the windows have their shape; a clear one has none.
    bool hasComplained_ = false;
    X11Compositor compositor_;  // Last: what it calls uses the fields above.
};

}  // namespace lumatile
