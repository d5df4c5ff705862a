#include "Lumatile/settings/ShortcutRecorderView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "Lumatile/ShortcutWords.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/ViewText.h"
#include "Lumatile/widgets/WidgetColors.h"
#include "ports/KeyCodes.h"
#include "settings_core/RecordedModifiers.h"
#include "settings_core/RecorderContent.h"

namespace lumatile {

namespace {

constexpr double widthPoints = 180;
constexpr double heightPoints = 24;
constexpr double borderInset = 0.5;
constexpr double cornerRadius = 5;
constexpr double recordingWidth = 2;
constexpr double idleWidth = 1;
constexpr double textInset = 8;
constexpr double shortcutPoints = 12;
constexpr double promptPoints = 11;

std::uint32_t recordedFlags(Qt::KeyboardModifiers modifiers) {
    std::uint32_t flags = 0;
    if (modifiers & Qt::ShiftModifier) {
        flags |= RecordedModifiers::shift;
    }
    if (modifiers & Qt::ControlModifier) {
        flags |= RecordedModifiers::control;
    }
    if (modifiers & Qt::AltModifier) {
        flags |= RecordedModifiers::option;
    }
    if (modifiers & Qt::MetaModifier) {
        flags |= RecordedModifiers::command;
    }
    return flags;
}

}  // namespace

RecorderField::RecorderField(KeyCodes& keys, QWidget* parent) : QWidget(parent), keys_(keys) {
    // Going through the window with the Tab key must not record the Tab key.
    setFocusPolicy(Qt::ClickFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
    describe();
}

QSize RecorderField::sizeHint() const {
    const double scale = AppFonts::pixelsPerPoint();
    return QSizeF(widthPoints * scale, heightPoints * scale).toSize();
}

void RecorderField::setCurrent(const std::optional<Shortcut>& current) {
    if (current == current_) {
        return;
    }
    current_ = current;
    describe();
    update();
}

QString RecorderField::shownText() const {
    switch (recorderContent(isRecording_, current_)) {
        case RecorderContent::typeAShortcut:
            return viewText(SettingsTexts::typeAShortcut);
        case RecorderContent::shortcut:
            return QString::fromStdString(ShortcutWords::of(*current_, keys_.legends()));
        case RecorderContent::clickToRecord:
            break;
    }
    return viewText(SettingsTexts::clickToRecord);
}

void RecorderField::describe() { setAccessibleDescription(shownText()); }

bool RecorderField::event(QEvent* event) {
    // Before the window takes the keys for shortcuts of its own.
    if (isRecording_ && event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    // Before it goes on to the next field by the Tab key.
    if (auto* key = dynamic_cast<QKeyEvent*>(event);
        isRecording_ && key != nullptr && event->type() == QEvent::KeyPress) {
        keyPressEvent(key);
        return true;
    }
    return QWidget::event(event);
}

void RecorderField::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF path =
        QRectF(rect()).adjusted(borderInset, borderInset, -borderInset, -borderInset);
    painter.setBrush(WidgetColors::control());
    painter.setPen(isRecording_ ? QPen(WidgetColors::accent(), recordingWidth)
                                : QPen(WidgetColors::separator(), idleWidth));
    painter.drawRoundedRect(path, cornerRadius, cornerRadius);
    if (recorderContent(isRecording_, current_) == RecorderContent::shortcut) {
        painter.setFont(AppFonts::monospaced(shortcutPoints));
        painter.setPen(WidgetColors::label());
    } else {
        painter.setFont(AppFonts::text(promptPoints));
        painter.setPen(WidgetColors::secondaryLabel());
    }
    painter.drawText(QRectF(rect()).adjusted(textInset, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     shownText());
}

void RecorderField::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        setFocus(Qt::MouseFocusReason);
    }
}

void RecorderField::keyPressEvent(QKeyEvent* event) {
    if (!isRecording_ || event->isAutoRepeat()) {
        return;
    }
    switch (event->key()) {
        case Qt::Key_Shift:
        case Qt::Key_Control:
        case Qt::Key_Alt:
        case Qt::Key_AltGr:
        case Qt::Key_Meta:
        case Qt::Key_Super_L:
        case Qt::Key_Super_R:
        case Qt::Key_Hyper_L:
        case Qt::Key_Hyper_R:
        case Qt::Key_CapsLock:
        case Qt::Key_NumLock:
        case Qt::Key_ScrollLock:
        case Qt::Key_Mode_switch:
            return;  // Only on the way to a combination.
        default:
            break;
    }
    const std::optional<std::uint32_t> keyCode = keys_.virtualKeyCode(event->nativeScanCode());
    if (!keyCode) {
        clearFocus();
        if (onUnusableKey) {
            onUnusableKey();
        }
        return;
    }
    const Shortcut shortcut{*keyCode, RecordedModifiers::classic(recordedFlags(event->modifiers())),
                            true};
    clearFocus();
    if (onRecord) {
        onRecord(shortcut);
    }
}

void RecorderField::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    setRecording(true);
}

void RecorderField::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    setRecording(false);
}

void RecorderField::hideEvent(QHideEvent* event) {
    setRecording(false);
    QWidget::hideEvent(event);
}

void RecorderField::setRecording(bool isRecording) {
    if (isRecording == isRecording_) {
        return;
    }
    isRecording_ = isRecording;
    if (isRecording) {
        grabKeyboard();
    } else {
        releaseKeyboard();
    }
    describe();
    update();
    if (onRecording) {
        onRecording(isRecording);
    }
}

}  // namespace lumatile
