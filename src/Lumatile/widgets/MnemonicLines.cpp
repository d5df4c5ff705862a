#include "Lumatile/widgets/MnemonicLines.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QProxyStyle>
#include <QVariant>
#include <QWidget>

namespace lumatile {

namespace {

/// Of a window: whether its lines are shown.
constexpr const char* areShownProperty = "mnemonicLines";

/// The same on every desktop, so that the settings' own colours come out as they are meant.
class Style final : public QProxyStyle {
public:
    Style() : QProxyStyle(QStringLiteral("fusion")) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        if (hint == SH_ComboBox_Popup) {
            return 0;  // Choices hang from their box; in its middle they would cover other rows.
        }
        if (hint != SH_UnderlineShortcut) {
            return QProxyStyle::styleHint(hint, option, widget, data);
        }
        return widget != nullptr && widget->window()->property(areShownProperty).toBool() ? 1 : 0;
    }
};

/// Windows do not own their style, and their parts use it until they are gone.
QStyle& sharedStyle() {
    static QPointer<QStyle> style;
    if (style.isNull()) {
        style = new Style;
        style->setParent(QCoreApplication::instance());
    }
    return *style;
}

}  // namespace

MnemonicLines::MnemonicLines(QWidget& window) : QObject(&window), window_(window) {
    window.installEventFilter(this);
}

void MnemonicLines::showIn(QWidget& window) {
    new MnemonicLines(window);
    window.setStyle(&sharedStyle());
}

bool MnemonicLines::eventFilter(QObject* watched, QEvent* event) {
    const auto isAlt = [event] {
        const auto* key = dynamic_cast<QKeyEvent*>(event);
        return key != nullptr && key->key() == Qt::Key_Alt;
    };
    switch (event->type()) {
        case QEvent::KeyPress:
            if (isAlt()) {
                show(true);
            }
            break;
        case QEvent::KeyRelease:
            if (isAlt()) {
                show(false);
            }
            break;
        case QEvent::WindowDeactivate:
        case QEvent::Hide:
            show(false);
            break;
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

void MnemonicLines::show(bool areShown) {
    if (areShown == window_.property(areShownProperty).toBool()) {
        return;
    }
    window_.setProperty(areShownProperty, areShown);
    for (QWidget* widget : window_.findChildren<QWidget*>()) {
        widget->update();
    }
}

}  // namespace lumatile
