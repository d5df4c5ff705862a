#pragma once

#include <cstddef>
#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "geometry/Rect.h"
#include "platform/freedesktop/glib/GLibHandles.h"
#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/kwin/KWinProbe.h"

namespace lumatile::desktop {

/// What the program asks KWin to do with windows, overheard on the private bus.
class OverheardOrders {
public:
    /// @param probe outlives this
    OverheardOrders(const PrivateSession& session, KWinProbe& probe);
    OverheardOrders(const OverheardOrders&) = delete;
    OverheardOrders& operator=(const OverheardOrders&) = delete;
    ~OverheardOrders();

    /// A request for a place; what it does not name is absent.
    struct Placing {
        std::string id;  ///< Of the window, as the probe has it.
        std::optional<double> x, y, width, height;

        /// What it makes of a frame.
        Rect appliedTo(const Rect& frame) const;
    };

    /// Those for a window since `forget`, oldest first; everything that was asked by now among
    /// them.
    std::vector<Placing> placings(const std::string& id);

    /// Everything else that was asked about a window since then, and the placings that name a
    /// size, as it went over the bus.
    std::vector<std::string> otherThanMoves(const std::string& id);

    /// Everything else alone.
    std::vector<std::string> otherThanPlacings(const std::string& id);

    /// In how many messages everything went since then that was asked about windows.
    std::size_t messages();

    void forget();

private:
    static GDBusMessage* heard(GDBusConnection* connection, GDBusMessage* message,
                               gboolean isIncoming, gpointer self);
    void catchUp();
    std::vector<std::string> texts();
    std::vector<nlohmann::json> ordersAbout(const std::string& id);

    KWinProbe& probe_;
    GObjectHandle<GDBusConnection> connection_;
    guint filter_ = 0;
    // The library hears messages on a thread of its own.
    std::mutex mutex_;
    std::vector<std::string> texts_;
};

}  // namespace lumatile::desktop
