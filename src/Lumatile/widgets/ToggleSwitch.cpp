#include "Lumatile/widgets/ToggleSwitch.h"

#include <QPainter>
#include <QSignalBlocker>

#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

namespace {

constexpr double widthPoints = 36;
constexpr double heightPoints = 20;
constexpr double knobInset = 2;
constexpr double focusWidth = 1.5;

}  // namespace

ToggleSwitch::ToggleSwitch(QWidget* parent) : QCheckBox(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
}

void ToggleSwitch::showState(bool on) {
    const QSignalBlocker quiet(this);
    setChecked(on);
}

QSize ToggleSwitch::sizeHint() const {
    const double scale = AppFonts::pixelsPerPoint();
    return QSizeF(widthPoints * scale + 2 * roomForFocus, heightPoints * scale + 2 * roomForFocus)
        .toSize();
}

void ToggleSwitch::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF track =
        QRectF(rect()).adjusted(roomForFocus, roomForFocus, -roomForFocus, -roomForFocus);
    const double radius = track.height() / 2;
    painter.setPen(Qt::NoPen);
    QColor fill = isChecked() ? WidgetColors::accent() : WidgetColors::separator();
    if (!isEnabled()) {
        fill.setAlphaF(0.4F);
    }
    painter.setBrush(fill);
    painter.drawRoundedRect(track, radius, radius);

    const double side = track.height() - 2 * knobInset;
    const double left = isChecked() ? track.right() - knobInset - side : track.left() + knobInset;
    painter.setBrush(isEnabled() ? WidgetColors::label() : WidgetColors::disabledLabel());
    painter.drawEllipse(QRectF(left, track.top() + knobInset, side, side));

    if (hasFocus()) {
        painter.setPen(QPen(WidgetColors::label(), focusWidth));
        painter.setBrush(Qt::NoBrush);
        const double out = focusWidth;
        painter.drawRoundedRect(track.adjusted(-out, -out, out, out), radius + out, radius + out);
    }
}

}  // namespace lumatile
