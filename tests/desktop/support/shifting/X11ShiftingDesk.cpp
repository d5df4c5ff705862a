#include "tests/desktop/support/shifting/X11ShiftingDesk.h"

#include <sstream>

#include "platform/x11/X11WindowWriter.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/shifting/UnmanagedWindow.h"
#include "tests/desktop/support/shifting/WindowCondition.h"
#include "tests/desktop/support/shifting/X11ShiftedWindow.h"

namespace lumatile::desktop {
namespace {

using Kind = TestWindow::Kind;

const std::vector<std::string> kinds{"decorated", "undecorated", "clientSide"};

Kind kindOf(const std::string& name) {
    if (name == kinds[1]) {
        return Kind::undecorated;
    }
    return name == kinds[2] ? Kind::clientSide : Kind::decorated;
}

WindowManager::Options optionsOf(const ShiftingDesk::Setup& setup) {
    WindowManager::Options options;
    options.compositing = setup.isComposited;
    return options;
}

/// The child of the root that `window` is in, which may be itself.
xcb_window_t topLevelOf(XClient& client, xcb_window_t window) {
    while (true) {
        const XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
            client.connection(), xcb_query_tree(client.connection(), window), nullptr));
        if (!tree || tree->parent == XCB_WINDOW_NONE || tree->parent == client.root()) {
            return window;
        }
        window = tree->parent;
    }
}

bool isViewable(XClient& client, xcb_window_t window) {
    return WindowCondition::of(client, window).mapState == XCB_MAP_STATE_VIEWABLE;
}

std::string geometryText(int x, int y) { return "+" + std::to_string(x) + "+" + std::to_string(y); }

}  // namespace

X11ShiftingDesk::X11ShiftingDesk(WindowManager::Kind windowManager, const Setup& setup)
    : windowManager_(windowManager),
      desktop_(windowManager, setup.oledSettings, optionsOf(setup),
               setup.isImpatient ? X11WindowWriter::longestTimeout : ShiftingDesktop::patient) {}

const std::vector<std::string>& X11ShiftingDesk::windowKinds() const { return kinds; }

std::unique_ptr<ShiftedWindow> X11ShiftingDesk::open(const std::string& kind,
                                                     const PixelRect& frame) {
    return std::make_unique<X11ShiftedWindow>(desktop_, desktop_.open(frame, kindOf(kind)));
}

std::unique_ptr<ShiftedWindow> X11ShiftingDesk::openOther(const PixelRect& frame) {
    auto logo = std::make_unique<X11ShiftedWindow>(
        desktop_, desktop_.desktop().openProgram({"xlogo"}, "XLogo"));
    logo->place(frame);
    return logo;
}

std::unique_ptr<ShiftedWindow> X11ShiftingDesk::openTerminal(int x, int y) {
    return std::make_unique<X11ShiftedWindow>(
        desktop_, desktop_.desktop().openProgram(
                      {"xterm", "-geometry", "70x20" + geometryText(x, y), "-e", "exec sleep 1000"},
                      "XTerm"));
}

std::unique_ptr<ShiftedWindow> X11ShiftingDesk::openStill(StillWindow kind,
                                                          const PixelRect& frame) {
    switch (kind) {
        case StillWindow::maximized:
            return openIn({"_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ"}, frame);
        case StillWindow::maximizedVertically:
            return openIn({"_NET_WM_STATE_MAXIMIZED_VERT"}, frame);
        case StillWindow::maximizedHorizontally:
            return openIn({"_NET_WM_STATE_MAXIMIZED_HORZ"}, frame);
        case StillWindow::fullScreen: {
            auto window = openIn({"_NET_WM_STATE_FULLSCREEN"}, frame);
            if (!XClient::waitUntil([&] {
                    return window->frame() == PixelRect{0, 0, 1920, 1080};
                })) {
                throw DesktopError("the window does not cover the screen");
            }
            return window;
        }
        case StillWindow::minimized:
            return openMinimized(frame);
        case StillWindow::shaded:
            return openIn({"_NET_WM_STATE_SHADED"}, frame);
        case StillWindow::panel:
            return std::make_unique<X11ShiftedWindow>(desktop_,
                                                      desktop_.desktop().openPanel(0, 37));
        case StillWindow::icons:
            return shown(Kind::desktop);
        case StillWindow::dialog:
            return shown(Kind::dialog);
        case StillWindow::unmanaged:
            break;
    }
    auto tip = std::make_unique<UnmanagedWindow>(desktop_.desktop().display(), frame);
    const xcb_window_t id = tip->id();
    return std::make_unique<X11ShiftedWindow>(desktop_, id, std::move(tip));
}

std::unique_ptr<ShiftedWindow> X11ShiftingDesk::openIn(const std::vector<std::string>& states,
                                                       const PixelRect& frame) {
    auto window = desktop_.open(frame);
    window->setState(states, true);
    return std::make_unique<X11ShiftedWindow>(desktop_, std::move(window));
}

std::unique_ptr<ShiftedWindow> X11ShiftingDesk::openMinimized(const PixelRect& frame) {
    auto window = desktop_.open(frame);
    DesktopObserver& observer = desktop_.observer();
    constexpr std::uint32_t iconicState = 3;
    observer.ask(window->id(), "WM_CHANGE_STATE", {iconicState});
    // openbox takes the client away at once, and moves its frame about while that shrinks.
    const bool isAway =
        XClient::waitUntil([&] { return window->hasState("_NET_WM_STATE_HIDDEN"); }) &&
        XClient::waitUntil([&] {
            return window->frame() == frame &&
                   !isViewable(observer, topLevelOf(observer, window->id()));
        });
    if (!isAway) {
        throw DesktopError("the window is not minimized");
    }
    return std::make_unique<X11ShiftedWindow>(desktop_, std::move(window));
}

std::unique_ptr<ShiftedWindow> X11ShiftingDesk::shown(Kind kind) {
    TestWindow::Options options;
    options.kind = kind;
    auto window = std::make_unique<TestWindow>(desktop_.desktop().display(), options);
    window->map();
    return std::make_unique<X11ShiftedWindow>(desktop_, std::move(window));
}

std::string X11ShiftingDesk::condition() {
    std::ostringstream text;
    text << DesktopCondition::of(desktop_.observer());
    return text.str();
}

void X11ShiftingDesk::addVirtualDesktop() {
    DesktopObserver& observer = desktop_.observer();
    observer.ask(observer.root(), "_NET_NUMBER_OF_DESKTOPS", {2});
    if (!XClient::waitUntil(
            [&] { return observer.cardinal(observer.root(), "_NET_NUMBER_OF_DESKTOPS") == 2; })) {
        throw DesktopError("there is one virtual desktop");
    }
}

void X11ShiftingDesk::hold() {
    held_.emplace(desktop_.desktop().windowManager(), desktop_.observer());
}

}  // namespace lumatile::desktop
