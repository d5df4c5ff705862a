#include "platform/x11/X11DimOverlays.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

#include <xcb/xfixes.h>

#include "platform/x11/X11PixelRect.h"
#include "platform/x11/X11Texts.h"

namespace lumatile {

namespace {

constexpr double fullOpacity = std::numeric_limits<std::uint32_t>::max();

void setItem(X11Connection& connection, xcb_window_t window, std::string_view name, xcb_atom_t type,
             std::uint32_t item) {
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, connection.atoms()[name],
                        type, 32, 1, &item);
}

void setText(X11Connection& connection, xcb_window_t window, xcb_atom_t name,
             std::string_view text) {
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, name, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

void setOpacityHint(X11Connection& connection, xcb_window_t window, double opacity) {
    setItem(connection, window, "_NET_WM_WINDOW_OPACITY", XCB_ATOM_CARDINAL,
            static_cast<std::uint32_t>(std::llround(opacity * fullOpacity)));
}

/// Takes one of a window's shapes away altogether, or gives it the whole window back.
void setShape(X11Connection& connection, xcb_window_t window, xcb_shape_kind_t kind, bool whole) {
    xcb_xfixes_region_t region = XCB_XFIXES_REGION_NONE;
    if (!whole) {
        region = xcb_generate_id(connection.get());
        xcb_xfixes_create_region(connection.get(), region, 0, nullptr);
    }
    xcb_xfixes_set_window_shape_region(connection.get(), window, kind, 0, 0, region);
    if (!whole) {
        xcb_xfixes_destroy_region(connection.get(), region);
    }
}

}  // namespace

X11DimOverlays::X11DimOverlays(X11Connection& connection, X11Monitors& monitors, SystemLog& log)
    : connection_(connection),
      monitors_(monitors),
      log_(log),
      ramps_(connection),
      compositor_(connection, [this] { apply(); }) {}

X11DimOverlays::~X11DimOverlays() {
    destroyWindows();
    xcb_flush(connection_.get());
}

void X11DimOverlays::rebuild() {
    destroyWindows();
    opacity_ = 0;
    // A screen whose event has not been read yet would be missed for the rest of the run.
    monitors_.invalidate();
    for (const Rect& monitor : monitors_.rootRects()) {
        makeWindow(monitor);
    }
    apply();
}

void X11DimOverlays::setOpacity(double opacity) {
    opacity_ = std::isnan(opacity) ? 0 : std::clamp(opacity, 0.0, 1.0);
    apply();
}

void X11DimOverlays::makeWindow(const Rect& monitor) {
    const std::optional<X11PixelRect> place = X11PixelRect::rounding(monitor);
    if (!place) {
        return;
    }
    const xcb_window_t window = xcb_generate_id(connection_.get());
    const std::array<std::uint32_t, 2> values = {connection_.screen().black_pixel, 1};
    xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window, connection_.root(),
                      static_cast<std::int16_t>(place->x), static_cast<std::int16_t>(place->y),
                      static_cast<std::uint16_t>(place->width),
                      static_cast<std::uint16_t>(place->height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT,
                      values.data());
    describe(window);
    if (compositor_.canBeKnown()) {
        setShape(connection_, window, XCB_SHAPE_SK_INPUT, false);
        setShape(connection_, window, XCB_SHAPE_SK_BOUNDING, false);
    }
    windows_.push_back(window);
}

void X11DimOverlays::describe(xcb_window_t window) {
    using namespace std::string_view_literals;
    setText(connection_, window, XCB_ATOM_WM_NAME, X11Texts::overlayTitle);
    setText(connection_, window, XCB_ATOM_WM_CLASS, "lumatile\0Lumatile\0"sv);
    // What is dragged along with the pointer: like this, it lies in front of everything, is
    // nobody's window, and is a kind that settings of compositors usually except from shadows.
    setItem(connection_, window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM,
            connection_.atoms()["_NET_WM_WINDOW_TYPE_DND"]);
    // A shadow would fall on the neighbouring monitor. picom is asked by its older name; the
    // compositors of window managers give none to windows that they do not manage.
    setItem(connection_, window, "_COMPTON_SHADOW", XCB_ATOM_CARDINAL, 0);
    // All black it looks like a full-screen program for which compositing could stop. It must not,
    // or the way back from black would flicker.
    setItem(connection_, window, "_NET_WM_BYPASS_COMPOSITOR", XCB_ATOM_CARDINAL, 2);
    setOpacityHint(connection_, window, 0);
}

void X11DimOverlays::destroyWindows() {
    for (const xcb_window_t window : windows_) {
        xcb_destroy_window(connection_.get(), window);
    }
    windows_.clear();
    isMapped_ = false;
    isWhole_ = false;
}

void X11DimOverlays::apply() {
    if (compositor_.isRunning()) {
        showWindows();
        ramps_.restore();
    } else {
        hideWindows();
        dimByRamps();
    }
    xcb_flush(connection_.get());
}

void X11DimOverlays::showWindows() {
    // When a compositor ends, its windows are solid from that moment on, and we hear of it a little
    // later. Were clear ones whole, all screens would flash black.
    const bool whole = opacity_ > 0;
    for (const xcb_window_t window : windows_) {
        setOpacityHint(connection_, window, opacity_);
        if (whole != isWhole_) {
            setShape(connection_, window, XCB_SHAPE_SK_BOUNDING, whole);
        }
        if (whole) {
            const std::uint32_t above = XCB_STACK_MODE_ABOVE;
            xcb_configure_window(connection_.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        }
        if (!isMapped_) {
            xcb_map_window(connection_.get(), window);
        }
    }
    isWhole_ = whole;
    isMapped_ = true;
}

void X11DimOverlays::hideWindows() {
    if (isMapped_) {
        for (const xcb_window_t window : windows_) {
            xcb_unmap_window(connection_.get(), window);
        }
    }
    isMapped_ = false;
}

void X11DimOverlays::dimByRamps() {
    if (windows_.empty() || opacity_ <= 0) {
        ramps_.restore();
        return;
    }
    if (!ramps_.dim(opacity_) && !hasComplained_ && !connection_.isLost()) {
        log_.write(X11Texts::dimOverlays, X11Texts::noDimming);
        hasComplained_ = true;
    }
}

}  // namespace lumatile
