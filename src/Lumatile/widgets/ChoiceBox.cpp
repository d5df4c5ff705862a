#include "Lumatile/widgets/ChoiceBox.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QPalette>

#include "Lumatile/widgets/SymbolIcon.h"
#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

void ChoiceBox::showPopup() {
    // Above and below the choices their window shows, which does not take colours over.
    QWidget& around = *view()->parentWidget();
    QPalette palette = around.palette();
    palette.setColor(QPalette::Window, WidgetColors::control());
    palette.setColor(QPalette::Base, WidgetColors::control());
    around.setPalette(palette);
    QComboBox::showPopup();
}

void ChoiceBox::paintEvent(QPaintEvent* event) {
    QComboBox::paintEvent(event);
    constexpr int side = 12;
    constexpr int fromRight = 8;
    QPainter painter(this);
    SymbolIcon::of("chevron.down", WidgetColors::secondaryLabel())
        .paint(&painter, QRect(width() - side - fromRight, (height() - side) / 2, side, side));
}

}  // namespace lumatile
