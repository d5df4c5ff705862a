#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "geometry/Rect.h"
#include "windows/AttributeName.h"
#include "windows/AttributeValue.h"

namespace lumatile {

/// Identities are never used twice.
enum class ApplicationID : std::uint64_t {};
enum class WindowID : std::uint64_t {};

/// The widths of a window's borders, pixels.
struct Extents {
    double left = 0;
    double right = 0;
    double top = 0;
    double bottom = 0;

    bool operator==(const Extents&) const = default;
};

/// A part of a window's content: a button, a text field, a group of those.
struct SimulatedPart {
    Rect frame;                         ///< Relative to the window's top-left corner.
    std::string role = "AXGroup";       ///< What it says it is.
    std::optional<std::size_t> parent;  ///< The part it lies in; absent: in the window itself.
};

/// A window as its program opens it.
struct SimulatedWindowTraits {
    Rect frame;  ///< Outer frame, accessibility space.
    std::string title;
    std::string role = std::string(AttributeName::windowRole);
    std::string subrole = std::string(AttributeName::standardWindowSubrole);
    bool isMinimized = false;
    bool isFullScreen = false;
    bool isMaximized = false;  ///< By the window manager, on either axis.
    bool isMovable = true;     ///< Whether the window manager lets anybody move it.
    Extents decorations;       ///< What the window manager adds around the content.
    Size minimumContent{1, 1};
    Size baseContent;                  ///< Content that the steps of `increment` are counted from.
    Size increment{1, 1};              ///< Steps in which the content grows.
    std::vector<SimulatedPart> parts;  ///< Later ones lie above earlier ones.
};

/// What goes wrong with one element.
struct SimulatedFaults {
    std::set<std::string, std::less<>> unreadable;  ///< Attributes that cannot be read.
    std::set<std::string, std::less<>> unwritable;  ///< Attributes whose writes fail.
    std::map<std::string, AttributeValue, std::less<>> answers;  ///< Attributes that read as this.
    bool isPidUnreadable = false;
};

/// Where a window is, in the screens' arrangement. The server knows whole pixels; the rectangle
/// that was asked for is kept beside them, so that a third of 1366 pixels reads as one.
struct SimulatedGeometry {
    Rect pixels;  ///< What can be seen.
    Rect asked;   ///< What was last asked for, unrounded.

    /// The rectangle asked for as long as the pixels are its rounding, else the pixels.
    Rect current() const;

    /// Rounded on edges: each edge to the pixel border next to it, halves to the right and down.
    static Rect rounded(const Rect& rect);
};

/// An open window.
struct SimulatedWindow {
    WindowID id{};
    ApplicationID application{};
    SimulatedWindowTraits traits;  ///< Its `frame` is where it was opened; see `geometry`.
    SimulatedGeometry geometry;
    SimulatedFaults faults;
    std::optional<double> messagingTimeout;  ///< Absent: its application's.
    bool owesAnswer = false;                 ///< The window manager has left a write unanswered.
    std::uint64_t pendingAnimation = 0;  ///< Number of the move under way; later ones replace it.

    bool isStandard() const;

    /// Minimized windows cannot be seen.
    bool isVisible() const { return !traits.isMinimized; }
};

}  // namespace lumatile
