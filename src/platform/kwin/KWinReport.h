#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "geometry/Point.h"
#include "platform/kwin/KWinScreen.h"
#include "platform/kwin/KWinWindow.h"

namespace lumatile {

/// What KWin's own snapping of windows that are dragged to an edge is set to. Told at the beginning
/// and whenever KWin has read its settings anew; what this program sets is not told.
struct KWinBorders {
    bool tiling = true;    ///< At the sides and in the corners.
    bool maximize = true;  ///< At the upper edge.

    bool operator==(const KWinBorders&) const = default;
};

/// Everything there is: what the script begins with.
struct KWinEverything {
    std::vector<KWinWindowRecord> windows;  ///< The topmost first.
    std::vector<KWinScreen> screens;
    std::optional<std::string> active;
    std::optional<KWinBorders> borders;
};

/// A window that is new or has changed.
struct KWinWindowChanged {
    KWinWindowRecord window;
};

struct KWinWindowGone {
    std::string id;
};

struct KWinActivated {
    std::optional<std::string> id;  ///< Absent: no window has the focus.
};

struct KWinScreensChanged {
    std::vector<KWinScreen> screens;
};

/// The user has begun to move or to resize a window.
struct KWinMoveBegan {
    std::string id;
    bool isResize = false;
    Point place;  ///< Of the pointer, KWin's space.
};

struct KWinMoved {
    Point place;
};

struct KWinMoveEnded {
    bool isResize = false;
    bool isTakenBack = false;  ///< The window is where it was before, or gone.
    Point place;
};

/// What became of an order.
struct KWinDone {
    std::uint64_t order = 0;
    enum class Result : std::uint8_t {
        done,
        placed,   ///< The window is there.
        asked,    ///< Its program has been asked for the size.
        refused,  ///< It cannot be moved.
        failed,   ///< Gone, or not understood.
    } result = Result::failed;
};

using KWinEvent = std::variant<KWinEverything, KWinWindowChanged, KWinWindowGone, KWinActivated,
                               KWinScreensChanged, KWinMoveBegan, KWinMoved, KWinMoveEnded,
                               KWinBorders, KWinDone>;

/// Reads what the script says.
struct KWinReport {
    KWinReport() = delete;

    static constexpr std::size_t longestText = std::size_t{4} << 20U;  ///< Bytes.
    static constexpr std::size_t mostWindows = 4096;
    static constexpr std::size_t mostScreens = 64;
    static constexpr double farthest = 1e6;  ///< Of an edge from the origin, logical pixels.

    /// Events that are not as they have to be are left out, each by itself.
    /// @return nothing for a text that is too long or not a list
    static std::optional<std::vector<KWinEvent>> parse(std::string_view text);
};

}  // namespace lumatile
