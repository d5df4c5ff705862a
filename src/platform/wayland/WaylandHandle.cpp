#include "platform/wayland/WaylandHandle.h"

#include <ext-idle-notify-v1-client-protocol.h>
#include <idle-client-protocol.h>
#include <single-pixel-buffer-v1-client-protocol.h>
#include <viewporter-client-protocol.h>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>
#include <xdg-output-unstable-v1-client-protocol.h>

namespace lumatile {

void WaylandRelease::operator()(ext_idle_notification_v1* object) const {
    ext_idle_notification_v1_destroy(object);
}

void WaylandRelease::operator()(ext_idle_notifier_v1* object) const {
    ext_idle_notifier_v1_destroy(object);
}

void WaylandRelease::operator()(org_kde_kwin_idle* object) const {
    org_kde_kwin_idle_destroy(object);
}

void WaylandRelease::operator()(org_kde_kwin_idle_timeout* object) const {
    org_kde_kwin_idle_timeout_release(object);
}

void WaylandRelease::operator()(wl_buffer* object) const { wl_buffer_destroy(object); }

void WaylandRelease::operator()(wl_callback* object) const { wl_callback_destroy(object); }

void WaylandRelease::operator()(wl_compositor* object) const { wl_compositor_destroy(object); }

void WaylandRelease::operator()(wl_keyboard* object) const {
    if (wl_keyboard_get_version(object) >= WL_KEYBOARD_RELEASE_SINCE_VERSION) {
        wl_keyboard_release(object);
    } else {
        wl_keyboard_destroy(object);
    }
}

void WaylandRelease::operator()(wl_output* object) const {
    if (wl_output_get_version(object) >= WL_OUTPUT_RELEASE_SINCE_VERSION) {
        wl_output_release(object);
    } else {
        wl_output_destroy(object);
    }
}

void WaylandRelease::operator()(wl_region* object) const { wl_region_destroy(object); }

void WaylandRelease::operator()(wl_registry* object) const { wl_registry_destroy(object); }

void WaylandRelease::operator()(wl_seat* object) const {
    if (wl_seat_get_version(object) >= WL_SEAT_RELEASE_SINCE_VERSION) {
        wl_seat_release(object);
    } else {
        wl_seat_destroy(object);
    }
}

void WaylandRelease::operator()(wl_shm* object) const { wl_shm_destroy(object); }

void WaylandRelease::operator()(wl_shm_pool* object) const { wl_shm_pool_destroy(object); }

void WaylandRelease::operator()(wl_surface* object) const { wl_surface_destroy(object); }

void WaylandRelease::operator()(wp_single_pixel_buffer_manager_v1* object) const {
    wp_single_pixel_buffer_manager_v1_destroy(object);
}

void WaylandRelease::operator()(wp_viewport* object) const { wp_viewport_destroy(object); }

void WaylandRelease::operator()(wp_viewporter* object) const { wp_viewporter_destroy(object); }

void WaylandRelease::operator()(zwlr_layer_shell_v1* object) const {
    if (zwlr_layer_shell_v1_get_version(object) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION) {
        zwlr_layer_shell_v1_destroy(object);
    } else {
        // Older ones have no such request; what is gone is our side of it.
        wl_proxy_destroy(static_cast<wl_proxy*>(static_cast<void*>(object)));
    }
}

void WaylandRelease::operator()(zwlr_layer_surface_v1* object) const {
    zwlr_layer_surface_v1_destroy(object);
}

void WaylandRelease::operator()(zxdg_output_manager_v1* object) const {
    zxdg_output_manager_v1_destroy(object);
}

void WaylandRelease::operator()(zxdg_output_v1* object) const { zxdg_output_v1_destroy(object); }

}  // namespace lumatile
