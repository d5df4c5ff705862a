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
    auto* list = new SnapAreaList(model);
    auto* detail = new SnapAreaDetail(model, keys);
    layout->addWidget(list);
    layout->addWidget(detail, 1);
    list->onAdded = [detail] { detail->beginNaming(); };
}

}  // namespace lumatile
