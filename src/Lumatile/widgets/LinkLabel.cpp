#include "Lumatile/widgets/LinkLabel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

namespace {

constexpr double frameRadius = 4;

}  // namespace

LinkLabel::LinkLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

void LinkLabel::setLeads(bool leads) {
    setFocusPolicy(leads ? Qt::StrongFocus : Qt::NoFocus);
    setCursor(leads ? Qt::PointingHandCursor : Qt::ArrowCursor);
    QFont underlined = font();
    underlined.setUnderline(leads);
    setFont(underlined);
}

void LinkLabel::follow() {
    if (onFollow && focusPolicy() != Qt::NoFocus) {
        onFollow();
    }
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        follow();
    }
}

void LinkLabel::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            follow();
            break;
        default:
            QLabel::keyPressEvent(event);
            break;
    }
}

void LinkLabel::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(WidgetColors::accent(), 1));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), frameRadius,
                                frameRadius);
    }
}

}  // namespace lumatile
