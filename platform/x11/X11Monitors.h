#pragma once

#include <vector>

#include "geometry/Point.h"
#include "geometry/Rect.h"
#include "platform/x11/X11Connection.h"

namespace lumatile {

/// The monitors of the server in root coordinates, primary first, then in the server's order; and
/// the one conversion between root coordinates and the accessibility space, whose origin is the
/// top-left corner of the primary monitor wherever that lies on the root.
class X11Monitors {
public:
    explicit X11Monitors(X11Connection& connection);

    /// Whole monitors in root coordinates. Read again after every change of the server's monitors;
    /// the whole root where the server knows no monitors. Never empty while the server lives.
    const std::vector<Rect>& rootRects();

    /// Width and height of the root window; struts are counted from its edges.
    Size rootSize();

    Point fromRoot(const Point& point);
    Point toRoot(const Point& point);
    Rect fromRoot(const Rect& rect);
    Rect toRoot(const Rect& rect);

private:
    void refresh();

    X11Connection& connection_;
    X11Connection::Subscription subscription_;
    bool stale_ = true;
    std::vector<Rect> rootRects_;
    Size rootSize_;
};

}  // namespace lumatile
