#pragma once

#include <QPoint>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <optional>

#include "commands/SnapCommand.h"
#include "settings_core/GridCell.h"
#include "settings_core/GridEditorLayout.h"

namespace lumatile {

/// A miniature screen made of grid cells, on which a command's area is seen as a small window and
/// drawn anew by dragging across it; with the keyboard, arrow keys move the area and, with Shift,
/// resize it. It only reports cells; they may lie outside the grid.
class GridEditorView : public QWidget {
public:
    explicit GridEditorView(QWidget* parent = nullptr);

    /// Start column, start row, current column, current row: while an area is being drawn.
    std::function<void(std::int64_t, std::int64_t, std::int64_t, std::int64_t)> onPaint;

    /// Once, when it has been drawn.
    std::function<void()> onCommit;

    /// In place of `onCommit` when the drawing is cut short: the view is hidden, or the release of
    /// the button went elsewhere.
    std::function<void()> onCancel;

    /// What is shown and edited; nothing is drawn without.
    void setCommand(const std::optional<SnapCommand>& command);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    GridEditorLayout layoutNow() const;
    void cancelDrag();
    void moveByKey(std::int64_t columns, std::int64_t rows, bool resizes);

    std::optional<SnapCommand> command_;
    std::optional<GridCell> dragStart_;
    std::optional<QPoint> pressedAt_;
};

}  // namespace lumatile
