#pragma once

#include <QListWidget>

namespace lumatile {

/// Rows of which one is chosen. A click beside them, or on one that cannot be chosen, changes
/// nothing. The chosen row has a bar in the accent colour, the row that the keyboard is on a frame.
class RowList : public QListWidget {
public:
    /// Of an item: the name of a symbol that is drawn at the end of its row.
    static constexpr int markRole = Qt::UserRole + 1;

    /// @param sideMargin of the rows, points, as the style sheet has it
    explicit RowList(double sideMargin = 0, QWidget* parent = nullptr);

    /// Whether the row can be chosen.
    static bool isChoice(const QListWidgetItem& item);

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
};

}  // namespace lumatile
