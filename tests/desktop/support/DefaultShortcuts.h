#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "geometry/CellRect.h"

namespace lumatile::desktop {

/// A shortcut that the program has unless the user changes it, and what it should do: written down
/// once more, apart from the program's own table, as a user would read it in a manual.
struct DefaultShortcut {
    enum class Kind { area, center, restore, nextDisplay, previousDisplay };

    std::string_view command;  ///< "left", "centerThird" …
    std::string_view keys;     ///< "Ctrl+Alt+Left"
    std::uint8_t key = 0;      ///< Position, `KeyPosition`.
    bool withSuper = false;    ///< On top of Control and Alt.
    Kind kind = Kind::area;
    CellRect landscape{};  ///< On 24 × 12 cells; for areas only.
    CellRect portrait{};   ///< On 12 × 24 cells; for areas only.

    std::span<const std::uint8_t> modifiers() const;
};

/// All nineteen.
std::span<const DefaultShortcut> defaultShortcuts();

/// The one of this command.
/// @throws DesktopError when there is none
const DefaultShortcut& defaultShortcut(std::string_view command);

}  // namespace lumatile::desktop
