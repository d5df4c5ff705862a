#pragma once

#include <functional>
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
    /// @param host asked before every answer: on which desktop the program runs
    /// @param session the user's bus; outlives this
    /// @param isHeldBack whether the desktop's snapping rests while this program snaps; it counts
    /// as
    ///        none then, since nobody has to switch it off
    DesktopTilingSettings(std::function<HostDesktop()> host, XdgFolders folders,
                          BusConnection& session, bool isHeldBack = false);

    int majorVersion() override;
    std::optional<bool> lookup(std::string_view key) override;
    bool canOpenSettings() override;
    bool openSettings() override;
    bool canSwitchOff() override;
    bool switchOff() override;

private:
    /// Absent on a desktop without such a feature.
    TilingSetting* setting();
    std::unique_ptr<TilingSetting> makeSetting(DesktopKind kind) const;

    std::function<HostDesktop()> host_;
    XdgFolders folders_;
    BusConnection& session_;
    bool isHeldBack_;
    std::optional<DesktopKind> kind_;  ///< Whose setting it is, once that has been looked for.
    std::unique_ptr<TilingSetting> setting_;
};

}  // namespace lumatile
