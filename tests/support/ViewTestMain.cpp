#include <QApplication>

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

namespace {

/// The platform without a screen says for each call what it cannot do.
void dropPlatformNotes(QtMsgType type, const QMessageLogContext& /*context*/,
                       const QString& message) {
    if (!message.startsWith(QLatin1String("This plugin does not support"))) {
        std::cerr << message.toStdString() << '\n';
    }
    if (type == QtFatalMsg) {
        std::abort();
    }
}

}  // namespace

// The application object has to be there before any view, and is there once.
int main(int argc, char** argv) {
    // Also where another screen is asked for than the platform has by itself.
    if (!qgetenv("QT_QPA_PLATFORM").startsWith("offscreen")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qInstallMessageHandler(dropPlatformNotes);
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
