#include "Lumatile/widgets/TipView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>

#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/SymbolIcon.h"

namespace lumatile {

namespace {

constexpr double titlePoints = 13;
constexpr double textPoints = 12;
constexpr double symbolPoints = 20;
constexpr int margin = 12;

}  // namespace

TipView::TipView(Saying say, QWidget* parent)
    : QWidget(parent),
      say_(std::move(say)),
      symbol_(new QLabel),
      title_(new QLabel),
      text_(new QLabel),
      warning_(new QLabel),
      words_(new QVBoxLayout) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, margin, 0, margin);
    layout->setSpacing(margin);
    symbol_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    layout->addWidget(symbol_, 0, Qt::AlignTop);
    words_->setSpacing(4);
    title_->setFont(AppFonts::text(titlePoints, QFont::DemiBold));
    title_->setWordWrap(true);
    text_->setFont(AppFonts::text(textPoints));
    text_->setWordWrap(true);
    text_->setProperty("tone", QStringLiteral("secondary"));
    warning_->setFont(AppFonts::text(textPoints));
    warning_->setWordWrap(true);
    warning_->setProperty("tone", QStringLiteral("warning"));
    warning_->hide();
    words_->addWidget(title_);
    words_->addWidget(text_);
    words_->addWidget(warning_);
    layout->addLayout(words_, 1);
}

void TipView::setWarning(const QString& warning) {
    warning_->setText(warning);
    warning_->setVisible(!warning.isEmpty());
}

void TipView::addButton(QPushButton* button) {
    if (buttons_ == nullptr) {
        buttons_ = new QHBoxLayout;
        buttons_->setSpacing(8);
        buttons_->addStretch(1);
        words_->addSpacing(4);
        words_->addLayout(buttons_);
    }
    buttons_->insertWidget(buttons_->count() - 1, button);
}

void TipView::show(const TipTexts::Tip& tip, const QColor& symbolColor) {
    const int side = static_cast<int>(std::lround(symbolPoints * AppFonts::pixelsPerPoint()));
    symbol_->setPixmap(SymbolIcon::pixmap(tip.symbol, symbolColor, side, devicePixelRatioF()));
    title_->setVisible(!tip.title.empty());
    title_->setText(say_(tip.title));
    text_->setText(say_(tip.text));
}

}  // namespace lumatile
