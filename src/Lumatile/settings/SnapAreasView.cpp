#include "Lumatile/settings/SnapAreasView.h"

#include <QHBoxLayout>

#include "Lumatile/settings/SnapAreaDetail.h"
#include "Lumatile/settings/SnapAreaList.h"

namespace lumatile {

namespace {

constexpr int spacing = 24;

}  // namespace

SnapAreasView::SnapAreasView(const std::shared_ptr<SettingsViewModel>& model, KeyCodes& keys,
                             QWidget* parent)
    : QWidget(parent), list_(new SnapAreaList(model)), detail_(new SnapAreaDetail(model, keys)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    layout->addWidget(list_);
    layout->addWidget(detail_, 1);
    list_->onAdded = [this] { detail_->beginNaming(); };
}

void SnapAreasView::resizeEvent(QResizeEvent* event) {
    list_->setRoom(width() - spacing - detail_->rowWidth());
    QWidget::resizeEvent(event);
}

}  // namespace lumatile
