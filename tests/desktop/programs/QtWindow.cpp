// A window of the toolkit's, as its command line says. Desktop tests of Wayland sessions place it.

#include <QColor>
#include <QCommandLineParser>
#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>
#include <QSize>
#include <QStringList>

#include <memory>
#include <vector>

namespace {

class ColoredWindow : public QRasterWindow {
public:
    explicit ColoredWindow(const QColor& color) : color_(color) {}

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter(this).fillRect(QRect(QPoint(0, 0), size()), color_);
    }

private:
    QColor color_;
};

QSize sizeOf(const QString& text) {
    const QStringList sides = text.split('x');
    return {sides.value(0).toInt(), sides.value(1).toInt()};
}

}  // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{"title", "", "text", "window"},
                       {"id", "", "name", "qt_window"},
                       {"size", "", "WxH", "640x400"},
                       {"minimum", "", "WxH", "0x0"},
                       {"color", "", "#rrggbb", "#3a6ea5"},
                       {"count", "", "number", "1"},
                       {"full-screen", ""},
                       {"dialog", ""}});
    parser.process(application);
    QGuiApplication::setDesktopFileName(parser.value("id"));
    std::vector<std::unique_ptr<ColoredWindow>> others;
    for (int count = parser.value("count").toInt(); count > 1; --count) {
        others.push_back(std::make_unique<ColoredWindow>(QColor(parser.value("color"))));
        others.back()->setTitle(parser.value("title"));
        others.back()->resize(sizeOf(parser.value("size")));
        others.back()->show();
    }
    ColoredWindow window(QColor(parser.value("color")));
    window.setTitle(parser.value("title"));
    window.resize(sizeOf(parser.value("size")));
    window.setMinimumSize(sizeOf(parser.value("minimum")));
    std::unique_ptr<ColoredWindow> parent;
    if (parser.isSet("dialog")) {
        parent = std::make_unique<ColoredWindow>(Qt::gray);
        parent->setTitle("parent of " + parser.value("title"));
        parent->resize(window.size());
        parent->show();
        window.setFlag(Qt::Dialog);
        window.setTransientParent(parent.get());
    }
    if (parser.isSet("full-screen")) {
        window.showFullScreen();
    } else {
        window.show();
    }
    return QGuiApplication::exec();
}
