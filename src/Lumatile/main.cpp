// The only place that knows every adapter.

#include <QApplication>
#include <QString>
#include <QtGlobal>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Lumatile/AppDelegate.h"
#include "Lumatile/ApplicationControl.h"
#include "Lumatile/FullScreenWindows.h"
#include "Lumatile/LaunchAtLogin.h"
#include "Lumatile/MainTexts.h"
#include "Lumatile/PackageUpdateController.h"
#include "Lumatile/Updater.h"
#include "Lumatile/conflict/SyncConflictWindow.h"
#include "Lumatile/highlight/HighlightOverlay.h"
#include "Lumatile/onboarding/OnboardingWindowController.h"
#include "Lumatile/settings/AboutPanel.h"
#include "Lumatile/settings/NoticeWindow.h"
#include "Lumatile/settings/SettingsWindowController.h"
#include "Lumatile/widgets/AppFonts.h"
#include "onboarding/HostDesktop.h"
#include "onboarding/Vocabulary.h"
#include "platform/freedesktop/bus/BusConnection.h"
#include "platform/freedesktop/bus/ControlObject.h"
#include "platform/freedesktop/bus/DesktopNotifications.h"
#include "platform/freedesktop/bus/SingleInstance.h"
#include "platform/freedesktop/files/XdgFolders.h"
#include "platform/freedesktop/login/AutostartEntry.h"
#include "platform/freedesktop/process/ServiceNotifier.h"
#include "platform/freedesktop/process/StandardErrorLog.h"
#include "platform/freedesktop/process/TerminationSignals.h"
#include "platform/freedesktop/sync_folder/SharedFolderStore.h"
#include "platform/freedesktop/tiling/DesktopTilingSettings.h"
#include "platform/freedesktop/updates/PackageKitUpdates.h"
#include "platform/qt/QSettingsPreferences.h"
#include "platform/qt/QtRunLoop.h"
#include "platform/qt/QtStatusItem.h"
#include "platform/x11/X11AccessibilityPlatform.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11DimOverlays.h"
#include "platform/x11/X11HotKeyPlatform.h"
#include "platform/x11/X11InputState.h"
#include "platform/x11/X11KeyCodes.h"
#include "platform/x11/X11Monitors.h"
#include "platform/x11/X11MouseEventSource.h"
#include "platform/x11/X11ScreenList.h"
#include "platform/x11/X11ShortcutText.h"
#include "platform/x11/X11Translucency.h"
#include "platform/x11/X11Tray.h"
#include "platform/x11/X11WindowManagerName.h"
#include "platform/x11/X11WindowMirror.h"
#include "platform/x11/X11Workspace.h"

namespace {

constexpr int exitFailure = 1;

// Seconds. At login the window manager may come a moment later than this program, and then nobody
// is to be bothered with its absence.
constexpr double onboardingPatience = 3;

bool isWaylandSession() {
    const char* display = std::getenv("WAYLAND_DISPLAY");
    const char* type = std::getenv("XDG_SESSION_TYPE");
    return (display != nullptr && *display != '\0') ||
           (type != nullptr && std::string_view(type) == "wayland");
}

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// What the toolkit reads before its application object is made.
void prepareToolkit() {
    // The overlay's place is stated in the coordinates of the X server, also where the session
    // would rather have the program on something else.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "xcb");
    }
    // A session manager would be told of a program with windows, and would start it again.
    QCoreApplication::setAttribute(Qt::AA_DisableSessionManager);
}

// The toolkit has a connection of its own. When the server goes away, either of the two may notice
// first; the toolkit then has a word of its own, and ends the program. One line is enough.
const std::function<void()>* reportServerLost = nullptr;
QtMessageHandler toolkitsOwnHandler = nullptr;

void handleToolkitMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.startsWith(QLatin1String("The X11 connection broke"))) {
        toolkitsOwnHandler(type, context, text);
        return;
    }
    if (reportServerLost != nullptr) {
        (*reportServerLost)();
    }
    // As the toolkit would next, but without taking itself apart half way.
    std::_Exit(exitFailure);
}

}  // namespace

int main(int argc, char** argv) {
    using namespace lumatile;

    StandardErrorLog log;
    TerminationSignals termination;
    // Before the toolkit, which ends the program where there is no server.
    const std::unique_ptr<X11Connection> connection = X11Connection::open();
    if (!connection) {
        log.write(MainTexts::program, MainTexts::noServer);
        return exitFailure;
    }
    if (isWaylandSession()) {
        log.write(MainTexts::program, MainTexts::waylandSession);
    }
    prepareToolkit();
    // The toolkit has options of its own; this program has none.
    int words = std::min(argc, 1);
    const QApplication application(words, argv);
    // The highlight is a window that comes and goes.
    QApplication::setQuitOnLastWindowClosed(false);
    QtRunLoop runLoop;

    std::function<void()> startedAgain;
    const char* const display = std::getenv("DISPLAY");
    SingleInstance instance(display == nullptr ? "" : display, [&startedAgain] {
        if (startedAgain) {
            startedAgain();
        }
    });
    switch (instance.claim()) {
        case InstanceClaim::second:
            return EXIT_SUCCESS;
        case InstanceClaim::unreachable:
            log.write(MainTexts::program, MainTexts::silentInstance);
            return exitFailure;
        case InstanceClaim::first:
        case InstanceClaim::unavailable:
            break;
    }
    const auto instanceWatch =
        runLoop.watchDescriptor(instance.fileDescriptor(), [&instance] { instance.dispatch(); });

    X11Monitors monitors(*connection);
    X11ScreenList screenList(*connection, monitors);
    X11WindowMirror mirror(*connection);
    X11AccessibilityPlatform accessibility(*connection, monitors, mirror);
    if (isWaylandSession()) {
        accessibility.noteGuestServer();
    }
    X11Workspace workspace(mirror);
    X11HotKeyPlatform hotKeys(*connection);
    QSettingsPreferences preferences(log);
    SharedFolderStore sharedStore(preferences, log);
    X11InputState inputState(*connection, log);
    X11DimOverlays dimOverlays(*connection, monitors, log);
    X11MouseEventSource mouseTaps(*connection, monitors, runLoop);
    X11Translucency translucency(*connection);
    const auto highlight = std::make_shared<HighlightOverlay>(screenList, translucency, runLoop);
    QtStatusItem statusItem;
    const X11Tray tray(*connection, [&statusItem] { statusItem.olderTrayAppeared(); });
    if (tray.isPresent()) {
        statusItem.olderTrayAppeared();
    }

    AppFonts::registerFonts();
    const std::string session = environment("XDG_CURRENT_DESKTOP");
    const auto findHost = [&] {
        mirror.refresh();
        return HostDesktop::find(session, windowManagerName(*connection, mirror.windowManager()));
    };
    const HostDesktop host = findHost();
    Vocabulary vocabulary = Vocabulary::of(host);
    const Saying say = [&vocabulary](std::string_view text) {
        return QString::fromStdString(vocabulary.apply(text));
    };
    const XdgFolders folders = XdgFolders::fromEnvironment();
    BusConnection sessionBus(BusConnection::sessionAddress());
    BusConnection systemBus(BusConnection::systemAddress());
    AutostartEntry loginItem(folders, AutostartEntry::runningBinary(), session);
    LaunchAtLogin launchAtLogin(loginItem, log);
    DesktopTilingSettings tiling(host, folders, sessionBus);
    PackageKitUpdates packages(systemBus, AutostartEntry::runningBinary());
    DesktopNotifications notifications(sessionBus);
    NoticeWindow notices;
    // The answer comes in a window that puts itself in front.
    Updater updater(
        [&] {
            return std::make_shared<PackageUpdateController>(PackageUpdateController::Parts{
                packages, notifications, notices, preferences, runLoop, log,
                [&] { return isAnyWindowFullScreen(workspace, accessibility); }, LUMATILE_VERSION});
        },
        [] {});
    X11KeyCodes keyCodes(*connection);
    const std::function<void()> terminate = [] { QCoreApplication::exit(EXIT_SUCCESS); };
    std::weak_ptr<ApplicationConductor> conductor;
    AboutPanel about(LUMATILE_VERSION, say,
                     {[&conductor] {
                          if (const auto alive = conductor.lock()) {
                              alive->openSettings();
                          }
                      },
                      terminate});
    SettingsWindowMaker settings([&] {
        return SettingsServices{keyCodes,
                                preferences,
                                launchAtLogin,
                                updater,
                                tiling,
                                sharedStore,
                                runLoop,
                                say,
                                LUMATILE_VERSION,
                                [&conductor] {
                                    const auto alive = conductor.lock();
                                    return alive ? alive->store().commands
                                                 : std::vector<SnapCommand>();
                                },
                                [&conductor](const SnapCommand& command) {
                                    if (const auto alive = conductor.lock()) {
                                        alive->performCommandBehindUs(command);
                                    }
                                },
                                terminate};
    });
    OnboardingWindowMaker onboarding({runLoop, say, onboardingPatience});
    SyncConflictWindowMaker syncConflict(runLoop, say);
    AppDelegate delegate({accessibility, screenList, hotKeys, workspace, runLoop, preferences,
                          sharedStore, log, inputState, dimOverlays, mouseTaps, statusItem,
                          settings, onboarding, syncConflict, tiling, highlight});
    conductor = delegate.app().weak_from_this();
    delegate.app().menuTargets = {[&about] { about.show(); },
                                  [&updater] { updater.checkForUpdates(); }, terminate};
    startedAgain = [&delegate] { delegate.applicationShouldHandleReopen(); };
    delegate.onStarted = [&] {
        // A window manager that was not there before may be what names the desktop.
        const HostDesktop present = findHost();
        vocabulary = Vocabulary::of(present);
        tiling.setHost(present);
        std::vector<std::string> refused;
        for (const auto& [keyCode, modifiers] : hotKeys.refusedRegistrations()) {
            refused.push_back(x11ShortcutText(keyCode, modifiers));
        }
        if (!refused.empty()) {
            log.write(MainTexts::program, MainTexts::refusedShortcuts(refused));
        }
    };
    ApplicationControl control(conductor, runLoop);
    const ControlObject controlObject(BusConnection::sessionAddress(),
                                      display == nullptr ? "" : display, control);

    bool serverLost = false;
    const std::function<void()> reportLost = [&] {
        if (!serverLost) {
            serverLost = true;
            log.write(MainTexts::program, MainTexts::serverLost);
        }
    };
    reportServerLost = &reportLost;
    toolkitsOwnHandler = qInstallMessageHandler(handleToolkitMessage);
    const std::function<void()> dispatch = [&] {
        if (serverLost) {
            return;
        }
        connection->dispatch();
        if (connection->isLost()) {
            reportLost();
            QCoreApplication::exit(exitFailure);
        }
    };
    const auto serverWatch = runLoop.watchDescriptor(connection->fileDescriptor(), dispatch);
    const auto beforeBlocking = runLoop.beforeBlocking(dispatch);
    const auto signalWatch = runLoop.watchDescriptor(termination.fileDescriptor(), [&] {
        if (termination.consume()) {
            QCoreApplication::exit(EXIT_SUCCESS);
        }
    });

    const ServiceNotifier notifier;
    runLoop.post([&] {
        delegate.applicationDidFinishLaunching();
        // From now on it looks by itself, as far as it is to.
        updater.controller();
        notifier.ready();
    });
    const int status = QCoreApplication::exec();
    reportServerLost = nullptr;
    notifier.stopping();
    delegate.applicationWillTerminate();
    return serverLost ? exitFailure : status;
}
