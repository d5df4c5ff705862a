#include "Lumatile/settings/SettingsRootView.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "Lumatile/settings/AboutSectionView.h"
#include "Lumatile/settings/GeneralSectionView.h"
#include "Lumatile/settings/Mnemonics.h"
#include "Lumatile/settings/OLEDPage.h"
#include "Lumatile/settings/PreferencesNotice.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/settings/SnapAreasView.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/RowList.h"
#include "Lumatile/widgets/SymbolIcon.h"
#include "Lumatile/widgets/ViewText.h"
#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

namespace {

constexpr double sidebarPoints = 200;
constexpr double sidebarMarginPoints = 10;  // As the style sheet has it.
constexpr double sidebarTextPoints = 13;
constexpr double titlePoints = 22;
constexpr double bodyPoints = 13;
constexpr int symbolSide = 18;
constexpr int pageMargin = 28;

/// Lines longer than this are hard to read.
constexpr double widestColumnPoints = 680;

bool scrolls(SettingsSection section) {
    return section == SettingsSection::general || section == SettingsSection::oled;
}

}  // namespace

SettingsRootView::SettingsRootView(std::shared_ptr<SettingsViewModel> model,
                                   SettingsServices services, QWidget* parent)
    : QWidget(parent),
      model_(std::move(model)),
      services_(std::move(services)),
      sidebar_(new RowList(sidebarMarginPoints)),
      pages_(new QStackedWidget) {
    // A click beside the controls leaves the one that has the keyboard: a name is taken over, a
    // recorder stops listening.
    setFocusPolicy(Qt::ClickFocus);
    setAccessibleName(viewText(SettingsTexts::windowTitle));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    sidebar_->setObjectName(QStringLiteral("sidebar"));
    sidebar_->setAccessibleName(viewText(SettingsTexts::sidebar));
    sidebar_->setFrameShape(QFrame::NoFrame);
    sidebar_->setFont(AppFonts::text(sidebarTextPoints, QFont::Medium));
    sidebar_->setIconSize(QSize(symbolSide, symbolSide));
    sidebar_->setFixedWidth(static_cast<int>(sidebarPoints * AppFonts::pixelsPerPoint()));
    for (const SettingsSection section : settingsSections) {
        new QListWidgetItem(
            SymbolIcon::of(symbol(section), WidgetColors::secondaryLabel(), WidgetColors::label()),
            viewText(title(section)), sidebar_);
    }
    layout->addWidget(sidebar_);
    auto* column = new QVBoxLayout;
    column->setSpacing(0);
    column->addWidget(new PreferencesNotice(services_.preferences, this));
    column->addWidget(pages_, 1);
    layout->addLayout(column, 1);
    connect(sidebar_, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0) {
            model_->setSection(settingsSections.at(static_cast<std::size_t>(row)));
        }
    });
    observation_ = model_->observe([this] { refresh(); });
    refresh();
}

void SettingsRootView::refresh() {
    const auto index = static_cast<std::size_t>(model_->section());
    QWidget*& page = made_.at(index);
    if (page == nullptr) {
        page = makePage(model_->section());
        pages_->addWidget(page);
    }
    pages_->setCurrentWidget(page);
    const QSignalBlocker quiet(sidebar_);
    sidebar_->setCurrentRow(static_cast<int>(index));
}

QWidget* SettingsRootView::makePage(SettingsSection section) {
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("page"));
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(pageMargin, pageMargin, pageMargin, pageMargin);
    layout->setSpacing(18);
    if (section != SettingsSection::about) {
        auto* heading = new QLabel(viewText(title(section)));
        heading->setFont(AppFonts::text(titlePoints, QFont::Bold));
        layout->addWidget(heading);
    }
    layout->addWidget(makeContent(section), 1);
    Mnemonics::assign(*page);
    // A page that is made while the window is on screen does not take its font over by itself.
    page->setFont(AppFonts::text(bodyPoints));
    if (!scrolls(section)) {
        return page;
    }
    page->setMaximumWidth(static_cast<int>(widestColumnPoints * AppFonts::pixelsPerPoint()) +
                          2 * pageMargin);
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(page);
    return area;
}

QWidget* SettingsRootView::makeContent(SettingsSection section) {
    switch (section) {
        case SettingsSection::commands:
            return new SnapAreasView(model_, services_.keys);
        case SettingsSection::oled:
            return new OLEDPage(model_, services_);
        case SettingsSection::about:
            return new AboutSectionView(services_.version, services_.say);
        case SettingsSection::general:
            break;
    }
    return new GeneralSectionView(services_);
}

}  // namespace lumatile
