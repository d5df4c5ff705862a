#include "Lumatile/widgets/PromptDialog.h"

#include <QAction>
#include <QGuiApplication>
#include <QKeySequence>
#include <QScreen>
#include <QVBoxLayout>

#include <utility>

#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/ApplicationIcon.h"
#include "Lumatile/widgets/WidgetStyle.h"

namespace lumatile {

std::unique_ptr<QDialog> makePromptDialog(const QString& title, QWidget* content,
                                          const QSize& contentPoints, RunLoop& runLoop,
                                          std::function<void()> closed) {
    auto window = std::make_unique<QDialog>();
    window->setObjectName(QStringLiteral("settingsWindow"));
    window->setWindowTitle(title);
    window->setWindowIcon(applicationIcon());
    WidgetStyle::apply(*window);
    auto* layout = new QVBoxLayout(window.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(content);

    // Text that the user has made larger gets more room, as far as the screen has it.
    const QScreen& screen = *QGuiApplication::primaryScreen();
    window->resize((contentPoints * AppFonts::pixelsPerPoint()).boundedTo(screen.availableSize()));
    window->move(screen.availableGeometry().center() - window->rect().center());

    auto* close = new QAction(window.get());
    close->setShortcuts({QKeySequence(QKeySequence::Close)});
    QObject::connect(close, &QAction::triggered, window.get(), &QDialog::reject);
    window->addAction(close);
    // Not while it is still closing.
    QObject::connect(window.get(), &QDialog::rejected, window.get(),
                     [&runLoop, closed = std::move(closed)] { runLoop.post(closed); });
    return window;
}

}  // namespace lumatile
