#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/ObserverList.h"
#include "geometry/Rect.h"
#include "platform/wayland/WaylandConnection.h"

namespace lumatile {

/// A screen as the compositor describes it.
struct WaylandOutput {
    wl_output* object =
        nullptr;       ///< For requests; the list's, until the output is taken out of it.
    std::string name;  ///< Such as "DP-1"; empty where the compositor does not tell.
    Rect frame;  ///< The compositor's space: its pixels of all screens, y down, whole numbers.
    double scale = 1;  ///< Pixels of the screen for each of those; in steps of 1/120.

    bool operator==(const WaylandOutput&) const = default;
};

/// The screens of the compositor, as they come, change and go.
class WaylandOutputs {
public:
    using Observers = ObserverList<>;

    /// @param connection outlives this
    explicit WaylandOutputs(WaylandConnection& connection);
    WaylandOutputs(const WaylandOutputs&) = delete;
    WaylandOutputs& operator=(const WaylandOutputs&) = delete;
    ~WaylandOutputs();

    /// Those that the compositor has described, in the order in which they appeared.
    std::vector<WaylandOutput> list() const;

    /// `observer` is told when the list has become another one. Nothing may be kept of an output
    /// that is not in the list any more.
    Observers::Subscription observe(Observers::Observer observer);

private:
    class Entry;

    void add(const WaylandGlobal& global);
    void remove(const WaylandGlobal& global);
    void describe(Entry& entry);

    WaylandConnection& connection_;
    WaylandHandle<zxdg_output_manager_v1> manager_;
    std::vector<std::unique_ptr<Entry>> entries_;
    Observers observers_;
    WaylandConnection::Subscription appearing_;
    WaylandConnection::Subscription vanishing_;
};

}  // namespace lumatile
