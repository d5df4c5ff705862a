#include "Lumatile/settings/AboutPanel.h"

#include <QAction>
#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

#include "Lumatile/settings/AboutSectionView.h"
#include "Lumatile/settings/SettingsAccessibility.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/ApplicationIcon.h"
#include "Lumatile/widgets/WidgetStyle.h"
#include "Lumatile/widgets/WindowForeground.h"

namespace lumatile {

AboutPanel::AboutPanel(std::string version, Saying say, WindowKeys keys)
    : version_(std::move(version)), say_(std::move(say)), keys_(std::move(keys)) {}

AboutPanel::~AboutPanel() = default;

void AboutPanel::show(QWidget* over) {
    if (!window_) {
        // As wide as the lines of the licences are long.
        constexpr QSize points(640, 560);
        constexpr int margin = 24;
        describeSettingsControls();
        window_ = std::make_unique<QWidget>(nullptr, Qt::Dialog);
        window_->setObjectName(QStringLiteral("settingsWindow"));
        window_->setWindowTitle(say_(SettingsTexts::aboutTitle));
        window_->setWindowIcon(applicationIcon());
        WidgetStyle::apply(*window_);
        auto* layout = new QVBoxLayout(window_.get());
        layout->setContentsMargins(margin, margin, margin, margin);
        layout->addWidget(new AboutSectionView(version_, say_));
        // Nothing is to be done here: no control is marked before the user goes to one.
        window_->setFocusPolicy(Qt::ClickFocus);
        window_->setFocus();
        window_->resize((points * AppFonts::pixelsPerPoint())
                            .boundedTo(QGuiApplication::primaryScreen()->availableSize()));
        auto* close = new QAction(window_.get());
        close->setShortcut(Qt::Key_Escape);
        QObject::connect(close, &QAction::triggered, window_.get(), &QWidget::close);
        window_->addAction(close);
        keys_.addTo(*window_);
    }
    if (!window_->isVisible()) {
        const bool isOver = over != nullptr && over->isVisible() && !over->isMinimized();
        const QRect around =
            isOver ? over->geometry() : QGuiApplication::primaryScreen()->availableGeometry();
        window_->move(around.center() - window_->rect().center());
        window_->winId();  // There is no native window before.
        window_->windowHandle()->setTransientParent(isOver ? over->windowHandle() : nullptr);
    }
    bringToFrontNow(*window_);
}

}  // namespace lumatile
