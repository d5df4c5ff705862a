#pragma once

#include <optional>
#include <string_view>

#include "geometry/Orientation.h"

namespace lumatile {

/// The screen orientation that a command is made for, and with it the grid of its cells.
using Axis = Orientation;

/// "horizontal" or "vertical", as in the stored form.
constexpr std::string_view rawValue(Axis axis) {
    return axis == Axis::vertical ? "vertical" : "horizontal";
}

/// The axis of a raw value; absent for any other text.
constexpr std::optional<Axis> axisFromRawValue(std::string_view text) {
    for (const Axis axis : {Axis::horizontal, Axis::vertical}) {
        if (rawValue(axis) == text) {
            return axis;
        }
    }
    return std::nullopt;
}

}  // namespace lumatile
