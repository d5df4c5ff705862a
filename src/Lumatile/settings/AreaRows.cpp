#include "Lumatile/settings/AreaRows.h"

#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

#include "Lumatile/settings/AreaPicture.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/ViewText.h"

namespace lumatile {

namespace {

constexpr int idRole = Qt::UserRole;
constexpr double hintPoints = 12;
constexpr int pictureSide = 24;
constexpr const char* warningSymbol = "exclamationmark.triangle";

std::optional<UUID> idOf(const QListWidgetItem& item) {
    return UUID::parse(item.data(idRole).toString().toStdString());
}

}  // namespace

std::string listedName(const SnapCommand& command) {
    return command.displayName() +
           (command.axis == Axis::vertical ? std::string(SettingsTexts::portraitSuffix) : "");
}

AreaRows::AreaRows() {
    setIconSize(QSize(pictureSide, pictureSide));
    connect(this, &QListWidget::itemSelectionChanged, this, [this] {
        const QList<QListWidgetItem*> chosen = selectedItems();
        const auto id = chosen.isEmpty() ? std::nullopt : idOf(*chosen.front());
        if (!isShowing_ && id && onChoose) {
            onChoose(*id);
        }
    });
    connect(this, &QListWidget::itemClicked, this, [this](const QListWidgetItem* item) {
        if (item == fold_) {
            setFolded(!isFolded_);
        }
    });
}

void AreaRows::fill(const std::vector<SnapCommand>& areas, bool folds, const QString& hint) {
    isShowing_ = true;
    const int scrolled = verticalScrollBar()->value();
    clear();
    fold_ = nullptr;
    for (const SnapCommand& command : areas) {
        if (folds && fold_ == nullptr && command.axis == Axis::vertical) {
            addFold();
        }
        addArea(command);
    }
    if (areas.empty() && !hint.isEmpty()) {
        auto* row = new QListWidgetItem(hint, this);
        row->setFlags(Qt::NoItemFlags);
        row->setFont(AppFonts::text(hintPoints));
    }
    setFolded(isFolded_);
    verticalScrollBar()->setValue(scrolled);
    isShowing_ = false;
}

void AreaRows::addArea(const SnapCommand& command) {
    auto* item = new QListWidgetItem(areaPicture(command),
                                     QString::fromStdString(listedName(command)), this);
    item->setData(idRole, QString::fromStdString(command.id.text()));
}

void AreaRows::addFold() {
    fold_ = new QListWidgetItem(viewText(SettingsTexts::portrait), this);
    fold_->setFlags(Qt::ItemIsEnabled);
    fold_->setFont(AppFonts::text(hintPoints, QFont::DemiBold));
}

void AreaRows::setFolded(bool isFolded) {
    isFolded_ = isFolded;
    if (fold_ == nullptr) {
        return;
    }
    fold_->setIcon(foldPicture(isFolded));
    fold_->setData(Qt::AccessibleTextRole, viewText(isFolded ? SettingsTexts::portraitHidden
                                                             : SettingsTexts::portraitShown));
    for (int index = row(fold_) + 1; index < count(); ++index) {
        item(index)->setHidden(isFolded);
    }
}

void AreaRows::mark(const HolderOf& holderOf) {
    for (int index = 0; index < count(); ++index) {
        QListWidgetItem& each = *item(index);
        const auto id = idOf(each);
        const auto holder = id ? holderOf(*id) : std::nullopt;
        const bool isMarked = holder.has_value();
        each.setData(markRole,
                     isMarked ? QVariant(QString::fromLatin1(warningSymbol)) : QVariant());
        const QString reason =
            isMarked ? QString::fromStdString(SettingsTexts::refusedBy(*holder)) : QString();
        each.setData(Qt::AccessibleDescriptionRole, reason);
        each.setToolTip(isMarked ? each.text() + u'\n' + reason : each.text());
    }
}

QListWidgetItem* AreaRows::rowOf(const UUID& id) const {
    for (int index = 0; index < count(); ++index) {
        if (idOf(*item(index)) == id) {
            return item(index);
        }
    }
    return nullptr;
}

void AreaRows::showChosen(const std::optional<UUID>& id) {
    QListWidgetItem* chosen = id ? rowOf(*id) : nullptr;
    const QList<QListWidgetItem*> before = selectedItems();
    if (chosen == (before.isEmpty() ? nullptr : before.front())) {
        return;
    }
    isShowing_ = true;
    if (chosen != nullptr && chosen->isHidden()) {
        setFolded(false);
    }
    setCurrentItem(chosen);
    if (chosen != nullptr) {
        scrollToItem(chosen);
    } else {
        clearSelection();
    }
    isShowing_ = false;
}

QListWidgetItem* AreaRows::outermost(bool first) const {
    for (int step = 0; step < count(); ++step) {
        QListWidgetItem* each = item(first ? step : count() - 1 - step);
        if (isChoice(*each) && !each->isHidden()) {
            return each;
        }
    }
    return nullptr;
}

void AreaRows::enter(bool first) {
    if (QListWidgetItem* row = outermost(first)) {
        setFocus(Qt::OtherFocusReason);
        setCurrentItem(row);
    }
}

int AreaRows::heightOf(int most) const {
    const int rows = std::clamp(count(), 1, most);
    int height = 0;
    for (int index = 0; index < rows; ++index) {
        height += sizeHintForRow(index);
    }
    const QMargins around = contentsMargins();
    return height + around.top() + around.bottom();
}

void AreaRows::keyPressEvent(QKeyEvent* event) {
    const bool isOnFold = fold_ != nullptr && currentItem() == fold_;
    switch (event->key()) {
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (isOnFold) {
                setFolded(!isFolded_);
                return;
            }
            break;
        case Qt::Key_Left:
        case Qt::Key_Right:
            if (isOnFold) {
                setFolded(event->key() == Qt::Key_Left);
                return;
            }
            break;
        default:
            break;
    }
    const QModelIndex before = currentIndex();
    RowList::keyPressEvent(event);
    const bool isDown = event->key() == Qt::Key_Down;
    if ((isDown || event->key() == Qt::Key_Up) && currentIndex() == before && onLeave) {
        onLeave(isDown);
    }
}

QModelIndex AreaRows::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    // To areas: the toolkit would stop at rows that cannot be chosen.
    QListWidgetItem* end =
        action == MoveHome || action == MoveEnd ? outermost(action == MoveHome) : nullptr;
    return end != nullptr ? indexFromItem(end) : RowList::moveCursor(action, modifiers);
}

}  // namespace lumatile
