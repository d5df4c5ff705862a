#pragma once

#include <QColor>

#include "Lumatile/widgets/Palette.h"

namespace lumatile {

/// The colours of the settings: warm greys, so that the accent is the only colour.
struct WidgetColors {
    WidgetColors() = delete;

    static QColor opaque(const PaletteColor& color) { return {color.red, color.green, color.blue}; }

    static QColor accent() { return opaque(Palette::accent); }
    static QColor accentHover() { return {255, 122, 74}; }
    static QColor label() { return opaque(Palette::lightTint); }
    static QColor secondaryLabel() { return {166, 160, 150}; }
    static QColor disabledLabel() { return {110, 105, 98}; }
    static QColor warning() { return {255, 176, 92}; }

    static QColor window() { return {25, 24, 22}; }
    static QColor sidebar() { return {19, 18, 17}; }
    static QColor card() { return {35, 33, 30}; }
    static QColor control() { return {46, 43, 39}; }
    static QColor controlHover() { return {56, 53, 48}; }
    static QColor separator() { return {62, 58, 52}; }

    // The grid editor: a window on a dim grid.
    static QColor emptyCell() { return {78, 74, 67}; }
    static QColor titleBarCell() { return accent(); }
    static QColor frameCell() { return {171, 98, 66}; }
    static QColor interiorCell() { return {104, 70, 54}; }
};

}  // namespace lumatile
