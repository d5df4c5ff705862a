#include "Lumatile/onboarding/OnboardingView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <cmath>
#include <utility>

#include "Lumatile/onboarding/BoldText.h"
#include "Lumatile/onboarding/PageScroll.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/ApplicationIcon.h"
#include "Lumatile/widgets/SymbolIcon.h"
#include "Lumatile/widgets/TipView.h"
#include "Lumatile/widgets/ViewText.h"
#include "Lumatile/widgets/WidgetColors.h"
#include "Lumatile/widgets/WindowForeground.h"
#include "onboarding/OnboardingTexts.h"

namespace lumatile {

namespace {

constexpr double titlePoints = 24;
constexpr double textPoints = 14;
constexpr double notePoints = 13;
constexpr double iconPoints = 136;  // Of which the drawing is about two thirds.
constexpr double symbolPoints = 64;
constexpr double hintSymbolPoints = 20;  // As the tip below has it.
constexpr double buttonPoints = 220;     // The least width: one size for every state.
constexpr int margin = 40;
constexpr int wideMargin = 68;  // A few long lines of centred text end in a single word otherwise.
constexpr int gap = 12;

int pixels(double points) {
    return static_cast<int>(std::lround(points * AppFonts::pixelsPerPoint()));
}

QLabel* centred(const QFont& font) {
    auto* label = new QLabel;
    label->setFont(font);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    return label;
}

void showMarked(QLabel& label, const BoldText& text) {
    label.setText(text.rich);
    label.setAccessibleName(text.plain);
}

}  // namespace

OnboardingView::OnboardingView(std::shared_ptr<OnboardingModel> model, RunLoop& runLoop, Saying say,
                               QWidget* parent)
    : QWidget(parent),
      model_(std::move(model)),
      runLoop_(runLoop),
      say_(std::move(say)),
      pages_(new QStackedWidget) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(pages_);
    requestPage_ = makeRequestPage();
    readyPage_ = makeReadyPage();
    pages_->addWidget(requestPage_);
    pages_->addWidget(readyPage_);
    model_->onChange([this] { refresh(); });
    refresh();
}

OnboardingView::~OnboardingView() { model_->onChange(nullptr); }

QPushButton* OnboardingView::defaultButton() const {
    return pages_->currentWidget() == readyPage_ ? done_ : open_;
}

void OnboardingView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Before, the window had no default button that could take the focus.
    refresh();
}

QWidget* OnboardingView::makeRequestPage() {
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(wideMargin, gap, wideMargin, gap);
    layout->setSpacing(gap);
    auto* icon = new QLabel;
    icon->setPixmap(applicationIcon().pixmap(QSize(pixels(iconPoints), pixels(iconPoints)),
                                             devicePixelRatioF()));
    icon->setAlignment(Qt::AlignCenter);
    QLabel* title = centred(AppFonts::text(titlePoints, QFont::Bold));
    title->setText(say_(OnboardingTexts::welcome));
    QLabel* explanation = centred(AppFonts::text(textPoints));
    explanation->setText(say_(OnboardingTexts::explanation));
    explanation->setProperty("tone", QStringLiteral("secondary"));
    waiting_ = centred(AppFonts::text(textPoints, QFont::Medium));
    waiting_->setText(say_(OnboardingTexts::waiting));
    missing_ = centred(AppFonts::text(notePoints));
    missing_->setProperty("tone", QStringLiteral("warning"));
    layout->addStretch(1);
    layout->addWidget(icon);
    layout->addWidget(title);
    layout->addWidget(explanation);
    layout->addSpacing(gap);
    layout->addWidget(waiting_);
    layout->addWidget(missing_);
    layout->addStretch(1);

    open_ = new QPushButton;
    connect(open_, &QPushButton::clicked, this, [this] {
        if (model_->state() == GrantState::requesting) {
            model_->request();
        } else {
            model_->openSettings();
        }
    });
    return scrolledAbove(content, open_, pixels(buttonPoints));
}

QWidget* OnboardingView::makeReadyPage() {
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(margin, margin, margin, gap);
    layout->setSpacing(gap);
    auto* symbol = new QLabel;
    symbol->setPixmap(SymbolIcon::pixmap(OnboardingTexts::readySymbol, WidgetColors::accent(),
                                         pixels(symbolPoints), devicePixelRatioF()));
    symbol->setAlignment(Qt::AlignCenter);
    QLabel* title = centred(AppFonts::text(titlePoints, QFont::Bold));
    title->setText(say_(OnboardingTexts::ready));
    layout->addStretch(1);
    layout->addWidget(symbol);
    layout->addWidget(title);
    layout->addSpacing(gap);
    for (const OnboardingTexts::Hint& hint : OnboardingTexts::hints) {
        auto* words = new QLabel;
        showMarked(*words, BoldText::of(say_(hint.text)));
        layout->addWidget(makeHint(hint.symbol, WidgetColors::secondaryLabel(), words));
    }
    advice_ = new QLabel;
    adviceRow_ = makeHint(OnboardingTexts::takenSymbol, WidgetColors::warning(), advice_);
    layout->addWidget(adviceRow_);
    if (model_->tiling().conflictsWithDragToSnap()) {
        auto* tip = new TipView(say_);
        tip->show(TipTexts::systemTiling(true), WidgetColors::warning());
        layout->addWidget(tip);
    }
    layout->addStretch(1);

    done_ = new QPushButton(say_(OnboardingTexts::done));
    // The button goes with the window, and must not do so while it is being pressed.
    connect(done_, &QPushButton::clicked, this,
            [this] { runLoop_.post([model = model_] { model->done(); }); });
    return scrolledAbove(content, done_, pixels(buttonPoints));
}

QWidget* OnboardingView::makeHint(std::string_view symbol, const QColor& color, QLabel* words) {
    auto* hint = new QWidget;
    auto* layout = new QHBoxLayout(hint);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(gap);
    auto* picture = new QLabel;
    picture->setPixmap(
        SymbolIcon::pixmap(symbol, color, pixels(hintSymbolPoints), hint->devicePixelRatioF()));
    picture->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    words->setTextFormat(Qt::RichText);
    words->setFont(AppFonts::text(textPoints));
    words->setWordWrap(true);
    layout->addWidget(picture);
    layout->addWidget(words, 1);
    return hint;
}

void OnboardingView::refresh() {
    const GrantState state = model_->state();
    const bool isWaiting = state == GrantState::waiting;
    waiting_->setVisible(isWaiting);
    const auto missing = model_->missing();
    missing_->setVisible(missing.has_value());
    missing_->setText(missing ? say_(OnboardingTexts::missing(*missing)) : QString());
    open_->setText(withoutMnemonic(
        say_(isWaiting ? OnboardingTexts::openSettingsAgain : OnboardingTexts::openSettings)));
    refreshAdvice();
    const bool goesOn = state == GrantState::granted && pages_->currentWidget() == requestPage_;
    pages_->setCurrentWidget(state == GrantState::granted ? readyPage_ : requestPage_);
    open_->setDefault(state == GrantState::requesting);
    done_->setDefault(state == GrantState::granted);
    defaultButton()->setFocus(Qt::OtherFocusReason);
    if (goesOn && window()->isVisible()) {
        // The user has waited for this, and a window manager that has just come may have put it
        // anywhere.
        bringToFrontNow(*window());
    }
}

void OnboardingView::refreshAdvice() {
    const std::optional<OnboardingModel::Advice>& advice = model_->advice();
    if (advice) {
        // The name may be the user's own, and is not in the words of a catalogue.
        showMarked(*advice_,
                   advice->keys.empty()
                       ? BoldText::of(say_(OnboardingTexts::everythingTaken))
                       : BoldText::of(say_(OnboardingTexts::takenKeys))
                             .with(say_(advice->keys), QString::fromStdString(advice->command)));
    }
    adviceRow_->setVisible(advice.has_value());
}

}  // namespace lumatile
