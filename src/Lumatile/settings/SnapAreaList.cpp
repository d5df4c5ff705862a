#include "Lumatile/settings/SnapAreaList.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "Lumatile/settings/AreaPicture.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/SymbolIcon.h"
#include "Lumatile/widgets/ViewText.h"
#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

namespace {

constexpr int idRole = Qt::UserRole;
constexpr double headingPoints = 11;
constexpr int pictureSide = 24;
constexpr int buttonIcon = 14;
constexpr double listWidthPoints = 264;

QToolButton* button(std::string_view symbol, std::string_view name) {
    auto* made = new QToolButton;
    made->setIcon(SymbolIcon::of(symbol, WidgetColors::label()));
    made->setIconSize(QSize(buttonIcon, buttonIcon));
    made->setToolTip(viewText(name));
    made->setAccessibleName(viewText(name));
    made->setFocusPolicy(Qt::StrongFocus);
    return made;
}

/// Home and End lead to the first and the last area; the toolkit would stop at the headings, which
/// cannot be selected.
class AreaListWidget final : public QListWidget {
protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override {
        if (action != MoveHome && action != MoveEnd) {
            return QListWidget::moveCursor(action, modifiers);
        }
        for (int step = 0; step < count(); ++step) {
            QListWidgetItem* each = item(action == MoveHome ? step : count() - 1 - step);
            if ((each->flags() & Qt::ItemIsSelectable) != 0) {
                return indexFromItem(each);
            }
        }
        return currentIndex();
    }
};

}  // namespace

std::string listedName(const SnapCommand& command) {
    return command.displayName() +
           (command.axis == Axis::vertical ? std::string(SettingsTexts::portraitSuffix) : "");
}

SnapAreaList::SnapAreaList(std::shared_ptr<SettingsViewModel> model, QWidget* parent)
    : QWidget(parent),
      model_(std::move(model)),
      list_(new AreaListWidget),
      delete_(button("minus", SettingsTexts::deleteThisArea)),
      refused_(new QLabel) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    list_->setObjectName(QStringLiteral("areas"));
    list_->setAccessibleName(viewText(title(SettingsSection::commands)));
    list_->setIconSize(QSize(pictureSide, pictureSide));
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setTextElideMode(Qt::ElideRight);
    layout->addWidget(list_, 1);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(6);
    QToolButton* add = button("plus", SettingsTexts::newArea);
    buttons->addWidget(add);
    buttons->addWidget(delete_);
    buttons->addStretch(1);
    layout->addLayout(buttons);

    refused_->setWordWrap(true);
    refused_->setProperty("tone", QStringLiteral("warning"));
    refused_->setFont(AppFonts::text(headingPoints));
    layout->addWidget(refused_);
    setFixedWidth(static_cast<int>(listWidthPoints * AppFonts::pixelsPerPoint()));

    connect(add, &QToolButton::clicked, this, [this] { model_->addCustomArea(); });
    connect(delete_, &QToolButton::clicked, this, [this] { model_->deleteSelected(); });
    connect(list_, &QListWidget::currentItemChanged, this, [this] { takeSelection(); });
    observation_ = model_->observe([this] { refresh(); });
    refresh();
}

void SnapAreaList::takeSelection() {
    const QListWidgetItem* item = list_->currentItem();
    if (isRefreshing_ || item == nullptr) {
        return;
    }
    model_->select(UUID::parse(item->data(idRole).toString().toStdString()));
}

void SnapAreaList::refresh() {
    isRefreshing_ = true;
    std::vector<SnapCommand> all = model_->areas(false);
    const std::vector<SnapCommand> own = model_->areas(true);
    all.insert(all.end(), own.begin(), own.end());
    if (all != shown_ || list_->count() == 0) {
        shown_ = std::move(all);
        refill();
    }
    const SnapCommand* selected = model_->selected();
    const QString id =
        selected != nullptr ? QString::fromStdString(selected->id.text()) : QString();
    QListWidgetItem* current = nullptr;
    for (int row = 0; row < list_->count() && !id.isEmpty(); ++row) {
        if (list_->item(row)->data(idRole).toString() == id) {
            current = list_->item(row);
        }
    }
    if (current != list_->currentItem()) {
        list_->setCurrentItem(current);
        if (current != nullptr) {
            list_->scrollToItem(current);
        }
    }
    delete_->setEnabled(selected != nullptr && selected->isCustom());
    const std::size_t refused = model_->refusedShortcuts().size();
    refused_->setVisible(refused != 0);
    if (refused != 0) {
        refused_->setText(QString::fromStdString(SettingsTexts::refusedShortcuts(refused)));
    }
    isRefreshing_ = false;
}

void SnapAreaList::refill() {
    const int scrolled = list_->verticalScrollBar()->value();
    list_->clear();
    addHeading(SettingsTexts::builtIn);
    for (const SnapCommand& command : model_->areas(false)) {
        addArea(command);
    }
    addHeading(SettingsTexts::yourAreas);
    const std::vector<SnapCommand> own = model_->areas(true);
    for (const SnapCommand& command : own) {
        addArea(command);
    }
    if (own.empty()) {
        auto* hint = new QListWidgetItem(viewText(SettingsTexts::noAreas), list_);
        hint->setFlags(Qt::NoItemFlags);
        hint->setFont(AppFonts::text(headingPoints));
    }
    list_->verticalScrollBar()->setValue(scrolled);
}

void SnapAreaList::addHeading(std::string_view text) {
    auto* heading = new QListWidgetItem(viewText(text), list_);
    heading->setFlags(Qt::NoItemFlags);
    heading->setFont(AppFonts::text(headingPoints, QFont::DemiBold));
}

void SnapAreaList::addArea(const SnapCommand& command) {
    auto* item = new QListWidgetItem(areaPicture(command),
                                     QString::fromStdString(listedName(command)), list_);
    item->setData(idRole, QString::fromStdString(command.id.text()));
    item->setToolTip(item->text());
}

}  // namespace lumatile
