#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Lumatile/widgets/RowList.h"
#include "base/UUID.h"
#include "commands/SnapCommand.h"

namespace lumatile {

/// The rows of one group of areas. Portrait areas stand below a row that folds them away.
class AreaRows : public RowList {
public:
    AreaRows();

    /// Called with an area that the user chooses.
    std::function<void(const UUID&)> onChoose;

    /// Called when an arrow key leads past the end of the rows; with true: past the last one.
    std::function<void(bool)> onLeave;

    /// @param folds whether portrait areas can be folded away
    /// @param hint shown where there are no areas; empty: nothing
    void fill(const std::vector<SnapCommand>& areas, bool folds, const QString& hint);

    /// Who has the shortcut of an area, empty where that is not known; absent for one that works.
    using HolderOf = std::function<std::optional<std::string>(const UUID&)>;

    /// Marks the rows whose shortcut does not work.
    void mark(const HolderOf& holderOf);

    /// Shows which area is chosen, unfolding it where need be; none when it is not in this group.
    void showChosen(const std::optional<UUID>& id);

    /// Takes the keyboard and chooses the first or the last area that shows; nothing without any.
    void enter(bool first);

    /// The height at which no more than `most` rows show, less where there are fewer.
    int heightOf(int most) const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    void addArea(const SnapCommand& command);
    void addFold();
    void setFolded(bool isFolded);
    QListWidgetItem* rowOf(const UUID& id) const;
    QListWidgetItem* outermost(bool first) const;

    QListWidgetItem* fold_ = nullptr;  ///< What follows it is folded with it.
    bool isFolded_ = false;
    bool isShowing_ = false;  ///< What is chosen changes by the program, not by the user.
};

/// The name of an area where landscape and portrait areas stand side by side.
std::string listedName(const SnapCommand& command);

}  // namespace lumatile
