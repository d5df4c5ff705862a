#include "Lumatile/launch/ToolkitApplication.h"

#include <algorithm>
#include <cstdlib>

namespace lumatile {

namespace {

/// Everything that the toolkit reads before its application object is made.
/// @return how many words the toolkit is given: it has options of its own, this program has none
int prepared(const SessionFacts& facts, int count) {
    for (const auto& [name, value] : facts.toolkitEnvironment) {
        if (qEnvironmentVariableIsEmpty(name.c_str())) {
            qputenv(name.c_str(), QByteArray::fromStdString(value));
        }
    }
    // The services of the desktop answer on GLib's main loop.
    qunsetenv("QT_NO_GLIB");
    // A session manager would be told of a program with windows, and would start it again.
    QCoreApplication::setAttribute(Qt::AA_DisableSessionManager);
    return std::min(count, 1);
}

}  // namespace

ToolkitApplication::ToolkitApplication(const SessionFacts& facts, int count, char** words)
    : count_(prepared(facts, count)), application_(count_, words) {
    // The highlight is a window that comes and goes.
    QApplication::setQuitOnLastWindowClosed(false);
}

void ToolkitApplication::terminate() { QCoreApplication::exit(EXIT_SUCCESS); }

QtRunLoop::Watch ToolkitApplication::terminateOn(TerminationSignals& signals, QtRunLoop& runLoop) {
    return runLoop.watchDescriptor(signals.fileDescriptor(), [&signals] {
        if (signals.consume()) {
            terminate();
        }
    });
}

}  // namespace lumatile
