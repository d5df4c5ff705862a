#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "geometry/Point.h"
#include "geometry/Rect.h"
#include "geometry/Size.h"
#include "platform/windows/WindowKind.h"
#include "windows/AccessibilityPlatform.h"

namespace lumatile {

/// What the script tells of a window. Frames are in KWin's space: logical pixels, y downwards.
struct KWinWindowRecord {
    std::string id;  ///< KWin's own, never used again.
    Pid pid = 0;     ///< Of its program; 0: not known, in the mirror a negative number instead.
    std::optional<std::string> application;  ///< Desktop file id, else the window class.
    WindowKind kind = WindowKind::normal;
    Rect frame;  ///< What the user sees, decoration included.
    bool isMinimized = false;
    bool isFullScreen = false;
    bool isMaximized = false;  ///< On one axis or both.
    bool isTiled = false;
    bool isShaded = false;     ///< Rolled up to its title bar.
    bool isElsewhere = false;  ///< On a virtual desktop or an activity that is not shown.
    bool isMovable = false;
    bool isResizable = false;

    bool operator==(const KWinWindowRecord&) const = default;
};

/// What was written to a window last, and what it became.
struct KWinWrittenFrame {
    Rect frame;   ///< Unrounded, KWin's space.
    Rect became;  ///< As KWin had it then.
};

/// A size that a program was asked for and gave no answer to.
struct KWinUnmetSize {
    Size size;
    std::uint64_t frames = 0;  ///< Of the window at that time; it has answered when there are more.

    bool operator==(const KWinUnmetSize&) const = default;
};

/// A window of the mirror.
struct KWinWindow {
    KWinWindowRecord record;
    std::optional<KWinWrittenFrame> written;
    std::optional<double> timeout;  ///< Of a write, seconds; absent: the longest.
    std::uint64_t frames = 0;       ///< Counts the frames that it was told to have.
    std::optional<KWinUnmetSize> unmet;
};

}  // namespace lumatile
