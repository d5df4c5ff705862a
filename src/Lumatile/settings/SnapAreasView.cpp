#include "Lumatile/settings/SnapAreasView.h"

#include <QHBoxLayout>

#include "Lumatile/settings/SnapAreaDetail.h"
#include "Lumatile/settings/SnapAreaList.h"

namespace lumatile {

SnapAreasView::SnapAreasView(const std::shared_ptr<SettingsViewModel>& model, KeyCodes& keys,
                             QWidget* parent)
    : QWidget(parent) {
    constexpr int spacing = 24;
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    layout->addWidget(new SnapAreaList(model));
    layout->addWidget(new SnapAreaDetail(model, keys), 1);
}

}  // namespace lumatile
