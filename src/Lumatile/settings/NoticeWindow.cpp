#include "Lumatile/settings/NoticeWindow.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/ApplicationIcon.h"
#include "Lumatile/widgets/ViewText.h"
#include "Lumatile/widgets/WidgetStyle.h"
#include "Lumatile/widgets/WindowForeground.h"

namespace lumatile {

namespace {

constexpr int iconSide = 48;
constexpr int margin = 20;
constexpr int textWidth = 340;
constexpr double titlePoints = 15;

}  // namespace

NoticeWindow::~NoticeWindow() { delete window_; }

void NoticeWindow::show(const Notice& notice, std::function<void()> chosen) {
    delete window_;
    window_ = new QDialog;
    window_->setAttribute(Qt::WA_DeleteOnClose);
    window_->setObjectName(QStringLiteral("settingsWindow"));
    window_->setWindowTitle(viewText(SettingsTexts::programName));
    window_->setWindowIcon(applicationIcon());
    WidgetStyle::apply(*window_);
    auto* whole = new QHBoxLayout(window_);
    whole->setContentsMargins(margin, margin, margin, margin);
    whole->setSpacing(margin);
    auto* icon = new QLabel;
    icon->setPixmap(
        applicationIcon().pixmap(QSize(iconSide, iconSide), window_->devicePixelRatioF()));
    whole->addWidget(icon, 0, Qt::AlignTop);

    auto* words = new QVBoxLayout;
    auto* title = new QLabel(QString::fromStdString(notice.title));
    title->setFont(AppFonts::text(titlePoints, QFont::DemiBold));
    title->setTextFormat(Qt::PlainText);
    auto* text = new QLabel(QString::fromStdString(notice.text));
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setMinimumWidth(static_cast<int>(textWidth * AppFonts::pixelsPerPoint()));
    words->addWidget(title);
    words->addWidget(text);
    words->addSpacing(margin / 2);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    auto* close = new QPushButton(viewText(SettingsTexts::close));
    buttons->addWidget(close);
    QObject::connect(close, &QPushButton::clicked, window_, &QDialog::close);
    close->setDefault(notice.action.empty());
    if (!notice.action.empty()) {
        auto* action = new QPushButton(withoutMnemonic(QString::fromStdString(notice.action)));
        action->setDefault(true);
        buttons->addWidget(action);
        QObject::connect(action, &QPushButton::clicked, window_,
                         [window = window_, chosen = std::move(chosen)] {
                             if (window) {
                                 window->close();
                             }
                             if (chosen) {
                                 chosen();
                             }
                         });
    }
    words->addLayout(buttons);
    whole->addLayout(words, 1);
    bringToFront(*window_);
}

}  // namespace lumatile
