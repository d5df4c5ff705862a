#include "Lumatile/widgets/ChoiceBox.h"

#include <QAbstractItemView>
#include <QPalette>
#include <QStyledItemDelegate>

#include "Lumatile/widgets/SymbolIcon.h"
#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

ChoiceBox::ChoiceBox(QWidget* parent) : QComboBox(parent) {
    // The toolkit's own knows nothing of the style sheet.
    setItemDelegate(new QStyledItemDelegate(this));
}

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
    SymbolIcon::drawChoiceArrow(*this);
}

}  // namespace lumatile
