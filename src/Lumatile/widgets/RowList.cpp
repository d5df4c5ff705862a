#include "Lumatile/widgets/RowList.h"

#include <QPainter>
#include <QStyledItemDelegate>

#include <cmath>
#include <string>

#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/SymbolIcon.h"
#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

namespace {

constexpr double barWidth = 3;
constexpr double barInset = 6;
constexpr double frameWidth = 1.5;
constexpr double frameRadius = 5;
constexpr int markSide = 14;
constexpr int markInset = 8;

class RowDelegate final : public QStyledItemDelegate {
public:
    RowDelegate(RowList& list, int sideMargin)
        : QStyledItemDelegate(&list), list_(list), sideMargin_(sideMargin) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        const QRectF row = QRectF(option.rect).adjusted(sideMargin_, 1, -sideMargin_, -1);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if ((option.state & QStyle::State_Selected) != 0) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(WidgetColors::accent());
            painter->drawRoundedRect(
                QRectF(row.left(), row.top() + barInset, barWidth, row.height() - 2 * barInset),
                barWidth / 2, barWidth / 2);
        }
        if (list_.hasFocus() && index == list_.currentIndex()) {
            const double inset = frameWidth / 2;
            painter->setPen(QPen(WidgetColors::label(), frameWidth));
            painter->setBrush(Qt::NoBrush);
            painter->drawRoundedRect(row.adjusted(inset, inset, -inset, -inset), frameRadius,
                                     frameRadius);
        }
        if (const std::string mark = markOf(index); !mark.empty()) {
            SymbolIcon::of(mark, WidgetColors::warning())
                .paint(painter, QRect(static_cast<int>(row.right()) - markInset - markSide,
                                      option.rect.center().y() - markSide / 2, markSide, markSide));
        }
        painter->restore();
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        // The frame is drawn here.
        option->state &= ~QStyle::State_HasFocus;
        if (!markOf(index).empty()) {
            constexpr int aroundText = 24;
            const int room = option->rect.width() - option->decorationSize.width() - markSide -
                             2 * markInset - aroundText;
            option->text = option->fontMetrics.elidedText(option->text, Qt::ElideRight, room);
        }
    }

private:
    static std::string markOf(const QModelIndex& index) {
        return index.data(RowList::markRole).toString().toStdString();
    }

    RowList& list_;
    int sideMargin_;
};

}  // namespace

RowList::RowList(double sideMargin, QWidget* parent) : QListWidget(parent) {
    setItemDelegate(new RowDelegate(
        *this, static_cast<int>(std::lround(sideMargin * AppFonts::pixelsPerPoint()))));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideRight);
}

bool RowList::isChoice(const QListWidgetItem& item) {
    return (item.flags() & Qt::ItemIsSelectable) != 0;
}

QItemSelectionModel::SelectionFlags RowList::selectionCommand(const QModelIndex& index,
                                                              const QEvent* event) const {
    const QListWidgetItem* item = itemFromIndex(index);
    if (item == nullptr || !isChoice(*item)) {
        return QItemSelectionModel::NoUpdate;
    }
    const QItemSelectionModel::SelectionFlags command = QListWidget::selectionCommand(index, event);
    // One is always chosen: there is no taking back with a held Control key.
    return (command & QItemSelectionModel::Deselect) != 0 ? QItemSelectionModel::NoUpdate : command;
}

}  // namespace lumatile
