#pragma once

#include <chrono>
#include <functional>

#include "platform/wayland/IdleNotifier.h"
#include "platform/wayland/WaylandHandle.h"

namespace lumatile {

/// Is told of each pause of the user, from a length on. The first of them begins now at the
/// earliest.
class IdleNotice {
public:
    /// @param notifier available
    /// @param timeout the length
    /// @param idled called when a pause has got so long
    /// @param resumed called when such a pause is over
    IdleNotice(const IdleNotifier& notifier, wl_seat* seat, std::chrono::milliseconds timeout,
               std::function<void()> idled, std::function<void()> resumed);
    IdleNotice(const IdleNotice&) = delete;
    IdleNotice& operator=(const IdleNotice&) = delete;
    ~IdleNotice();

private:
    struct Listeners;

    std::function<void()> idled_;
    std::function<void()> resumed_;
    WaylandHandle<ext_idle_notification_v1> notification_;
    WaylandHandle<org_kde_kwin_idle_timeout> olderNotification_;
};

}  // namespace lumatile
