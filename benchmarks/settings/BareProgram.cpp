// bare_settings_program: a status item with a menu, and a plain window of the size of our settings
// that opens when the program is started again.

#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>
#include <QVBoxLayout>
#include <QWidget>

#include <cstdlib>
#include <memory>

#include "platform/freedesktop/bus/SingleInstance.h"

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

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    std::unique_ptr<QWidget> window;
    const char* const display = std::getenv("DISPLAY");
    lumatile::SingleInstance instance(display == nullptr ? "" : display, [&window] {
        if (!window) {
            window = makeWindow();
        }
        window->show();
    });
    if (instance.claim() != lumatile::InstanceClaim::first) {
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
