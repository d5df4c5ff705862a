#include "Lumatile/settings/ChoiceBox.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QPalette>

#include "Lumatile/settings/SettingsColors.h"
#include "Lumatile/settings/SymbolIcon.h"

namespace lumatile {

void ChoiceBox::showPopup() {
    // Above and below the choices their window shows, which does not take colours over.
    QWidget& around = *view()->parentWidget();
    QPalette palette = around.palette();
    palette.setColor(QPalette::Window, SettingsColors::control());
    palette.setColor(QPalette::Base, SettingsColors::control());
    around.setPalette(palette);
    QComboBox::showPopup();
}

void ChoiceBox::paintEvent(QPaintEvent* event) {
    QComboBox::paintEvent(event);
    constexpr int side = 12;
    constexpr int fromRight = 8;
    QPainter painter(this);
    SymbolIcon::of("chevron.down", SettingsColors::secondaryLabel())
        .paint(&painter, QRect(width() - side - fromRight, (height() - side) / 2, side, side));
}

}  // namespace lumatile
