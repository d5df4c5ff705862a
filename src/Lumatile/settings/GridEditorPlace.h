#pragma once

#include <QWidget>

#include <optional>

#include "commands/SnapCommand.h"

namespace lumatile {

class GridEditorView;

/// The room for a grid editor, which gets as much of it as its cells fill, at the left and on top,
/// so that the grid begins where the texts above and below it do.
class GridEditorPlace : public QWidget {
public:
    explicit GridEditorPlace(QWidget* parent = nullptr);

    GridEditorView& grid() { return *grid_; }

    /// What the grid shows and edits; nothing is drawn without.
    void setCommand(const std::optional<SnapCommand>& command);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    GridEditorView* grid_;
    Axis axis_ = Axis::horizontal;
};

}  // namespace lumatile
