#include "platform/wayland/IdleNotice.h"

#include <ext-idle-notify-v1-client-protocol.h>
#include <idle-client-protocol.h>
#include <wayland-client.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace lumatile {

namespace {

// Of no length, some compositors take a timer of the older interface for one that is switched off.
constexpr std::chrono::milliseconds leastOlderTimeout{1};

}  // namespace

struct IdleNotice::Listeners {
    static void idled(void* data) {
        // It may destroy the notice.
        const std::function<void()> idled = static_cast<IdleNotice*>(data)->idled_;
        idled();
    }
    static void resumed(void* data) {
        const std::function<void()> resumed = static_cast<IdleNotice*>(data)->resumed_;
        resumed();
    }

    static constexpr ext_idle_notification_v1_listener notification = {
        .idled = [](void* data, ext_idle_notification_v1* /*notification*/) { idled(data); },
        .resumed = [](void* data, ext_idle_notification_v1* /*notification*/) { resumed(data); },
    };
    static constexpr org_kde_kwin_idle_timeout_listener olderNotification = {
        .idle = [](void* data, org_kde_kwin_idle_timeout* /*timeout*/) { idled(data); },
        .resumed = [](void* data, org_kde_kwin_idle_timeout* /*timeout*/) { resumed(data); },
    };
};

IdleNotice::IdleNotice(const IdleNotifier& notifier, wl_seat* seat,
                       std::chrono::milliseconds timeout, std::function<void()> idled,
                       std::function<void()> resumed)
    : idled_(std::move(idled)), resumed_(std::move(resumed)) {
    if (notifier.common) {
        notification_.reset(ext_idle_notifier_v1_get_idle_notification(
            notifier.common.get(), static_cast<std::uint32_t>(timeout.count()), seat));
        ext_idle_notification_v1_add_listener(notification_.get(), &Listeners::notification, this);
    } else {
        olderNotification_.reset(org_kde_kwin_idle_get_idle_timeout(
            notifier.older.get(), seat,
            static_cast<std::uint32_t>(std::max(timeout, leastOlderTimeout).count())));
        org_kde_kwin_idle_timeout_add_listener(olderNotification_.get(),
                                               &Listeners::olderNotification, this);
    }
}

IdleNotice::~IdleNotice() = default;

}  // namespace lumatile
