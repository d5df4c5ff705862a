#pragma once

#include <optional>
#include <string_view>

namespace lumatile {

/// Port: the desktop's own snapping of windows that are dragged to a border of the screen.
class DesktopTiling {
public:
    virtual ~DesktopTiling() = default;

    /// 15 or later on a desktop that has such snapping, less on one that has none.
    virtual int majorVersion() = 0;

    /// The desktop's setting under one of the keys of `SystemTiling`, as fresh as it can be had
    /// without waiting; absent where it is not set, not known yet or no boolean.
    virtual std::optional<bool> lookup(std::string_view key) = 0;

    /// Whether there is a program here that shows the settings.
    virtual bool canOpenSettings() = 0;

    /// Shows the desktop's own page of these settings, or the nearest one that it has.
    /// @return false when nothing could be started
    virtual bool openSettings() = 0;

    /// Whether the desktop lets a program switch its snapping off.
    virtual bool canSwitchOff() = 0;

    /// Switches the desktop's snapping off for good. The user has been asked. A later lookup sees
    /// it.
    /// @return false when the desktop refused it at once
    virtual bool switchOff() = 0;
};

}  // namespace lumatile
