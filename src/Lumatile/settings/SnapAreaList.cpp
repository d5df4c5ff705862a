#include "Lumatile/settings/SnapAreaList.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QStringList>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

#include "Lumatile/settings/AreaRows.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/LinkLabel.h"
#include "Lumatile/widgets/SymbolIcon.h"
#include "Lumatile/widgets/ViewText.h"
#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

namespace {

constexpr double headingPoints = 12;
constexpr double refusedPoints = 12;
constexpr int buttonIcon = 14;
constexpr double widthPoints = 244;
constexpr double leastWidthPoints = 140;
constexpr int spacing = 8;

// More of the user's own scroll, so that built-in areas show in the smallest window too.
constexpr int mostOwnRows = 4;

QToolButton* button(std::string_view symbol, std::string_view name) {
    auto* made = new QToolButton;
    made->setIcon(SymbolIcon::of(symbol, WidgetColors::label()));
    made->setIconSize(QSize(buttonIcon, buttonIcon));
    made->setToolTip(viewText(name));
    made->setAccessibleName(viewText(name));
    made->setFocusPolicy(Qt::StrongFocus);
    return made;
}

QLabel* heading(std::string_view text) {
    auto* made = new QLabel(viewText(text));
    made->setFont(AppFonts::text(headingPoints, QFont::DemiBold));
    made->setProperty("tone", QStringLiteral("secondary"));
    return made;
}

void prepare(AreaRows& rows, std::string_view name) {
    rows.setObjectName(QStringLiteral("areas"));
    rows.setAccessibleName(viewText(name));
}

}  // namespace

SnapAreaList::SnapAreaList(std::shared_ptr<SettingsViewModel> model, QWidget* parent)
    : QWidget(parent),
      model_(std::move(model)),
      builtIn_(new AreaRows),
      own_(new AreaRows),
      delete_(button("minus", SettingsTexts::deleteThisArea)),
      refused_(new LinkLabel) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    prepare(*builtIn_, SettingsTexts::builtIn);
    prepare(*own_, SettingsTexts::yourAreas);
    layout->addWidget(heading(SettingsTexts::builtIn));
    layout->addWidget(builtIn_, 1);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(spacing);
    QToolButton* add = button("plus", SettingsTexts::newArea);
    buttons->addWidget(heading(SettingsTexts::yourAreas), 1);
    buttons->addWidget(add);
    buttons->addWidget(delete_);
    layout->addLayout(buttons);
    layout->addWidget(own_);

    refused_->setProperty("tone", QStringLiteral("warning"));
    refused_->setFont(AppFonts::text(refusedPoints));
    layout->addWidget(refused_);
    setRoom(std::numeric_limits<int>::max());

    connect(add, &QToolButton::clicked, this, [this] { this->add(); });
    connect(delete_, &QToolButton::clicked, this, [this] { model_->deleteSelected(); });
    for (AreaRows* rows : {builtIn_, own_}) {
        rows->onChoose = [this](const UUID& id) { model_->select(id); };
    }
    builtIn_->onLeave = [this](bool isPastLast) {
        if (isPastLast) {
            own_->enter(true);
        }
    };
    own_->onLeave = [this](bool isPastLast) {
        if (!isPastLast) {
            builtIn_->enter(false);
        }
    };
    refused_->onFollow = [this] { model_->select(model_->firstRefusedArea()); };
    observation_ = model_->observe([this] { refresh(); });
    refresh();
}

bool SnapAreaList::event(QEvent* event) {
    // Only then the rows have their fonts and margins.
    if (event->type() == QEvent::Show || event->type() == QEvent::StyleChange) {
        limitOwn();
    }
    return QWidget::event(event);
}

void SnapAreaList::setRoom(int width) {
    const double scale = AppFonts::pixelsPerPoint();
    setFixedWidth(std::clamp(width, static_cast<int>(leastWidthPoints * scale),
                             static_cast<int>(widthPoints * scale)));
}

void SnapAreaList::limitOwn() { own_->setFixedHeight(own_->heightOf(mostOwnRows)); }

void SnapAreaList::add() {
    const std::size_t before = model_->commands().size();
    model_->addCustomArea();
    if (model_->commands().size() != before && onAdded) {
        onAdded();
    }
}

void SnapAreaList::refresh() {
    const std::vector<SnapCommand> builtIn = model_->areas(false);
    const std::vector<SnapCommand> own = model_->areas(true);
    std::vector<SnapCommand> all = builtIn;
    all.insert(all.end(), own.begin(), own.end());
    if (all != shown_) {
        shown_ = std::move(all);
        builtIn_->fill(builtIn, true, {});
        own_->fill(own, false, viewText(SettingsTexts::noAreas));
        limitOwn();
    }
    builtIn_->showChosen(model_->selectedID());
    own_->showChosen(model_->selectedID());
    const SnapCommand* selected = model_->selected();
    delete_->setEnabled(selected != nullptr && selected->isCustom());
    refreshRefused();
}

void SnapAreaList::refreshRefused() {
    const auto mark = [this](const UUID& id) -> std::optional<std::string> {
        const auto area = std::find_if(shown_.begin(), shown_.end(),
                                       [&](const SnapCommand& each) { return each.id == id; });
        return area != shown_.end() && model_->isShortcutRefused(*area)
                   ? std::optional(model_->shortcutHolder(*area))
                   : std::nullopt;
    };
    builtIn_->mark(mark);
    own_->mark(mark);
    const std::size_t count = model_->refusedShortcuts().size();
    refused_->setVisible(count != 0);
    if (count == 0) {
        return;
    }
    refused_->setText(QString::fromStdString(SettingsTexts::refusedShortcuts(count)));
    refused_->setLeads(model_->firstRefusedArea().has_value());
    // All of them: some are of commands that are no areas.
    QStringList names;
    for (const SnapCommand& command : model_->commands()) {
        const auto& ids = model_->refusedShortcuts();
        if (std::find(ids.begin(), ids.end(), command.id) != ids.end()) {
            const QString name = QString::fromStdString(listedName(command));
            const QString holder = QString::fromStdString(model_->shortcutHolder(command));
            names.append(holder.isEmpty() ? name : name + QStringLiteral(": ") + holder);
        }
    }
    refused_->setToolTip(names.join(u'\n'));
}

}  // namespace lumatile
