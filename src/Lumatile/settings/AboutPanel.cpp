#include "Lumatile/settings/AboutPanel.h"

#include <QAction>
#include <QVBoxLayout>
#include <QWidget>

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

void AboutPanel::show() {
    if (!window_) {
        // As wide as the lines of the licences are long.
        constexpr QSize points(640, 560);
        constexpr int margin = 24;
        describeSettingsControls();
        window_ = std::make_unique<QWidget>();
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
        window_->resize(points * AppFonts::pixelsPerPoint());
        auto* close = new QAction(window_.get());
        close->setShortcut(Qt::Key_Escape);
        QObject::connect(close, &QAction::triggered, window_.get(), &QWidget::close);
        window_->addAction(close);
        keys_.addTo(*window_);
    }
    bringToFrontNow(*window_);
}

}  // namespace lumatile
