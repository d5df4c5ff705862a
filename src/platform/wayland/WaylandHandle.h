#pragma once

#include <memory>

struct ext_idle_notification_v1;
struct ext_idle_notifier_v1;
struct org_kde_kwin_idle;
struct org_kde_kwin_idle_timeout;
struct wl_buffer;
struct wl_callback;
struct wl_compositor;
struct wl_keyboard;
struct wl_output;
struct wl_region;
struct wl_registry;
struct wl_seat;
struct wl_shm;
struct wl_shm_pool;
struct wl_surface;
struct wp_single_pixel_buffer_manager_v1;
struct wp_viewport;
struct wp_viewporter;
struct zwlr_layer_shell_v1;
struct zwlr_layer_surface_v1;
struct zxdg_output_manager_v1;
struct zxdg_output_v1;

namespace lumatile {

/// Gives an object of the compositor's back, each in the way of its interface.
struct WaylandRelease {
    void operator()(ext_idle_notification_v1* object) const;
    void operator()(ext_idle_notifier_v1* object) const;
    void operator()(org_kde_kwin_idle* object) const;
    void operator()(org_kde_kwin_idle_timeout* object) const;
    void operator()(wl_buffer* object) const;
    void operator()(wl_callback* object) const;
    void operator()(wl_compositor* object) const;
    void operator()(wl_keyboard* object) const;
    void operator()(wl_output* object) const;
    void operator()(wl_region* object) const;
    void operator()(wl_registry* object) const;
    void operator()(wl_seat* object) const;
    void operator()(wl_shm* object) const;
    void operator()(wl_shm_pool* object) const;
    void operator()(wl_surface* object) const;
    void operator()(wp_single_pixel_buffer_manager_v1* object) const;
    void operator()(wp_viewport* object) const;
    void operator()(wp_viewporter* object) const;
    void operator()(zwlr_layer_shell_v1* object) const;
    void operator()(zwlr_layer_surface_v1* object) const;
    void operator()(zxdg_output_manager_v1* object) const;
    void operator()(zxdg_output_v1* object) const;
};

/// An object of the compositor's, with an owner. It goes before the connection does.
template <class Object>
using WaylandHandle = std::unique_ptr<Object, WaylandRelease>;

}  // namespace lumatile
