#pragma once

#include <memory>
#include <optional>
#include <string>

#include "geometry/Rect.h"
#include "platform/wayland/WaylandConnection.h"
#include "platform/wayland/WaylandOutputs.h"

struct kde_output_order_v1;

namespace lumatile {

/// The order in which Plasma has its screens; the first is the primary one.
class KWinOutputOrder {
public:
    /// Both outlive this.
    KWinOutputOrder(WaylandConnection& connection, WaylandOutputs& outputs);
    KWinOutputOrder(const KWinOutputOrder&) = delete;
    KWinOutputOrder& operator=(const KWinOutputOrder&) = delete;
    ~KWinOutputOrder() = default;
    /// The primary screen's frame in the compositor's space; absent where Plasma does not tell.
    std::optional<Rect> primary() const;

private:
    struct Release {
        void operator()(kde_output_order_v1* order) const;
    };

    WaylandOutputs& outputs_;
    std::unique_ptr<kde_output_order_v1, Release> order_;
    std::string first_;        // Name of an output.
    bool isListOpen_ = false;  // The first of the list that is coming has come.
};

}  // namespace lumatile
