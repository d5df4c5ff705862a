#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "base/Lifeline.h"
#include "platform/freedesktop/bus/BusConnection.h"
#include "ports/Notifications.h"

namespace lumatile {

/// The desktop's notification service.
class DesktopNotifications final : public Notifications {
public:
    /// @param session the user's bus; outlives this
    explicit DesktopNotifications(BusConnection& session) : session_(session) {}
    DesktopNotifications(const DesktopNotifications&) = delete;
    DesktopNotifications& operator=(const DesktopNotifications&) = delete;
    ~DesktopNotifications() override = default;

    void show(const Notice& notice, std::function<void()> chosen) override;

    /// `text` as the services want it: their texts may hold markup, so what would be some is
    /// escaped.
    static std::string escaped(std::string_view text);

private:
    void listen();

    BusConnection& session_;
    std::unique_ptr<BusConnection::Subscription> actions_;
    std::function<void()> chosen_;
    guint shown_ = 0;    ///< The service's number of ours; 0: none.
    Lifeline lifeline_;  // The bus may answer when this is gone.
};

}  // namespace lumatile
