#include "platform/kwin/KWinOutputOrder.h"

#include <algorithm>
#include <vector>

#include <kde-output-order-v1-client-protocol.h>

namespace lumatile {

void KWinOutputOrder::Release::operator()(kde_output_order_v1* order) const {
    kde_output_order_v1_destroy(order);
}

KWinOutputOrder::KWinOutputOrder(WaylandConnection& connection, WaylandOutputs& outputs)
    : outputs_(outputs) {
    const auto& globals = connection.globals();
    const auto global = std::find_if(globals.begin(), globals.end(), [](const WaylandGlobal& each) {
        return each.interface == kde_output_order_v1_interface.name;
    });
    if (global == globals.end()) {
        return;
    }
    order_.reset(
        connection.bindRaw<kde_output_order_v1>(*global, kde_output_order_v1_interface, 1));
    static constexpr kde_output_order_v1_listener listener{
        [](void* data, kde_output_order_v1* /*order*/, const char* name) {
            auto& self = *static_cast<KWinOutputOrder*>(data);
            if (!self.isListOpen_) {
                self.isListOpen_ = true;
                self.first_ = name;
            }
        },
        [](void* data, kde_output_order_v1* /*order*/) {
            static_cast<KWinOutputOrder*>(data)->isListOpen_ = false;
        }};
    kde_output_order_v1_add_listener(order_.get(), &listener, this);
}

std::optional<Rect> KWinOutputOrder::primary() const {
    const std::vector<WaylandOutput> outputs = outputs_.list();
    const auto found = std::find_if(
        outputs.begin(), outputs.end(),
        [this](const WaylandOutput& output) { return !first_.empty() && output.name == first_; });
    return found != outputs.end() ? std::optional(found->frame) : std::nullopt;
}

}  // namespace lumatile
