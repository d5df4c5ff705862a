#include "Lumatile/settings/SettingsWindowController.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>

#include "Lumatile/settings/SettingsAccessibility.h"
#include "Lumatile/settings/SettingsRootView.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/ApplicationIcon.h"
#include "Lumatile/widgets/ViewText.h"
#include "Lumatile/widgets/WidgetStyle.h"
#include "Lumatile/widgets/WindowForeground.h"
#include "Lumatile/widgets/WindowKeys.h"

namespace lumatile {

namespace {

constexpr QSize contentPoints(920, 600);
constexpr QSize leastPoints(860, 540);

}  // namespace

SettingsWindowController::SettingsWindowController(std::shared_ptr<SettingsViewModel> model,
                                                   SettingsServices services)
    : viewModel_(std::move(model)), window_(std::make_unique<QWidget>()) {
    describeSettingsControls();
    window_->setObjectName(QStringLiteral("settingsWindow"));
    window_->setWindowTitle(viewText(SettingsTexts::windowTitle));
    window_->setWindowIcon(applicationIcon());
    WidgetStyle::apply(*window_);
    auto* layout = new QVBoxLayout(window_.get());
    layout->setContentsMargins(0, 0, 0, 0);
    WindowKeys{[this] { show(); }, services.quit}.addTo(*window_);
    layout->addWidget(new SettingsRootView(viewModel_, std::move(services)));

    // Text that the user has made larger gets more room, as far as the screen has it.
    const double scale = AppFonts::pixelsPerPoint();
    const QSize room = QGuiApplication::primaryScreen()->availableSize();
    window_->setMinimumSize((leastPoints * scale).boundedTo(room));
    window_->resize((contentPoints * scale).boundedTo(room));
    window_->move(QGuiApplication::primaryScreen()->availableGeometry().center() -
                  window_->rect().center());
}

SettingsWindowController::~SettingsWindowController() = default;

void SettingsWindowController::show() { bringToFrontNow(*window_); }

}  // namespace lumatile
