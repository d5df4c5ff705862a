#include <array>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

#include "Lumatile/AppDelegate.h"
#include "Lumatile/ApplicationControl.h"
#include "Lumatile/MainTexts.h"
#include "Lumatile/highlight/HighlightOverlay.h"
#include "Lumatile/launch/DesktopServices.h"
#include "Lumatile/launch/ProgramWindows.h"
#include "Lumatile/launch/SessionChoice.h"
#include "Lumatile/launch/SessionReturn.h"
#include "Lumatile/launch/SessionWatch.h"
#include "Lumatile/launch/StartMemory.h"
#include "Lumatile/launch/ToolkitApplication.h"
#include "Lumatile/widgets/AppFonts.h"
#include "platform/freedesktop/bus/BusConnection.h"
#include "platform/freedesktop/bus/ControlObject.h"
#include "platform/freedesktop/bus/SingleInstance.h"
#include "platform/freedesktop/process/ServiceNotifier.h"
#include "platform/freedesktop/process/StandardErrorLog.h"
#include "platform/freedesktop/process/TerminationSignals.h"
#include "platform/freedesktop/sync_folder/SharedFolderStore.h"
#include "platform/kwin/KWinSession.h"
#include "platform/qt/QSettingsPreferences.h"
#include "platform/qt/QtRunLoop.h"
#include "platform/qt/QtStatusItem.h"
#include "platform/x11/X11Session.h"

namespace {

using namespace lumatile;

/// In the order in which they are asked: a Wayland session has an X server beside it as a rule.
constexpr std::array kinds{SessionKind{KWinSession::find, KWinSession::absence},
                           SessionKind{X11Session::find, X11Session::absence}};

}  // namespace

int main(int argc, char** argv) {
    StandardErrorLog log;
    TerminationSignals termination;
    const auto present = SessionReturn::await(kinds, termination, log);
    if (!present) {
        return EXIT_FAILURE;
    }
    const SessionFacts& facts = present->facts();

    // Two programs would fight for shortcuts and windows.
    BusConnection sessionBus(BusConnection::sessionAddress());
    std::function<void()> startedAgain = [] {};
    SingleInstance instance(sessionBus, facts.desktop, [&startedAgain] { startedAgain(); });
    switch (instance.claim()) {
        case InstanceClaim::second:
            return EXIT_SUCCESS;
        case InstanceClaim::unreachable:
            log.write(MainTexts::program, MainTexts::silentInstance);
            return EXIT_FAILURE;
        case InstanceClaim::first:
        case InstanceClaim::unavailable:
            break;
    }

    sayShortcomings(facts, log);

    const ToolkitApplication toolkit(facts, argc, argv);
    QtRunLoop runLoop;
    QSettingsPreferences preferences(log, runLoop);
    SharedFolderStore sharedStore(preferences, log);
    QtStatusItem statusItem(AppFonts::registerFonts);

    const DesktopSession session = present->enter(runLoop, log);
    const SessionWatch sessionWatch(session.events, facts, runLoop, log,
                                    [&preferences] { preferences.storeNow(); });
    if (session.watchOlderTray) {
        session.watchOlderTray([&statusItem] { statusItem.olderTrayAppeared(); });
    }
    const auto highlight = std::make_shared<HighlightOverlay>(
        session.screenList, session.translucency, runLoop, session.highlightSurface);
    DesktopServices services(session, sessionBus, log);
    statusItem.setKeyTexts(services.keyTexts());
    ProgramWindows windows({facts, session, services, preferences, sharedStore, runLoop, log});

    AppDelegate delegate({session.accessibility, session.screenList, session.hotKeys,
                          session.keyCodes, session.workspace, runLoop, preferences, sharedStore,
                          log, session.inputState, session.dimOverlays, session.mouseTaps,
                          statusItem, windows.settings(), windows.onboarding(),
                          windows.syncConflict(), services.tiling, highlight});
    windows.serve(delegate.app());
    startedAgain = [&delegate] { delegate.applicationShouldHandleReopen(); };
    delegate.onStarted = [&services] { services.words.forget(); };
    ApplicationControl control(delegate.app().weak_from_this(), session.accessibility, runLoop,
                               facts.shortcomings);
    const ControlObject controlObject(sessionBus, facts.desktop, control, log);
    const auto instanceWatch =
        runLoop.watchDescriptor(instance.fileDescriptor(), [&instance] { instance.dispatch(); });
    const auto signalWatch = ToolkitApplication::terminateOn(termination, runLoop);
    const ServiceNotifier notifier;
    StartMemory startMemory;
    runLoop.post([&] {
        delegate.applicationDidFinishLaunching();
        // From now on it looks by itself, as far as it is to.
        windows.updater().controller();
        notifier.ready();
        startMemory.releaseSoon(runLoop);
    });
    const int status = ToolkitApplication::run();
    notifier.stopping();
    delegate.applicationWillTerminate();
    return sessionWatch.isLost() ? EXIT_FAILURE : status;
}
