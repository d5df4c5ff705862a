#include "Lumatile/Tips/SystemTilingTip.h"

#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "Lumatile/widgets/TipView.h"
#include "Lumatile/widgets/ViewText.h"
#include "Lumatile/widgets/WidgetColors.h"
#include "Lumatile/widgets/WidgetStyle.h"
#include "onboarding/TipTexts.h"
#include "ports/DesktopTiling.h"

namespace lumatile {

SystemTilingTip::SystemTilingTip(const SettingsServices& services, QWidget* parent)
    : QWidget(parent),
      tiling_(services.tiling),
      say_(services.say),
      monitor_(monitorTiling(services.tiling, services.runLoop)),
      tip_(new TipView(services.say)),
      open_(new QPushButton(withoutMnemonic(say_(TipTexts::tilingIsOn.button)))),
      switchOff_(new QPushButton(say_(TipTexts::switchOffButton))) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tip_);
    tip_->addButton(open_);
    tip_->addButton(switchOff_);
    connect(open_, &QPushButton::clicked, this, [this] { openSettings(); });
    connect(switchOff_, &QPushButton::clicked, this, [this] { askToSwitchOff(); });
    monitor_->onChange([this] { refresh(); });
    refresh();
}

void SystemTilingTip::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    monitor_->start();
}

void SystemTilingTip::hideEvent(QHideEvent* event) {
    monitor_->stop();
    tip_->setWarning({});
    QWidget::hideEvent(event);
}

void SystemTilingTip::refresh() {
    const bool conflicts = monitor_->tiling().conflictsWithDragToSnap();
    tip_->show(TipTexts::systemTiling(conflicts),
               conflicts ? WidgetColors::warning() : WidgetColors::secondaryLabel());
    open_->setVisible(conflicts && tiling_.canOpenSettings());
    switchOff_->setVisible(conflicts && tiling_.canSwitchOff());
    if (!conflicts) {
        tip_->setWarning({});
    }
}

void SystemTilingTip::openSettings() {
    tip_->setWarning(tiling_.openSettings() ? QString() : say_(TipTexts::openingFailed));
}

void SystemTilingTip::askToSwitchOff() {
    auto* question = new QMessageBox(window());
    question->setAttribute(Qt::WA_DeleteOnClose);
    question->setWindowModality(Qt::WindowModal);
    // A window of its own takes neither colours nor fonts over.
    question->setObjectName(QStringLiteral("settingsWindow"));
    WidgetStyle::apply(*question);
    question->setText(say_(TipTexts::switchOffQuestion));
    question->setInformativeText(say_(TipTexts::switchOffDetails));
    QPushButton* confirm =
        question->addButton(say_(TipTexts::switchOffConfirm), QMessageBox::AcceptRole);
    QPushButton* cancel =
        question->addButton(say_(TipTexts::switchOffCancel), QMessageBox::RejectRole);
    for (QPushButton* button : {confirm, cancel}) {
        button->setFont(question->font());
    }
    connect(question, &QMessageBox::buttonClicked, this, [this, confirm](QAbstractButton* clicked) {
        if (clicked == static_cast<QAbstractButton*>(confirm)) {
            tip_->setWarning(tiling_.switchOff() ? QString() : say_(TipTexts::switchOffFailed));
        }
    });
    question->open();
}

}  // namespace lumatile
