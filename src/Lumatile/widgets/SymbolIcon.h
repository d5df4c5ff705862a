#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

#include <string_view>

class QWidget;

namespace lumatile {

/// The program's own drawings of the symbols that the settings name, sharp at any size.
struct SymbolIcon {
    SymbolIcon() = delete;

    /// Null for a name without a drawing.
    static QIcon of(std::string_view name, const QColor& color);

    /// @param selected its colour in a row that is selected
    static QIcon of(std::string_view name, const QColor& color, const QColor& selected);

    /// Whether there is a drawing of that name.
    static bool isKnown(std::string_view name);

    /// @param pixels the side of the square, logical
    static QPixmap pixmap(std::string_view name, const QColor& color, int pixels, double scale);

    /// The arrow at the right end of a control from which choices hang; called while it is painted.
    static constexpr int choiceArrowRoom = 20;  ///< What it takes of the width.
    static void drawChoiceArrow(QWidget& control);
};

}  // namespace lumatile
