#include "Lumatile/widgets/MenuButton.h"

#include <QStyleOptionButton>
#include <QStylePainter>

#include "Lumatile/widgets/SymbolIcon.h"

namespace lumatile {

MenuButton::MenuButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
    // The style sheet leaves room for the arrow there.
    setObjectName(QStringLiteral("menuButton"));
}

void MenuButton::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);
    // The toolkit would have the text in the middle of all.
    option.rect.adjust(0, 0, -SymbolIcon::choiceArrowRoom, 0);
    painter.drawControl(QStyle::CE_PushButtonLabel, option);
    painter.end();
    SymbolIcon::drawChoiceArrow(*this);
}

}  // namespace lumatile
