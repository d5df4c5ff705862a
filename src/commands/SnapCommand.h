#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/UUID.h"
#include "commands/Axis.h"
#include "commands/Kind.h"
#include "commands/Segment.h"
#include "commands/Shortcut.h"
#include "geometry/Area.h"

namespace lumatile {

/// One thing that the user can ask a window to do.
struct SnapCommand {
    /// Longest name that `rename` gives, in characters as a reader counts them.
    static constexpr std::size_t maxNameCharacters = 40;

    /// Identity. Built-in commands have the derived id, the same everywhere; custom areas a random
    /// one.
    UUID id;

    /// Stable key that looks up the display name: "command." plus a name for built-in commands,
    /// "custom." plus the lower-case text of `id` for custom areas.
    std::string nameKey;

    /// The orientation, and with it the grid, that the segments are laid out on.
    Axis axis = Axis::horizontal;

    Kind kind = Kind::area;

    /// The cells that the window is moved to; empty for every kind but `area`.
    std::vector<Segment> targetSegments;

    /// The cells at the screen's border that select this command while a window is dragged; empty:
    /// it cannot be reached by dragging.
    std::vector<Segment> activationSegments;

    std::optional<Shortcut> shortcut;

    bool visibleInMenuBar = false;          ///< Listed in the status menu.
    bool visibleInGreenButtonMenu = false;  ///< Listed in the menu of a window's zoom button.

    /// Section of menus and settings: "halves", "quarters", "thirds", "twoThirds", "whole",
    /// "displays" or "custom".
    std::optional<std::string> group;

    /// The user's own name; shown unless it is blank.
    std::optional<std::string> customName;

    bool operator==(const SnapCommand&) const = default;

    /// The id of a built-in command: made from its key and axis, so that it is the same on every
    /// machine and in every version.
    static UUID derivedId(std::string_view nameKey, Axis axis);

    /// A new custom area of one block on the landscape grid, with a fresh random id.
    static SnapCommand custom(std::string name, std::int64_t ox, std::int64_t oy, std::int64_t w,
                              std::int64_t h);

    /// Whether this is an area that the user drew.
    bool isCustom() const;

    /// Gives a custom area a new name: `name` without white space at its ends, cut to its first 40
    /// characters.
    /// @return false, with the old name kept, for built-in commands, for blank names, and for text
    /// that is not UTF-8
    bool rename(std::string_view name);

    /// The text of menus, settings and highlights.
    std::string displayName() const;

    /// The command that stands for this one on a screen of `screenAxis`: the first in `list` with
    /// the same key and that axis; this command when it has that axis already or has no such twin.
    /// The result refers to this command or into `list`.
    const SnapCommand& counterpart(const std::vector<SnapCommand>& list, Axis screenAxis) const;

    /// The area of `targetSegments`; segments without exactly four integers are left out.
    Area targetArea() const;

    /// The area of `activationSegments`, on the same terms.
    Area activationArea() const;
};

}  // namespace lumatile
