#include "Lumatile/widgets/WheelRule.h"

#include <QFocusEvent>
#include <QWidget>

namespace lumatile {

WheelRule::WheelRule(QWidget& control) : QObject(&control) {
    control.installEventFilter(this);
    // A click on the text of a spin box is one into the box.
    for (QWidget* part : control.findChildren<QWidget*>()) {
        part->installEventFilter(this);
    }
}

void WheelRule::giveTo(QWidget& control) {
    // Otherwise the toolkit gives it the keyboard before the wheel is looked at here.
    if (control.focusPolicy() == Qt::WheelFocus) {
        control.setFocusPolicy(Qt::StrongFocus);
    }
    new WheelRule(control);
}

bool WheelRule::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            isClickedInto_ = true;
            break;
        case QEvent::FocusOut: {
            // Its own list of choices takes the keyboard and gives it back.
            const auto* out = dynamic_cast<const QFocusEvent*>(event);
            isClickedInto_ =
                isClickedInto_ && out != nullptr && out->reason() == Qt::PopupFocusReason;
            break;
        }
        case QEvent::Wheel:
            if (!isClickedInto_) {
                event->ignore();
                return true;
            }
            break;
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace lumatile
