#include "tests/desktop/support/DefaultShortcuts.h"

#include <algorithm>
#include <array>
#include <string>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/KeyPosition.h"

namespace lumatile::desktop {
namespace {

namespace Key = KeyPosition;
using Kind = DefaultShortcut::Kind;

constexpr std::array<DefaultShortcut, 19> table{{
    {"left", "Ctrl+Alt+Left", Key::left, false, Kind::area, {0, 0, 12, 12}, {0, 0, 6, 24}},
    {"right", "Ctrl+Alt+Right", Key::right, false, Kind::area, {12, 0, 12, 12}, {6, 0, 6, 24}},
    {"top", "Ctrl+Alt+Up", Key::up, false, Kind::area, {0, 0, 24, 6}, {0, 0, 12, 12}},
    {"bottom", "Ctrl+Alt+Down", Key::down, false, Kind::area, {0, 6, 24, 6}, {0, 12, 12, 12}},
    {"topLeft", "Ctrl+Alt+U", Key::u, false, Kind::area, {0, 0, 12, 6}, {0, 0, 6, 12}},
    {"topRight", "Ctrl+Alt+I", Key::i, false, Kind::area, {12, 0, 12, 6}, {6, 0, 6, 12}},
    {"bottomLeft", "Ctrl+Alt+J", Key::j, false, Kind::area, {0, 6, 12, 6}, {0, 12, 6, 12}},
    {"bottomRight", "Ctrl+Alt+K", Key::k, false, Kind::area, {12, 6, 12, 6}, {6, 12, 6, 12}},
    {"leftThird", "Ctrl+Alt+D", Key::d, false, Kind::area, {0, 0, 8, 12}, {0, 0, 12, 8}},
    {"centerThird", "Ctrl+Alt+F", Key::f, false, Kind::area, {8, 0, 8, 12}, {0, 8, 12, 8}},
    {"rightThird", "Ctrl+Alt+G", Key::g, false, Kind::area, {16, 0, 8, 12}, {0, 16, 12, 8}},
    {"leftTwoThirds", "Ctrl+Alt+E", Key::e, false, Kind::area, {0, 0, 16, 12}, {0, 0, 12, 16}},
    {"centerTwoThirds", "Ctrl+Alt+R", Key::r, false, Kind::area, {4, 0, 16, 12}, {0, 4, 12, 16}},
    {"rightTwoThirds", "Ctrl+Alt+T", Key::t, false, Kind::area, {8, 0, 16, 12}, {0, 8, 12, 16}},
    {"maximize", "Ctrl+Alt+Return", Key::enter, false, Kind::area, {0, 0, 24, 12}, {0, 0, 12, 24}},
    {"center", "Ctrl+Alt+C", Key::c, false, Kind::center},
    {"restore", "Ctrl+Alt+Backspace", Key::backspace, false, Kind::restore},
    {"nextDisplay", "Ctrl+Alt+Super+Right", Key::right, true, Kind::nextDisplay},
    {"previousDisplay", "Ctrl+Alt+Super+Left", Key::left, true, Kind::previousDisplay},
}};

constexpr std::array<std::uint8_t, 3> modifierKeys{Key::leftControl, Key::leftAlt, Key::leftSuper};

}  // namespace

std::span<const std::uint8_t> DefaultShortcut::modifiers() const {
    return std::span(modifierKeys).first(withSuper ? 3 : 2);
}

std::span<const DefaultShortcut> defaultShortcuts() { return table; }

const DefaultShortcut& defaultShortcut(std::string_view command) {
    const auto* const found =
        std::find_if(table.begin(), table.end(),
                     [&](const DefaultShortcut& each) { return each.command == command; });
    if (found == table.end()) {
        throw DesktopError("no command " + std::string(command));
    }
    return *found;
}

}  // namespace lumatile::desktop
