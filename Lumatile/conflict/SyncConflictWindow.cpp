#include "Lumatile/conflict/SyncConflictWindow.h"

#include <QAction>
#include <QDialog>
#include <QGuiApplication>
#include <QKeySequence>
#include <QScreen>
#include <QVBoxLayout>

#include "Lumatile/AppFonts.h"
#include "Lumatile/SyncConflictTexts.h"
#include "Lumatile/conflict/SyncConflictView.h"
#include "Lumatile/settings/ApplicationIcon.h"
#include "Lumatile/settings/SettingsStyle.h"

namespace lumatile {

namespace {

constexpr QSize contentPoints(520, 280);

}  // namespace

SyncConflictWindow::SyncConflictWindow(RunLoop& runLoop, const SettingsSaying& say,
                                       std::function<void(bool)> choose,
                                       std::function<void()> closed)
    : window_(std::make_unique<QDialog>()),
      // Whoever is told lets go of the window, which must not happen while its button is still
      // being pressed, or it is still closing.
      view_(new SyncConflictView(say, [&runLoop, choose = std::move(choose)](bool preferLocal) {
          runLoop.post([choose, preferLocal] { choose(preferLocal); });
      })) {
    window_->setObjectName(QStringLiteral("settingsWindow"));
    window_->setWindowTitle(say(SyncConflictTexts::windowTitle));
    window_->setWindowIcon(applicationIcon());
    SettingsStyle::apply(*window_);
    auto* layout = new QVBoxLayout(window_.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);

    // Text that the user has made larger gets more room, as far as the screen has it.
    const QScreen& screen = *QGuiApplication::primaryScreen();
    window_->resize((contentPoints * AppFonts::pixelsPerPoint()).boundedTo(screen.availableSize()));
    window_->move(screen.availableGeometry().center() - window_->rect().center());

    auto* close = new QAction(window_.get());
    close->setShortcuts({QKeySequence(QKeySequence::Close)});
    QObject::connect(close, &QAction::triggered, window_.get(), &QDialog::reject);
    window_->addAction(close);
    QObject::connect(window_.get(), &QDialog::rejected, window_.get(),
                     [&runLoop, closed = std::move(closed)] { runLoop.post(closed); });
}

SyncConflictWindow::~SyncConflictWindow() = default;

void SyncConflictWindow::show(const ConflictSummary& summary) {
    view_->show(summary);
    if (window_->isMinimized()) {
        window_->showNormal();
    } else {
        window_->show();
    }
    window_->raise();
    window_->activateWindow();
}

}  // namespace lumatile
