#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace lumatile {

/// How far two colours stand apart in lightness, from 1 (not at all) to 21 (black on white), by the
/// formula of the Web Content Accessibility Guidelines.
inline double contrast(const QColor& one, const QColor& other) {
    const auto luminance = [](const QColor& color) {
        const auto linear = [](float part) {
            return part <= 0.04045F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace lumatile
