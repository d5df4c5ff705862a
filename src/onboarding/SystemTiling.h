#pragma once

#include <functional>
#include <optional>
#include <string_view>

namespace lumatile {

/// The system's own snapping of windows that are dragged to a border of the screen.
struct SystemTiling {
    bool edgeDrag = false;     ///< At the left or right edge.
    bool menuBarDrag = false;  ///< At the top.

    bool operator==(const SystemTiling&) const = default;

    /// Whether a window dragged to a border would be fought over.
    bool conflictsWithDragToSnap() const { return edgeDrag || menuBarDrag; }

    static constexpr std::string_view edgeDragKey = "EnableTilingByEdgeDrag";
    static constexpr std::string_view menuBarDragKey = "EnableTopTilingByEdgeDrag";

    /// The first major version of the system that has such snapping.
    static constexpr int firstMajorVersion = 15;

    /// The system's setting under a key; absent where it is not set, or not as a boolean.
    using Lookup = std::function<std::optional<bool>(std::string_view key)>;

    /// A system that is too old is not asked. In any other what is not set is on.
    static SystemTiling read(int majorVersion, const Lookup& lookup);
};

}  // namespace lumatile
