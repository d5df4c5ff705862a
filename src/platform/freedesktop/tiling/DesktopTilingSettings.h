#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "onboarding/HostDesktop.h"
#include "platform/freedesktop/bus/BusConnection.h"
#include "platform/freedesktop/files/XdgFolders.h"
#include "platform/freedesktop/tiling/TilingSetting.h"
#include "ports/DesktopTiling.h"

namespace lumatile {

/// The tiling of the desktop that the program runs on, from that desktop's own settings. Nothing is
/// read before the first question.
class DesktopTilingSettings final : public DesktopTiling {
public:
    /// @param session the user's bus; outlives this
    DesktopTilingSettings(HostDesktop host, XdgFolders folders, BusConnection& session);

    /// Takes note that the program runs on another desktop than was known so far.
    void setHost(HostDesktop host);

    int majorVersion() override;
    std::optional<bool> lookup(std::string_view key) override;
    bool canOpenSettings() override;
    bool openSettings() override;
    bool canSwitchOff() override;
    bool switchOff() override;

private:
    /// Absent on a desktop without such a feature.
    TilingSetting* setting();
    std::unique_ptr<TilingSetting> makeSetting() const;

    HostDesktop host_;
    XdgFolders folders_;
    BusConnection& session_;
    std::unique_ptr<TilingSetting> setting_;
    bool isMade_ = false;
};

}  // namespace lumatile
