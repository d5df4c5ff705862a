#include "Lumatile/settings/PreferencesNotice.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/ViewText.h"

namespace lumatile {

namespace {

constexpr double textPoints = 12;
constexpr int sideMargin = 28;
constexpr int spacing = 12;

}  // namespace

PreferencesNotice::PreferencesNotice(Preferences& preferences, QWidget* parent)
    : QWidget(parent),
      preferences_(preferences),
      line_(new QLabel),
      setAside_(new QPushButton(viewText(SettingsTexts::setAside))) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(sideMargin, spacing, sideMargin, 0);
    layout->setSpacing(spacing);
    line_->setFont(AppFonts::text(textPoints));
    line_->setTextFormat(Qt::PlainText);
    line_->setWordWrap(true);
    line_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    line_->setProperty("tone", QStringLiteral("warning"));
    setAside_->setFont(AppFonts::text(textPoints));
    layout->addWidget(line_, 1);
    layout->addWidget(setAside_, 0, Qt::AlignTop);
    connect(setAside_, &QPushButton::clicked, this, [this] { preferences_.setAside(); });
    observation_ = preferences_.observeTrouble([this] { refresh(); });
    refresh();
}

void PreferencesNotice::refresh() {
    const std::optional<PreferencesTrouble> trouble = preferences_.trouble();
    line_->setText(trouble ? QString::fromStdString(trouble->line) : QString());
    setAside_->setVisible(trouble && trouble->canSetAside);
    setVisible(trouble.has_value());
}

}  // namespace lumatile
