#include "commands/BuiltInCommands.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>

namespace lumatile {

namespace {

constexpr std::uint32_t controlOption = ClassicModifier::control | ClassicModifier::option;
constexpr std::uint32_t controlOptionCommand = controlOption | ClassicModifier::command;

// Named after what the keys print on a US keyboard; the codes are those of the physical keys.
constexpr Shortcut leftArrow{123, controlOption, true};
constexpr Shortcut rightArrow{124, controlOption, true};
constexpr Shortcut upArrow{126, controlOption, true};
constexpr Shortcut downArrow{125, controlOption, true};
constexpr Shortcut keyU{32, controlOption, true};
constexpr Shortcut keyI{34, controlOption, true};
constexpr Shortcut keyJ{38, controlOption, true};
constexpr Shortcut keyK{40, controlOption, true};
constexpr Shortcut keyD{2, controlOption, true};
constexpr Shortcut keyF{3, controlOption, true};
constexpr Shortcut keyG{5, controlOption, true};
constexpr Shortcut keyE{14, controlOption, true};
constexpr Shortcut keyR{15, controlOption, true};
constexpr Shortcut keyT{17, controlOption, true};
constexpr Shortcut returnKey{36, controlOption, true};
constexpr Shortcut keyC{8, controlOption, true};
constexpr Shortcut deleteKey{51, controlOption, true};
constexpr Shortcut commandRightArrow{124, controlOptionCommand, true};
constexpr Shortcut commandLeftArrow{123, controlOptionCommand, true};

struct Row {
    std::string_view nameKey;
    std::string_view group;
    Kind kind;
    std::optional<CellRect> target;
    std::optional<CellRect> activation;
    Shortcut shortcut;
};

// The side strips leave the corner cells to the quarters, and so do the outer two of the three
// strips at the bottom. The whole top border maximizes.
constexpr std::array<Row, 19> landscape{{
    {"command.left", "halves", Kind::area, CellRect{0, 0, 12, 12}, CellRect{0, 1, 1, 10},
     leftArrow},
    {"command.right", "halves", Kind::area, CellRect{12, 0, 12, 12}, CellRect{23, 1, 1, 10},
     rightArrow},
    {"command.top", "halves", Kind::area, CellRect{0, 0, 24, 6}, {}, upArrow},
    {"command.bottom", "halves", Kind::area, CellRect{0, 6, 24, 6}, {}, downArrow},
    {"command.topLeft", "quarters", Kind::area, CellRect{0, 0, 12, 6}, CellRect{0, 0, 1, 1}, keyU},
    {"command.topRight", "quarters", Kind::area, CellRect{12, 0, 12, 6}, CellRect{23, 0, 1, 1},
     keyI},
    {"command.bottomLeft", "quarters", Kind::area, CellRect{0, 6, 12, 6}, CellRect{0, 11, 1, 1},
     keyJ},
    {"command.bottomRight", "quarters", Kind::area, CellRect{12, 6, 12, 6}, CellRect{23, 11, 1, 1},
     keyK},
    {"command.leftThird", "thirds", Kind::area, CellRect{0, 0, 8, 12}, CellRect{1, 11, 7, 1}, keyD},
    {"command.centerThird", "thirds", Kind::area, CellRect{8, 0, 8, 12}, CellRect{8, 11, 8, 1},
     keyF},
    {"command.rightThird", "thirds", Kind::area, CellRect{16, 0, 8, 12}, CellRect{16, 11, 7, 1},
     keyG},
    {"command.leftTwoThirds", "twoThirds", Kind::area, CellRect{0, 0, 16, 12}, {}, keyE},
    {"command.centerTwoThirds", "twoThirds", Kind::area, CellRect{4, 0, 16, 12}, {}, keyR},
    {"command.rightTwoThirds", "twoThirds", Kind::area, CellRect{8, 0, 16, 12}, {}, keyT},
    {"command.maximize", "whole", Kind::area, CellRect{0, 0, 24, 12}, CellRect{1, 0, 22, 1},
     returnKey},
    {"command.center", "whole", Kind::center, {}, {}, keyC},
    {"command.restore", "whole", Kind::restore, {}, {}, deleteKey},
    {"command.nextDisplay", "displays", Kind::nextDisplay, {}, {}, commandRightArrow},
    {"command.previousDisplay", "displays", Kind::previousDisplay, {}, {}, commandLeftArrow},
}};

// The thirds are bands from top to bottom under the keys of their landscape twins. What acts the
// same on every screen exists on landscape only.
constexpr std::array<Row, 15> portrait{{
    {"command.left", "halves", Kind::area, CellRect{0, 0, 6, 24}, CellRect{0, 1, 1, 22}, leftArrow},
    {"command.right", "halves", Kind::area, CellRect{6, 0, 6, 24}, CellRect{11, 1, 1, 22},
     rightArrow},
    {"command.top", "halves", Kind::area, CellRect{0, 0, 12, 12}, {}, upArrow},
    {"command.bottom", "halves", Kind::area, CellRect{0, 12, 12, 12}, CellRect{1, 23, 10, 1},
     downArrow},
    {"command.topLeft", "quarters", Kind::area, CellRect{0, 0, 6, 12}, CellRect{0, 0, 1, 1}, keyU},
    {"command.topRight", "quarters", Kind::area, CellRect{6, 0, 6, 12}, CellRect{11, 0, 1, 1},
     keyI},
    {"command.bottomLeft", "quarters", Kind::area, CellRect{0, 12, 6, 12}, CellRect{0, 23, 1, 1},
     keyJ},
    {"command.bottomRight", "quarters", Kind::area, CellRect{6, 12, 6, 12}, CellRect{11, 23, 1, 1},
     keyK},
    {"command.leftThird", "thirds", Kind::area, CellRect{0, 0, 12, 8}, {}, keyD},
    {"command.centerThird", "thirds", Kind::area, CellRect{0, 8, 12, 8}, {}, keyF},
    {"command.rightThird", "thirds", Kind::area, CellRect{0, 16, 12, 8}, {}, keyG},
    {"command.leftTwoThirds", "twoThirds", Kind::area, CellRect{0, 0, 12, 16}, {}, keyE},
    {"command.centerTwoThirds", "twoThirds", Kind::area, CellRect{0, 4, 12, 16}, {}, keyR},
    {"command.rightTwoThirds", "twoThirds", Kind::area, CellRect{0, 8, 12, 16}, {}, keyT},
    {"command.maximize", "whole", Kind::area, CellRect{0, 0, 12, 24}, CellRect{1, 0, 10, 1},
     returnKey},
}};

struct NameRow {
    std::string_view nameKey;
    std::string_view name;
};

constexpr std::array<NameRow, 19> names{{
    {"command.left", "Left Half"},
    {"command.right", "Right Half"},
    {"command.top", "Top Half"},
    {"command.bottom", "Bottom Half"},
    {"command.topLeft", "Top Left"},
    {"command.topRight", "Top Right"},
    {"command.bottomLeft", "Bottom Left"},
    {"command.bottomRight", "Bottom Right"},
    {"command.leftThird", "Left Third"},
    {"command.centerThird", "Center Third"},
    {"command.rightThird", "Right Third"},
    {"command.leftTwoThirds", "Left Two Thirds"},
    {"command.centerTwoThirds", "Center Two Thirds"},
    {"command.rightTwoThirds", "Right Two Thirds"},
    {"command.maximize", "Maximize"},
    {"command.center", "Center"},
    {"command.restore", "Restore"},
    {"command.nextDisplay", "Next Display"},
    {"command.previousDisplay", "Previous Display"},
}};

constexpr std::array<NameRow, 6> portraitNames{{
    {"command.leftThird", "Top Third"},
    {"command.centerThird", "Middle Third"},
    {"command.rightThird", "Bottom Third"},
    {"command.leftTwoThirds", "Top Two Thirds"},
    {"command.centerTwoThirds", "Middle Two Thirds"},
    {"command.rightTwoThirds", "Bottom Two Thirds"},
}};

std::vector<Segment> segments(const std::optional<CellRect>& cell) {
    if (!cell) {
        return {};
    }
    return {Segment{cell->ox, cell->oy, cell->w, cell->h}};
}

void append(std::vector<SnapCommand>& commands, std::span<const Row> rows, Axis axis) {
    for (const Row& row : rows) {
        SnapCommand& command = commands.emplace_back();
        command.id = SnapCommand::derivedId(row.nameKey, axis);
        command.nameKey = row.nameKey;
        command.axis = axis;
        command.kind = row.kind;
        command.targetSegments = segments(row.target);
        command.activationSegments = segments(row.activation);
        command.shortcut = row.shortcut;
        command.visibleInMenuBar = true;
        command.visibleInGreenButtonMenu = true;
        command.group = row.group;
    }
}

std::optional<std::string_view> find(std::span<const NameRow> rows, std::string_view nameKey) {
    for (const NameRow& row : rows) {
        if (row.nameKey == nameKey) {
            return row.name;
        }
    }
    return std::nullopt;
}

}  // namespace

std::vector<SnapCommand> BuiltInCommands::defaults() {
    std::vector<SnapCommand> commands;
    commands.reserve(landscape.size() + portrait.size());
    append(commands, landscape, Axis::horizontal);
    append(commands, portrait, Axis::vertical);
    return commands;
}

std::optional<std::string_view> BuiltInCommands::name(std::string_view nameKey) {
    return find(names, nameKey);
}

std::optional<std::string_view> BuiltInCommands::portraitName(std::string_view nameKey) {
    return find(portraitNames, nameKey);
}

}  // namespace lumatile
