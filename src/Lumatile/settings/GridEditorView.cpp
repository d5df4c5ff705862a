#include "Lumatile/settings/GridEditorView.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QString>

#include <algorithm>
#include <utility>

#include "Lumatile/widgets/WidgetColors.h"
#include "settings_core/GridEditing.h"

namespace lumatile {

namespace {

// Less is a click that slipped.
constexpr int leastDrag = 4;

constexpr double focusWidth = 2;
constexpr double focusRadius = 4;

QColor colorOf(GridCellFill fill) {
    switch (fill) {
        case GridCellFill::titleBar:
            return WidgetColors::titleBarCell();
        case GridCellFill::frame:
            return WidgetColors::frameCell();
        case GridCellFill::interior:
            return WidgetColors::interiorCell();
        case GridCellFill::empty:
            break;
    }
    return WidgetColors::emptyCell();
}

Point pointOf(const QPointF& position) { return {position.x(), position.y()}; }

}  // namespace

GridEditorView::GridEditorView(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    // A pointer that comes without its button is heard of as well.
    setMouseTracking(true);
}

void GridEditorView::setCommand(const std::optional<SnapCommand>& command) {
    if (command == command_) {
        return;
    }
    if (!command || !command_ || command->id != command_->id) {
        dragStart_.reset();
        pressedAt_.reset();
    }
    command_ = command;
    setAccessibleName(command_ ? QString::fromStdString(GridEditorLayout::label(*command_))
                               : QString());
    update();
}

void GridEditorView::hideEvent(QHideEvent* event) {
    cancelDrag();
    QWidget::hideEvent(event);
}

void GridEditorView::cancelDrag() {
    pressedAt_.reset();
    if (std::exchange(dragStart_, std::nullopt) && onCancel) {
        onCancel();
    }
}

GridEditorLayout GridEditorView::layoutNow() const {
    return GridEditorLayout::of({static_cast<double>(width()), static_cast<double>(height())},
                                command_ ? command_->axis : Axis::horizontal);
}

void GridEditorView::paintEvent(QPaintEvent* /*event*/) {
    if (!command_) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const GridEditorLayout layout = layoutNow();
    const std::optional<CellRect> area = GridEditorLayout::shownArea(*command_);
    const double radius = layout.cornerRadius();
    if (layout.pitch <= layout.gap()) {
        return;  // The toolkit would turn cells of a negative size over and draw them.
    }
    for (std::int64_t row = 0; row < layout.grid.rows; ++row) {
        for (std::int64_t col = 0; col < layout.grid.cols; ++col) {
            const Rect cell = layout.cell({col, row});
            painter.setBrush(colorOf(GridEditorLayout::fill({col, row}, area)));
            painter.drawRoundedRect(QRectF(cell.x, cell.y, cell.width, cell.height), radius,
                                    radius);
        }
    }
    if (hasFocus()) {
        // Round what the arrow keys move.
        const Rect held =
            area ? GridEditing::rect(*area, layout.cells(), command_->axis) : layout.cells();
        constexpr double inset = focusWidth / 2;
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(WidgetColors::label(), focusWidth));
        painter.drawRoundedRect(
            QRectF(held.x, held.y, held.width, held.height).adjusted(inset, inset, -inset, -inset),
            focusRadius, focusRadius);
    }
}

void GridEditorView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        pressedAt_ = event->position().toPoint();
    }
}

void GridEditorView::mouseMoveEvent(QMouseEvent* event) {
    if ((event->buttons() & Qt::LeftButton) == 0) {
        cancelDrag();
    }
    if (!pressedAt_ || !command_) {
        return;
    }
    const QPoint way = event->position().toPoint() - *pressedAt_;
    if (!dragStart_ && way.x() * way.x() + way.y() * way.y() < leastDrag * leastDrag) {
        return;
    }
    const GridEditorLayout layout = layoutNow();
    if (!dragStart_) {
        dragStart_ = layout.cellAt(pointOf(*pressedAt_));
    }
    const std::optional<GridCell> now = layout.cellAt(pointOf(event->position()));
    if (dragStart_ && now && onPaint) {
        onPaint(dragStart_->col, dragStart_->row, now->col, now->row);
    }
}

void GridEditorView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    pressedAt_.reset();
    if (dragStart_) {
        dragStart_.reset();
        if (onCommit) {
            onCommit();
        }
    }
}

void GridEditorView::keyPressEvent(QKeyEvent* event) {
    const bool resizes = (event->modifiers() & Qt::ShiftModifier) != 0;
    switch (event->key()) {
        case Qt::Key_Left:
            moveByKey(-1, 0, resizes);
            break;
        case Qt::Key_Right:
            moveByKey(1, 0, resizes);
            break;
        case Qt::Key_Up:
            moveByKey(0, -1, resizes);
            break;
        case Qt::Key_Down:
            moveByKey(0, 1, resizes);
            break;
        default:
            QWidget::keyPressEvent(event);
            break;
    }
}

void GridEditorView::moveByKey(std::int64_t columns, std::int64_t rows, bool resizes) {
    const std::optional<CellRect> area =
        command_ ? GridEditorLayout::shownArea(*command_) : std::nullopt;
    if (!area || !onPaint || !onCommit) {
        return;
    }
    const GridSize grid = GridSize::of(command_->axis);
    CellRect next = *area;
    if (resizes) {
        next.w = std::clamp<std::int64_t>(next.w + columns, 1, grid.cols - next.ox);
        next.h = std::clamp<std::int64_t>(next.h + rows, 1, grid.rows - next.oy);
    } else {
        next.ox = std::clamp<std::int64_t>(next.ox + columns, 0, grid.cols - next.w);
        next.oy = std::clamp<std::int64_t>(next.oy + rows, 0, grid.rows - next.h);
    }
    onPaint(next.ox, next.oy, next.ox + next.w - 1, next.oy + next.h - 1);
    onCommit();
}

void GridEditorView::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
}

void GridEditorView::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

}  // namespace lumatile
