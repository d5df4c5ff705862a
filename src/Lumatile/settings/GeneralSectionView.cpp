#include "Lumatile/settings/GeneralSectionView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "Lumatile/DragToSnap.h"
#include "Lumatile/LaunchAtLogin.h"
#include "Lumatile/Tips/SystemTilingTip.h"
#include "Lumatile/Updater.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/settings/SyncCard.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/Card.h"
#include "Lumatile/widgets/MenuButton.h"
#include "Lumatile/widgets/ViewText.h"
#include "menu_model/MenuBuilder.h"

namespace lumatile {

namespace {

constexpr int spacing = 18;
constexpr double menuPoints = 13;
constexpr int buttonSpacing = 8;

}  // namespace

GeneralSectionView::GeneralSectionView(SettingsServices services, QWidget* parent)
    : QWidget(parent), services_(std::move(services)) {
    const Saying& say = services_.say;
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);

    auto* switches = new Card({});
    login_ = switches->addToggle(say(SettingsTexts::launchAtLogin));
    drag_ = switches->addToggle(say(SettingsTexts::dragToSnap));
    updates_ = switches->addToggle(say(SettingsTexts::automaticUpdates));
    layout->addWidget(switches);

    auto* tiling = new Card(say(SettingsTexts::windowTiling));
    tiling->addWidget(new SystemTilingTip(services_));
    layout->addWidget(tiling);
    layout->addWidget(new SyncCard(services_.sharedStore, say));
    if (!services_.shortcomings.empty()) {
        auto* session = new Card(say(SettingsTexts::thisSession));
        for (const std::string& shortcoming : services_.shortcomings) {
            session->addNote(say(shortcoming));
        }
        layout->addWidget(session);
    }

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(buttonSpacing);
    auto* run = new MenuButton(say(SettingsTexts::runCommand));
    menu_ = new QMenu(run);
    menu_->setFont(AppFonts::text(menuPoints));
    run->setMenu(menu_);
    auto* check = new QPushButton(say(SettingsTexts::checkForUpdates));
    auto* quit = new QPushButton(say(SettingsTexts::quit));
    buttons->addWidget(run);
    buttons->addWidget(check);
    buttons->addStretch(1);
    buttons->addWidget(quit);
    layout->addLayout(buttons);
    layout->addStretch(1);

    connect(login_, &QCheckBox::toggled, this, [this](bool on) {
        services_.launchAtLogin.setEnabled(on);
        login_->showState(services_.launchAtLogin.isEnabled());
    });
    connect(drag_, &QCheckBox::toggled, this,
            [this](bool on) { services_.preferences.setBoolean(DragToSnap::preferenceKey, on); });
    connect(updates_, &QCheckBox::toggled, this,
            [this](bool on) { services_.updater.setAutomaticallyChecksForUpdates(on); });
    connect(menu_, &QMenu::aboutToShow, this, [this] { fillMenu(); });
    connect(check, &QPushButton::clicked, this, [this] { services_.updater.checkForUpdates(); });
    connect(quit, &QPushButton::clicked, this, [this] { services_.quit(); });
    watch_ = services_.preferences.observe([this] {
        drag_->showState(services_.preferences.boolean(DragToSnap::preferenceKey).value_or(true));
    });
}

GeneralSectionView::~GeneralSectionView() = default;

void GeneralSectionView::showEvent(QShowEvent* event) {
    refresh();
    QWidget::showEvent(event);
}

void GeneralSectionView::refresh() {
    services_.launchAtLogin.refresh();
    login_->showState(services_.launchAtLogin.isEnabled());
    drag_->showState(services_.preferences.boolean(DragToSnap::preferenceKey).value_or(true));
    updates_->showState(services_.updater.automaticallyChecksForUpdates());
}

void GeneralSectionView::fillMenu() {
    menu_->clear();
    // In the order and the groups of the status menu, but all of them: what is hidden there could
    // otherwise be run by nothing but its shortcut.
    std::vector<SnapCommand> commands = services_.menuCommands();
    for (SnapCommand& command : commands) {
        command.visibleInMenuBar = true;
    }
    const auto add = [this](const auto& entry) {
        using Entry = std::decay_t<decltype(entry)>;
        if constexpr (std::is_same_v<Entry, SnapCommand>) {
            menu_->addAction(withoutMnemonic(QString::fromStdString(entry.displayName())), this,
                             [this, id = entry.id] { run(id); });
        } else if constexpr (std::is_same_v<Entry, MenuHeader>) {
            menu_->addAction(withoutMnemonic(QString::fromStdString(entry.title)))
                ->setEnabled(false);
        } else if constexpr (std::is_same_v<Entry, MenuSeparator>) {
            menu_->addSeparator();
        }
    };
    for (const MenuEntry& entry : MenuBuilder::build(commands, Axis::horizontal)) {
        // The program's own actions are buttons here.
        if (std::holds_alternative<ActionID>(entry)) {
            break;
        }
        std::visit(add, entry);
    }
    // The line between the commands and those.
    if (!menu_->isEmpty()) {
        menu_->removeAction(menu_->actions().last());
    }
}

void GeneralSectionView::run(const UUID& id) {
    for (const SnapCommand& command : services_.menuCommands()) {
        if (command.id == id) {
            services_.run(command);
            return;
        }
    }
}

}  // namespace lumatile
