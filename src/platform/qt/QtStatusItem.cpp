#include "platform/qt/QtStatusItem.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPoint>
#include <QRect>
#include <QScreen>
#include <QSize>
#include <QString>

#include <chrono>
#include <utility>
#include <variant>

#include "platform/qt/StatusPicture.h"

namespace lumatile {

namespace {

// Bars that offer both register with the bus a moment after they have taken the tray.
constexpr std::chrono::milliseconds olderTrayPatience(1500);

/// Where a menu of that size opens: under the item, or above it where it lies in the lower half of
/// the screen; at the pointer where the bar does not tell where the item is.
QPoint menuPlace(const QRect& item, const QSize& menu) {
    const QScreen* const screen = QGuiApplication::screenAt(item.center());
    if (!item.isValid() || screen == nullptr) {
        return QCursor::pos();
    }
    return item.center().y() < screen->geometry().center().y()
               ? QPoint(item.left(), item.bottom() + 1)
               : QPoint(item.left(), item.top() - menu.height());
}

}  // namespace

QtStatusItem::QtStatusItem(std::function<void()> willDrawMenu)
    : willDrawMenu_(std::move(willDrawMenu)), host_([this] { lookForBar(); }) {
    patience_.setSingleShot(true);
    patience_.setInterval(olderTrayPatience);
    connect(&patience_, &QTimer::timeout, this, [this] { create(); });
}

QtStatusItem::~QtStatusItem() = default;

void QtStatusItem::setImage(const StatusImage& image) {
    if (image_ == image) {
        return;
    }
    image_ = image;
    if (icon_) {
        showImage();
    } else {
        lookForBar();
    }
}

void QtStatusItem::setMenu(StatusMenu menu, std::function<void()> menuWillOpen) {
    items_ = std::move(menu);
    menuWillOpen_ = std::move(menuWillOpen);
    if (exported_) {
        exported_->fill(items_);
    }
}

void QtStatusItem::setStatusLine(std::size_t index, const StatusLine& line) {
    if (index >= items_.size() || !std::holds_alternative<StatusLine>(items_[index])) {
        return;
    }
    items_[index] = line;
    if (exported_) {
        exported_->setStatusLine(index, line);
    }
}

void QtStatusItem::setChecked(std::size_t index, bool checked) {
    auto* const item =
        index < items_.size() ? std::get_if<ClosureMenuItem>(&items_[index]) : nullptr;
    if (item == nullptr) {
        return;
    }
    item->isChecked = checked;
    if (exported_) {
        exported_->setChecked(index, checked);
    }
}

void QtStatusItem::setKeyTexts(KeyTexts keyTexts) { keyTexts_ = std::move(keyTexts); }

void QtStatusItem::olderTrayAppeared() {
    hasOlderTray_ = true;
    lookForBar();
}

void QtStatusItem::lookForBar() {
    if (icon_ || !image_) {
        return;
    }
    if (host_.isPresent()) {
        create();
    } else if (!patience_.isActive() && hasOlderTray_) {
        patience_.start();
    }
}

void QtStatusItem::create() {
    patience_.stop();
    icon_ = std::make_unique<QSystemTrayIcon>();
    showImage();
    // Only a bar on the bus draws the menu; in the older tray it is a window, made when it opens.
    if (host_.isPresent()) {
        exported_ = std::make_unique<StatusMenuWidget>(StatusMenuWidget::Use::exported, keyTexts_);
        exported_->fill(items_);
        connect(&exported_->menu(), &QMenu::aboutToShow, this, [this] {
            menuWillOpen();
            exported_->refreshKeys(items_);
        });
        icon_->setContextMenu(&exported_->menu());
    }
    connect(icon_.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                // With the middle button and by double clicks nothing is meant.
                if (reason == QSystemTrayIcon::Trigger ||
                    (reason == QSystemTrayIcon::Context && !exported_)) {
                    openMenu();
                }
            });
    icon_->show();
}

void QtStatusItem::showImage() {
    icon_->setIcon(statusPicture(*image_));
    icon_->setToolTip(QString::fromStdString(image_->description));
}

void QtStatusItem::openMenu() {
    menuWillOpen();
    willDrawMenu_();
    shown_ = std::make_unique<StatusMenuWidget>(StatusMenuWidget::Use::shown, keyTexts_);
    shown_->fill(items_);
    shown_->menu().popup(menuPlace(icon_->geometry(), shown_->menu().sizeHint()));
}

void QtStatusItem::menuWillOpen() {
    // A copy: it may install another menu.
    if (const auto willOpen = menuWillOpen_) {
        willOpen();
    }
}

}  // namespace lumatile
