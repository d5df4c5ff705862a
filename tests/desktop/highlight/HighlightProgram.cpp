// Shows and hides the highlight as it is told, a line each: "show X Y WIDTH HEIGHT" (accessibility
// space) or "hide". Ends with its input.
//   highlight_program DESCRIPTOR

#include <QApplication>

#include <unistd.h>

#include <array>
#include <cstdlib>
#include <sstream>
#include <string>

#include "Lumatile/highlight/HighlightOverlay.h"
#include "platform/freedesktop/process/StandardErrorLog.h"
#include "platform/qt/QtRunLoop.h"
#include "platform/x11/X11Session.h"

namespace {

void carryOut(lumatile::HighlightOverlay& overlay, const std::string& line) {
    std::istringstream words(line);
    std::string order;
    words >> order;
    if (order == "show") {
        lumatile::Rect frame;
        words >> frame.x >> frame.y >> frame.width >> frame.height;
        overlay.show(frame);
    } else {
        overlay.hide();
    }
}

}  // namespace

int main(int argc, char** argv) {
    using namespace lumatile;
    const auto present = X11Session::find();
    if (argc != 2 || !present) {
        return EXIT_FAILURE;
    }
    const int input = std::atoi(argv[1]);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QtRunLoop runLoop;
    StandardErrorLog log;
    const DesktopSession session = present->enter(runLoop, log);
    HighlightOverlay overlay(session.screenList, session.translucency, runLoop,
                             session.highlightSurface);
    std::string read;
    const auto watch = runLoop.watchDescriptor(input, [&] {
        std::array<char, 256> part{};
        const auto count = ::read(input, part.data(), part.size());
        if (count <= 0) {
            QApplication::quit();
            return;
        }
        read.append(part.data(), static_cast<std::size_t>(count));
        for (auto end = read.find('\n'); end != std::string::npos; end = read.find('\n')) {
            carryOut(overlay, read.substr(0, end));
            read.erase(0, end + 1);
        }
    });
    const auto events = runLoop.watchDescriptor(session.events.descriptor, session.events.dispatch);
    const auto beforeBlocking = runLoop.beforeBlocking(session.events.dispatch);
    return QApplication::exec();
}
