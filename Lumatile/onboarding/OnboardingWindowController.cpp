#include "Lumatile/onboarding/OnboardingWindowController.h"

#include <QAction>
#include <QDialog>
#include <QGuiApplication>
#include <QKeySequence>
#include <QScreen>
#include <QVBoxLayout>

#include "Lumatile/AppFonts.h"
#include "Lumatile/onboarding/OnboardingView.h"
#include "Lumatile/settings/ApplicationIcon.h"
#include "Lumatile/settings/SettingsStyle.h"
#include "onboarding/OnboardingTexts.h"

namespace lumatile {

namespace {

constexpr QSize contentPoints(560, 480);

}  // namespace

OnboardingWindowController::OnboardingWindowController(std::shared_ptr<OnboardingModel> model,
                                                       Services services,
                                                       std::function<void()> closed)
    : model_(std::move(model)), services_(std::move(services)), closed_(std::move(closed)) {}

OnboardingWindowController::~OnboardingWindowController() {
    if (patience_) {
        model_->onChange(nullptr);
    }
}

void OnboardingWindowController::show() {
    if (!window_ && !patience_ && services_.patience > 0) {
        keepBack();
    } else {
        reveal();
    }
}

void OnboardingWindowController::keepBack() {
    const auto endUnseen = [this] {
        if (model_->state() == GrantState::granted) {
            // Takes this object along.
            const auto model = model_;
            model->done();
        }
    };
    patience_ = services_.runLoop.repeat(services_.patience, [this] { reveal(); });
    model_->onChange(endUnseen);
    endUnseen();
}

void OnboardingWindowController::reveal() {
    patience_.reset();
    if (!window_) {
        makeWindow();
    }
    if (window_->isMinimized()) {
        window_->showNormal();
    } else {
        window_->show();
    }
    window_->raise();
    window_->activateWindow();
}

void OnboardingWindowController::makeWindow() {
    window_ = std::make_unique<QDialog>();
    window_->setObjectName(QStringLiteral("settingsWindow"));
    window_->setWindowTitle(services_.say(OnboardingTexts::windowTitle));
    window_->setWindowIcon(applicationIcon());
    SettingsStyle::apply(*window_);
    auto* layout = new QVBoxLayout(window_.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new OnboardingView(model_, services_.runLoop, services_.say));

    // Text that the user has made larger gets more room, as far as the screen has it.
    const QScreen& screen = *QGuiApplication::primaryScreen();
    window_->resize((contentPoints * AppFonts::pixelsPerPoint()).boundedTo(screen.availableSize()));
    window_->move(screen.availableGeometry().center() - window_->rect().center());

    auto* close = new QAction(window_.get());
    close->setShortcuts({QKeySequence(QKeySequence::Close)});
    QObject::connect(close, &QAction::triggered, window_.get(), &QDialog::reject);
    window_->addAction(close);
    // Whoever is told lets go of the window, which must not happen while it is still closing.
    QObject::connect(window_.get(), &QDialog::rejected, window_.get(),
                     [&runLoop = services_.runLoop, closed = closed_] { runLoop.post(closed); });
}

std::unique_ptr<OnboardingPresenting> OnboardingWindowMaker::make(
    std::shared_ptr<OnboardingModel> model, std::function<void()> closed) {
    const double patience = std::exchange(services_.patience, 0);
    return std::make_unique<OnboardingWindowController>(
        std::move(model),
        OnboardingWindowController::Services{services_.runLoop, services_.say, patience},
        std::move(closed));
}

}  // namespace lumatile
