#pragma once

#include "Lumatile/LaunchAtLogin.h"
#include "Lumatile/launch/HostWords.h"
#include "platform/freedesktop/bus/BusConnection.h"
#include "platform/freedesktop/bus/DesktopNotifications.h"
#include "platform/freedesktop/files/XdgFolders.h"
#include "platform/freedesktop/login/AutostartEntry.h"
#include "platform/freedesktop/tiling/DesktopTilingSettings.h"
#include "platform/freedesktop/updates/PackageKitUpdates.h"
#include "platform/qt/KeySequence.h"
#include "ports/DesktopSession.h"

namespace lumatile {

/// What the desktop has beside its window system. Every file and every service is opened when it is
/// first asked for something.
struct DesktopServices {
    /// All outlive the services.
    /// @param sessionBus the user's bus
    DesktopServices(const DesktopSession& session, BusConnection& sessionBus, SystemLog& log);

    /// How this desktop writes shortcuts. To be used while the services live.
    KeyTexts keyTexts();

    HostWords words;
    AutostartEntry loginItem;
    LaunchAtLogin launchAtLogin;
    DesktopTilingSettings tiling;
    BusConnection systemBus{BusConnection::systemAddress()};
    PackageKitUpdates packages{systemBus, AutostartEntry::runningBinary()};
    DesktopNotifications notifications;
};

}  // namespace lumatile
