#include "benchmarks/dragging/HighlightArrivals.h"

namespace lumatile::benchmark {

HighlightArrivals::HighlightArrivals(const std::string& display) : XClient(display) {
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection(), root(), XCB_CW_EVENT_MASK, &mask);
    roundTrip();
}

std::optional<desktop::PixelRect> HighlightArrivals::shown() const {
    for (const auto& [id, window] : topLevels_) {
        if (window.isOverlay) {
            return window.place;
        }
    }
    return std::nullopt;
}

void HighlightArrivals::handle(const xcb_generic_event_t& event) {
    switch (event.response_type) {
        case XCB_MAP_NOTIFY: {
            const auto& map = reinterpret_cast<const xcb_map_notify_event_t&>(event);
            if (map.override_redirect != 0) {
                topLevels_[map.window].isOverlay = true;
                arrivals_.push_back({topLevels_[map.window].place, Clock::now()});
            }
            break;
        }
        case XCB_UNMAP_NOTIFY:
            topLevels_[reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window].isOverlay =
                false;
            break;
        case XCB_DESTROY_NOTIFY:
            topLevels_.erase(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
            break;
        case XCB_CREATE_NOTIFY: {
            const auto& create = reinterpret_cast<const xcb_create_notify_event_t&>(event);
            topLevels_[create.window].place = {create.x, create.y, create.width, create.height};
            break;
        }
        case XCB_CONFIGURE_NOTIFY: {
            const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
            TopLevel& window = topLevels_[configure.window];
            const desktop::PixelRect place{configure.x, configure.y, configure.width,
                                           configure.height};
            if (window.isOverlay && place != window.place) {
                arrivals_.push_back({place, Clock::now()});
            }
            window.place = place;
            break;
        }
        default:
            break;
    }
}

}  // namespace lumatile::benchmark
