#pragma once

#include <cstdint>
#include <vector>

#include "geometry/Point.h"
#include "geometry/Rect.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11RandR.h"

namespace lumatile {

/// The monitors of the server in root coordinates, primary first, then in the server's order; and
/// the one conversion between root coordinates and the accessibility space, whose origin is the
/// top-left corner of the primary monitor wherever that lies on the root.
class X11Monitors {
public:
    /// @param connection outlives the monitors
    explicit X11Monitors(X11Connection& connection);

    /// Whole monitors in root coordinates, each place once (mirrored outputs are one monitor). Read
    /// again after every change of the server's monitors; the whole root where the server knows no
    /// monitors. Never empty while the server lives.
    const std::vector<Rect>& rootRects();

    /// Width and height of the root window; struts are counted from its edges.
    Size rootSize();

    /// Counts how often the monitors or the root turned out to be others than before. For answers
    /// that are kept as long as it stays the same.
    std::uint64_t changes();

    /// Makes the next call read the monitors anew, for callers that must not miss a change whose
    /// event has not arrived yet.
    void invalidate() { stale_ = true; }

    /// Where the accessibility space begins on the root.
    Point origin();

    Point fromRoot(const Point& point);
    Point toRoot(const Point& point);
    Rect fromRoot(const Rect& rect);
    Rect toRoot(const Rect& rect);

    /// What the server's RandR can do.
    const X11RandR& randr() const { return randr_; }

private:
    void refresh();
    void readMonitors();

    X11Connection& connection_;
    X11RandR randr_;
    bool stale_ = true;
    std::vector<Rect> rootRects_;
    Size rootSize_;
    std::uint64_t changes_ = 0;
    X11Connection::Subscription subscription_;  // Last: its observer names the fields above.
};

}  // namespace lumatile
