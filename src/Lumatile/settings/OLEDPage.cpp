#include "Lumatile/settings/OLEDPage.h"

#include <QVBoxLayout>

#include "Lumatile/settings/OLEDSectionView.h"
#include "Lumatile/widgets/Card.h"
#include "Lumatile/widgets/TipView.h"
#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

OLEDPage::OLEDPage(const std::shared_ptr<SettingsViewModel>& model,
                   const SettingsServices& services, QWidget* parent)
    : QWidget(parent) {
    constexpr int spacing = 18;
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    auto* card = new Card({});
    auto* tip = new TipView(services.say);
    tip->show(TipTexts::protection, WidgetColors::accent());
    card->addWidget(tip);
    layout->addWidget(card);
    layout->addWidget(new OLEDSectionView(model, services.say), 1);
}

}  // namespace lumatile
