#include "Lumatile/settings/ChoiceBox.h"

#include <QPainter>

#include "Lumatile/settings/SettingsColors.h"
#include "Lumatile/settings/SymbolIcon.h"

namespace lumatile {

void ChoiceBox::paintEvent(QPaintEvent* event) {
    QComboBox::paintEvent(event);
    constexpr int side = 12;
    constexpr int fromRight = 8;
    QPainter painter(this);
    SymbolIcon::of("chevron.down", SettingsColors::secondaryLabel())
        .paint(&painter, QRect(width() - side - fromRight, (height() - side) / 2, side, side));
}

}  // namespace lumatile
