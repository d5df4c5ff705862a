#include "platform/x11/X11Session.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/x11/X11AccessibilityPlatform.h"
#include "platform/x11/X11DimOverlays.h"
#include "platform/x11/X11HotKeyPlatform.h"
#include "platform/x11/X11InputState.h"
#include "platform/x11/X11KeyCodes.h"
#include "platform/x11/X11Monitors.h"
#include "platform/x11/X11MouseEventSource.h"
#include "platform/x11/X11ScreenList.h"
#include "platform/x11/X11Texts.h"
#include "platform/x11/X11Translucency.h"
#include "platform/x11/X11Tray.h"
#include "platform/x11/X11WindowManagerName.h"
#include "platform/x11/X11WindowMirror.h"
#include "platform/x11/X11Workspace.h"

namespace lumatile {

namespace {

std::string_view variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string_view() : std::string_view(value);
}

bool isWaylandSession() {
    return !variable("WAYLAND_DISPLAY").empty() || variable("XDG_SESSION_TYPE") == "wayland";
}

}  // namespace

/// Everything that speaks to the server, each after what it stands on.
struct X11Session::Adapters {
    Adapters(X11Connection& with, RunLoop& runLoop, SystemLog& log)
        : connection(with),
          inputState(with, log),
          mouseTaps(with, monitors, runLoop),
          dimOverlays(with, monitors, log) {}

    X11Connection& connection;
    X11Monitors monitors{connection};
    X11ScreenList screenList{connection, monitors};
    X11WindowMirror mirror{connection};
    X11AccessibilityPlatform accessibility{connection, monitors, mirror};
    X11Workspace workspace{mirror};
    X11HotKeyPlatform hotKeys{connection};
    X11InputState inputState;
    X11MouseEventSource mouseTaps;
    X11DimOverlays dimOverlays;
    X11Translucency translucency{connection};
    X11KeyCodes keyCodes{connection};
    std::optional<X11Tray> tray;

    std::string nameOfWindowManager() {
        mirror.refresh();
        return windowManagerName(connection, mirror.windowManager());
    }

    void watchTray(const std::function<void()>& appeared) {
        tray.emplace(connection, appeared);
        if (tray->isPresent()) {
            appeared();
        }
    }
};

std::unique_ptr<PresentSession> X11Session::find() {
    std::unique_ptr<X11Connection> connection = X11Connection::open();
    return connection ? std::unique_ptr<PresentSession>(new X11Session(std::move(connection)))
                      : nullptr;
}

X11Session::X11Session(std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)), isGuest_(isWaylandSession()) {
    facts_.desktop = variable("DISPLAY");
    // The highlight's place is stated in the coordinates of the X server, also where the session
    // would rather have the program on something else.
    facts_.toolkitEnvironment = {{"QT_QPA_PLATFORM", "xcb"}};
    facts_.toolkitFarewell = X11Texts::toolkitFarewell;
    facts_.lost = X11Texts::serverLost;
    if (isGuest_) {
        facts_.shortcomings.emplace_back(X11Texts::waylandSession);
    }
}

DesktopSession X11Session::enter(RunLoop& runLoop, SystemLog& log) {
    const auto adapters = std::make_shared<Adapters>(*connection_, runLoop, log);
    Adapters& own = *adapters;
    if (isGuest_) {
        own.accessibility.noteGuestServer();
    }
    X11Connection& connection = *connection_;
    return {own.accessibility,
            own.screenList,
            own.hotKeys,
            own.workspace,
            own.inputState,
            own.mouseTaps,
            own.dimOverlays,
            own.translucency,
            own.keyCodes,
            {connection.fileDescriptor(), [&connection] { connection.dispatch(); },
             [&connection] { return connection.isLost(); }},
            [&own] { return own.nameOfWindowManager(); },
            [&own](const std::function<void()>& appeared) { own.watchTray(appeared); },
            adapters};
}

}  // namespace lumatile
