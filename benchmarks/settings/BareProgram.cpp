// bare_settings_program: a status item with a menu, and a plain window of the size of our settings
// that opens when the program is started again.

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>
#include <QVBoxLayout>
#include <QWidget>

#include <cstdlib>
#include <memory>

#include "platform/freedesktop/bus/SessionBusInstance.h"

namespace {

// Of the window that it is compared with.
constexpr int width = 920;
constexpr int height = 600;

std::unique_ptr<QWidget> makeWindow() {
    auto window = std::make_unique<QWidget>();
    window->resize(width, height);
    auto* const column = new QVBoxLayout(window.get());
    column->addWidget(new QLabel(QStringLiteral("A window")));
    column->addStretch();
    return window;
}

/// Shows the window when it is asked for, over the toolkit's own connection to the bus.
class WindowObject final : public QDBusVirtualObject {
public:
    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        connection.send(message.createReply());
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (!window_) {
                    window_ = makeWindow();
                }
                window_->show();
            },
            Qt::QueuedConnection);
        return true;
    }

private:
    std::unique_ptr<QWidget> window_;
};

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    WindowObject window;
    const char* const display = std::getenv("DISPLAY");
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.registerVirtualObject(QStringLiteral("/org/lumatile/Lumatile"), &window) ||
        !bus.registerService(QString::fromStdString(
            lumatile::SessionBusInstance::nameOn(display == nullptr ? "" : display)))) {
        return EXIT_FAILURE;
    }
    QMenu menu;
    menu.addAction(QStringLiteral("An entry"));
    constexpr int extent = 22;
    QPixmap picture(extent, extent);
    picture.fill(Qt::white);
    QSystemTrayIcon item{QIcon(picture)};
    item.setContextMenu(&menu);
    item.show();
    return QApplication::exec();
}
