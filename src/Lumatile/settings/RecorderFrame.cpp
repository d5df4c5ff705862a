#include "Lumatile/settings/RecorderFrame.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>

#include <cmath>

#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/settings/ShortcutRecorderView.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/SymbolIcon.h"
#include "Lumatile/widgets/ViewText.h"
#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

namespace {

constexpr int margin = 3;
constexpr int spacing = 2;
constexpr double crossPoints = 12;
constexpr double radius = 8;
constexpr double focusWidth = 2;

}  // namespace

RecorderFrame::RecorderFrame(KeyCodes& keys, QWidget* parent)
    : QWidget(parent), field_(new RecorderField(keys)), remove_(new QToolButton) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(viewText(SettingsTexts::recordShortcut));
    field_->setAccessibleName(viewText(SettingsTexts::shortcut));
    const int cross = static_cast<int>(std::lround(crossPoints * AppFonts::pixelsPerPoint()));
    remove_->setObjectName(QStringLiteral("inFrame"));
    remove_->setIcon(
        SymbolIcon::of("xmark", WidgetColors::secondaryLabel(), WidgetColors::label()));
    remove_->setIconSize({cross, cross});
    remove_->setAccessibleName(viewText(SettingsTexts::removeShortcut));
    remove_->setToolTip(viewText(SettingsTexts::removeShortcut));
    remove_->setFocusPolicy(Qt::StrongFocus);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(spacing);
    // It shrinks with the cross.
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(field_);
    layout->addWidget(remove_);
}

int RecorderFrame::widthWithCross() const {
    return field_->sizeHint().width() + spacing + remove_->sizeHint().width() + 2 * margin;
}

void RecorderFrame::begin() { field_->setFocus(Qt::OtherFocusReason); }

void RecorderFrame::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (!event->isAutoRepeat()) {
                begin();
            }
            break;
        default:
            QWidget::keyPressEvent(event);
            break;
    }
}

void RecorderFrame::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        begin();
    }
}

void RecorderFrame::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double width = hasFocus() ? focusWidth : 1;
    painter.setPen(QPen(hasFocus() ? WidgetColors::accent() : WidgetColors::separator(), width));
    painter.setBrush(WidgetColors::card());
    const double inset = width / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}

}  // namespace lumatile
