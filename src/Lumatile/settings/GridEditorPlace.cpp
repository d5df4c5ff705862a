#include "Lumatile/settings/GridEditorPlace.h"

#include <algorithm>

#include "Lumatile/settings/GridEditorView.h"
#include "settings_core/GridEditorLayout.h"

namespace lumatile {

GridEditorPlace::GridEditorPlace(QWidget* parent)
    : QWidget(parent), grid_(new GridEditorView(this)) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize GridEditorPlace::sizeHint() const { return {480, 300}; }

QSize GridEditorPlace::minimumSizeHint() const { return {264, 168}; }

void GridEditorPlace::setCommand(const std::optional<SnapCommand>& command) {
    axis_ = command ? command->axis : Axis::horizontal;
    fit();
    grid_->setCommand(command);
}

void GridEditorPlace::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fit();
}

void GridEditorPlace::fit() {
    const auto layout =
        GridEditorLayout::of({static_cast<double>(width()), static_cast<double>(height())}, axis_);
    const auto columns = static_cast<int>(layout.grid.cols);
    const auto rows = static_cast<int>(layout.grid.rows);
    const auto pitch = static_cast<int>(layout.pitch);
    grid_->setGeometry(0, 0, columns * pitch, rows * pitch);
    // No taller than the cells get at this width, so that what stands below stays near them.
    setMaximumHeight(std::max(minimumSizeHint().height(), width() / columns * rows));
}

}  // namespace lumatile
