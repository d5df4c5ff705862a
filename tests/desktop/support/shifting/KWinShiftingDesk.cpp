#include "tests/desktop/support/shifting/KWinShiftingDesk.h"

#include <signal.h>

#include <algorithm>
#include <utility>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/MainLoop.h"
#include "tests/desktop/support/OuterFrame.h"
#include "tests/desktop/support/kwin/PixelSpace.h"
#include "tests/desktop/support/kwin/SessionWait.h"
#include "tests/desktop/support/kwin/WaylandPanel.h"
#include "tests/desktop/support/shifting/UnmanagedWindow.h"
#include "tests/desktop/support/shifting/WindowCondition.h"
#include "windows/AccessibilityPlatform.h"
#include "windows/AttributeName.h"
#include "windows/AttributeReader.h"

namespace lumatile::desktop {
namespace {

const std::vector<std::string> kinds{"nativeDecorated", "onX", "nativeClientSide"};

constexpr int panelHeight = 37;

/// One that KWin shows and does not manage: it has no id by which anything could be asked about it.
class UnmanagedOnX : public ShiftedWindow {
public:
    UnmanagedOnX(const std::string& display, const PixelRect& area) : window_(display, area) {}

    PixelRect frame() override {
        const auto area = clientArea(window_, window_.id());
        if (!area) {
            throw DesktopError("the window is gone");
        }
        return *area;
    }
    void place(const PixelRect& /*wanted*/) override {}
    void activate() override {}
    void sendToDesktop(int /*desktop*/) override {}
    std::string condition() override {
        return std::to_string(WindowCondition::of(window_, window_.id()).mapState);
    }
    std::size_t timesAsked() override { return 0; }
    std::vector<std::string> otherThanMoves() override { return {}; }
    std::vector<PixelRect> geometries() override { return {}; }
    void forgetGeometries() override {}

private:
    UnmanagedWindow window_;
};

std::unique_ptr<PresentSession> found() {
    std::unique_ptr<PresentSession> session = KWinSession::find();
    if (!session) {
        throw DesktopError("the adapters find no session");
    }
    return session;
}

}  // namespace

KWinShiftingDesk::KWinShiftingDesk(const Setup& setup)
    : orders_(desktop_.session(), desktop_.probe()),
      environment_(desktop_.session()),
      session_(found()),
      adapters_(session_->enter(realTime_, log_)) {
    if (!waitUntil([&] { return adapters_->accessibility.isTrusted(false); })) {
        throw DesktopError("the adapters have no word of KWin");
    }
    workspace_.emplace(adapters_->workspace);
    application_ = std::make_unique<ShiftingApplication>(
        time_,
        ShiftingApplication::Adapters{adapters_->accessibility, adapters_->screenList, *workspace_,
                                      adapters_->mouseTaps},
        setup.oledSettings);
}

void KWinShiftingDesk::serve() {
    adapters_->events.dispatch();
    runReady();
}

bool KWinShiftingDesk::waitUntil(const std::function<bool()>& condition) {
    return waitInSession([&] {
        serve();
        return condition();
    });
}

void KWinShiftingDesk::advance(double seconds) {
    serve();
    time_.runLoop.advance(seconds);
}

bool KWinShiftingDesk::isHeard(const WindowState& state) {
    AccessibilityPlatform& platform = adapters_->accessibility;
    std::vector<Element> windows;
    // All of them, since not every program says which process it is.
    for (const RunningApplication& each : adapters_->workspace.runningApplications()) {
        const auto its = AttributeReader::value<std::vector<Element>>(
            platform, platform.applicationElement(each.pid), AttributeName::windows);
        if (its) {
            windows.insert(windows.end(), its->begin(), its->end());
        }
    }
    return std::any_of(windows.begin(), windows.end(), [&](const Element& window) {
        const auto place = AttributeReader::value<Point>(platform, window, AttributeName::position);
        const auto size = AttributeReader::value<Size>(platform, window, AttributeName::size);
        const auto is = [&](std::string_view attribute) {
            return AttributeReader::boolean(platform, window, attribute).value_or(false);
        };
        return place == state.frame.origin() && size == state.frame.size() &&
               is(AttributeName::minimized) == state.minimized &&
               is(AttributeName::fullScreen) == state.fullScreen;
    });
}

bool KWinShiftingDesk::isEverythingHeard() {
    const auto& windows = desktop_.probe().windows();
    const auto active = desktop_.probe().active();
    const auto front = adapters_->workspace.frontmostApplication();
    return (!active || (front && (active->pid <= 0 || front->pid == active->pid))) &&
           std::all_of(windows.begin(), windows.end(),
                       [this](const auto& each) { return isHeard(each.second); });
}

void KWinShiftingDesk::settle() {
    desktop_.probe().sync();
    if (!waitUntil([&] { return isEverythingHeard(); })) {
        throw DesktopError("the application does not hear of a window");
    }
}

KWinShiftedWindow::Desk KWinShiftingDesk::forWindows() {
    return {orders_,
            [this] {
                if (!isHeld_) {
                    desktop_.probe().sync();
                }
            },
            [this] { settle(); }};
}

const std::vector<std::string>& KWinShiftingDesk::windowKinds() const { return kinds; }

std::unique_ptr<ShiftedWindow> KWinShiftingDesk::open(const std::string& kind,
                                                      const PixelRect& frame) {
    if (kind == kinds[1]) {
        NativeWindow::Options onX;
        onX.onX = true;
        auto window = openNative(onX);
        window->place(frame);
        return window;
    }
    NativeWindow::Options options;
    options.toolkit = kind == kinds[2] ? NativeWindow::Toolkit::gtk : NativeWindow::Toolkit::qt;
    auto window = openNative(options);
    window->place(frame);
    return window;
}

std::unique_ptr<KWinShiftedWindow> KWinShiftingDesk::openNative(
    const NativeWindow::Options& options) {
    std::shared_ptr<NativeWindow> native = desktop_.openWindow(options);
    const ProbedWindow window(desktop_.probe(), native->id());
    return std::make_unique<KWinShiftedWindow>(forWindows(), window, std::move(native));
}

std::unique_ptr<ShiftedWindow> KWinShiftingDesk::openOther(const PixelRect& frame) {
    const auto process =
        std::make_shared<ChildProcess>(desktop_.session().start({"xlogo"}, "xlogo"));
    // It does not say which process it is.
    const auto shown = [&] {
        return desktop_.probe().find(
            [&](const WindowState& state) { return state.windowClass == otherId; });
    };
    if (!waitInSession([&] { return shown() || !process->isRunning(); }) || !shown()) {
        throw DesktopError("the program shows no window:\n" + desktop_.session().output("xlogo"));
    }
    auto window = std::make_unique<KWinShiftedWindow>(
        forWindows(), ProbedWindow(desktop_.probe(), shown()->id), process);
    window->activate();
    window->place(frame);
    return window;
}

std::unique_ptr<ShiftedWindow> KWinShiftingDesk::openTerminal(int x, int y) {
    const auto process = std::make_shared<ChildProcess>(desktop_.session().start(
        {"xterm", "-geometry", "70x20+" + std::to_string(x) + "+" + std::to_string(y), "-e",
         "exec sleep 1000"},
        "xterm"));
    const auto shown = [&] {
        return desktop_.probe().find(
            [&](const WindowState& state) { return state.pid == process->pid(); });
    };
    if (!waitInSession([&] { return shown() || !process->isRunning(); }) || !shown()) {
        throw DesktopError("the terminal shows no window:\n" + desktop_.session().output("xterm"));
    }
    auto window = std::make_unique<KWinShiftedWindow>(
        forWindows(), ProbedWindow(desktop_.probe(), shown()->id), process);
    window->activate();
    return window;
}

// Programs of Wayland cannot be rolled up.
std::unique_ptr<ShiftedWindow> KWinShiftingDesk::openShaded(const PixelRect& frame) {
    NativeWindow::Options options;
    options.onX = true;
    auto window = openNative(options);
    window->place(frame);
    desktop_.probe().shade(window->id(), true);
    if (!waitInSession([&] { return desktop_.probe().window(window->id())->shaded; })) {
        throw DesktopError("the window is not rolled up");
    }
    settle();
    return window;
}

std::unique_ptr<ShiftedWindow> KWinShiftingDesk::openPanel() {
    const PixelRect screen{0, 0, 1920, 1080};
    std::shared_ptr<WaylandPanel> panel = std::make_shared<WaylandPanel>(
        desktop_.server().socket(), "Virtual-0", screen.width, panelHeight);
    const auto shown = [&] {
        return desktop_.probe().find([](const WindowState& state) {
            return state.frame == Rect{0, 1080 - panelHeight, 1920, panelHeight};
        });
    };
    if (!waitInSession([&] { return shown().has_value(); })) {
        throw DesktopError("KWin shows no panel");
    }
    settle();
    return std::make_unique<KWinShiftedWindow>(
        forWindows(), ProbedWindow(desktop_.probe(), shown()->id), std::move(panel));
}

std::unique_ptr<ShiftedWindow> KWinShiftingDesk::openIcons() {
    TestWindow::Options options;
    options.kind = TestWindow::Kind::desktop;
    auto icons = std::make_shared<TestWindow>(desktop_.server().display(), options);
    xcb_map_window(icons->connection(), icons->id());
    icons->roundTrip();
    const auto shown = [&] {
        return desktop_.probe().find(
            [&](const WindowState& state) { return state.xid == icons->id(); });
    };
    if (!waitInSession([&] { return shown().has_value(); })) {
        throw DesktopError("KWin does not take the background over");
    }
    settle();
    return std::make_unique<KWinShiftedWindow>(
        forWindows(), ProbedWindow(desktop_.probe(), shown()->id), std::move(icons));
}

std::unique_ptr<ShiftedWindow> KWinShiftingDesk::openStill(StillWindow kind,
                                                           const PixelRect& frame) {
    KWinProbe& probe = desktop_.probe();
    const auto native = [&](const std::function<void(const std::string&)>& change,
                            const std::function<bool(const WindowState&)>& isSo) {
        std::shared_ptr<NativeWindow> window = desktop_.openWindow({});
        window->place(rectOf(frame));
        change(window->id());
        if (!waitInSession([&] { return isSo(window->state()); })) {
            throw DesktopError("the window does not get into its state");
        }
        settle();
        const ProbedWindow probed(probe, window->id());
        return std::make_unique<KWinShiftedWindow>(forWindows(), probed, std::move(window));
    };
    const auto maximized = [&](bool horizontally, bool vertically) {
        return native([&](const std::string& id) { probe.maximize(id, horizontally, vertically); },
                      [&](const WindowState& state) {
                          return state.maximizedHorizontally == horizontally &&
                                 state.maximizedVertically == vertically &&
                                 state.frame != rectOf(frame);
                      });
    };
    switch (kind) {
        case StillWindow::maximized:
            return maximized(true, true);
        case StillWindow::maximizedVertically:
            return maximized(false, true);
        case StillWindow::maximizedHorizontally:
            return maximized(true, false);
        case StillWindow::fullScreen:
            return native([&](const std::string& id) { probe.fullScreen(id, true); },
                          [](const WindowState& state) {
                              return state.fullScreen && state.frame == Rect{0, 0, 1920, 1080};
                          });
        case StillWindow::minimized:
            return native([&](const std::string& id) { probe.minimize(id, true); },
                          [](const WindowState& state) { return state.minimized; });
        case StillWindow::shaded:
            return openShaded(frame);
        case StillWindow::panel:
            return openPanel();
        case StillWindow::icons:
            return openIcons();
        case StillWindow::dialog: {
            NativeWindow::Options options;
            options.dialog = true;
            auto dialog = openNative(options);
            settle();
            return dialog;
        }
        case StillWindow::unmanaged:
            break;
    }
    return std::make_unique<UnmanagedOnX>(desktop_.server().display(), frame);
}

std::string KWinShiftingDesk::condition() { return desktop_.probe().desk(); }

void KWinShiftingDesk::hold() {
    kill(desktop_.server().pid(), SIGSTOP);
    isHeld_ = true;
}

void KWinShiftingDesk::letGo() {
    if (std::exchange(isHeld_, false)) {
        kill(desktop_.server().pid(), SIGCONT);
    }
}

}  // namespace lumatile::desktop
