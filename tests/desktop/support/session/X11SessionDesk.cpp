#include "tests/desktop/support/session/X11SessionDesk.h"

#include <algorithm>
#include <array>
#include <utility>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {
namespace {

using Kind = TestWindow::Kind;

using NamedKind = std::pair<const char*, Kind>;

// One that its title bar moves comes first.
constexpr std::array<NamedKind, 4> kinds{{{"decorated", Kind::decorated},
                                          {"undecorated", Kind::undecorated},
                                          {"clientSide", Kind::clientSide},
                                          {"sizeIncrement", Kind::sizeIncrement}}};

Kind kindOf(const std::string& name) {
    const auto* const found = std::find_if(
        kinds.begin(), kinds.end(), [&](const NamedKind& kind) { return kind.first == name; });
    if (found == kinds.end()) {
        throw DesktopError("no windows of kind " + name);
    }
    return found->second;
}

SnapDesktop::Setup setupOf(WindowManager::Kind windowManager, const SessionDesk::Setup& setup) {
    SnapDesktop::Setup result;
    result.windowManager = windowManager;
    result.layout = setup.layout;
    result.panel = setup.panel;
    result.settings = setup.settings;
    // Metacity's own tile cannot be undone by any message.
    result.options.edgeTiling = !setup.isForDrags || windowManager != WindowManager::Kind::metacity;
    result.options.compositing = setup.isSeen || setup.isComposited;
    return result;
}

}  // namespace

X11SessionDesk::X11SessionDesk(WindowManager::Kind windowManager, const Setup& setup)
    : windowManager_(windowManager),
      desktop_(setupOf(windowManager, setup)),
      expected_(desktop_.expected()),
      forWindows_{desktop_.desktop().display(), &desktop_.observer(),
                  setup.isForDrags && windowManager == WindowManager::Kind::kwin} {
    if (setup.isSeen && windowManager == WindowManager::Kind::openbox) {
        compositor_.emplace(desktop_.desktop().session());
    }
}

ScreenColor X11SessionDesk::colorAt(int x, int y) {
    if (!colors_) {
        colors_ = std::make_unique<ScreenColors>(desktop_.desktop().display());
    }
    return colors_->at(x, y);
}

std::vector<std::string> X11SessionDesk::windowKinds() {
    std::vector<std::string> names;
    for (const auto& [name, kind] : kinds) {
        names.emplace_back(name);
    }
    return names;
}

std::vector<std::string> X11SessionDesk::titledKinds() { return {"decorated", "sizeIncrement"}; }

std::unique_ptr<SessionWindow> X11SessionDesk::open(const std::string& kind,
                                                    const PixelRect& area) {
    TestWindow::Options options;
    options.kind = kindOf(kind);
    options.area = area;
    return std::make_unique<X11SessionWindow>(forWindows_, desktop_.desktop().openWindow(options));
}

std::array<std::unique_ptr<SessionWindow>, 2> X11SessionDesk::openPair() {
    const PixelRect anywhere{200, 150, 640, 400};
    auto first = open("decorated", anywhere);
    auto second = open("decorated", anywhere);
    return {std::move(first), std::move(second)};
}

std::unique_ptr<SessionWindow> X11SessionDesk::openTyped(const std::string& type) {
    TestWindow::Options options;
    options.type = type;
    auto window = std::make_unique<TestWindow>(desktop_.desktop().display(), options);
    window->map();
    // What is not an ordinary window is not tiled.
    X11SessionWindow::Desk neverTiled = forWindows_;
    neverTiled.isPutOutOfItsTile = false;
    return std::make_unique<X11SessionWindow>(neverTiled, std::move(window));
}

SessionWindow& X11SessionDesk::panel() {
    if (!panel_) {
        panel_.emplace(forWindows_, desktop_.panel().id(), SessionProgram{});
    }
    return *panel_;
}

void X11SessionDesk::arrange(const MonitorLayout& layout) {
    desktop_.desktop().arrange(layout);
    expected_ = ExpectedFrame(layout);
}

RunningProgram X11SessionDesk::openProgram(const SessionProgram& program) {
    TestDesktop::Program running =
        desktop_.desktop().openProgram(program.command, program.windowClass, program.environment);
    auto window = std::make_unique<X11SessionWindow>(forWindows_, running.window, program);
    return {std::move(running.process), std::move(window)};
}

bool X11SessionDesk::awaitSomethingAt(int x, int y) {
    // What kwin resizes a window by are windows of their own, which follow it a moment later.
    movePointer(x, y);
    desktop_.input().roundTrip();
    XClient& client = desktop_.observer();
    return waitUntil(
        [&client] {
            const XReply<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
                client.connection(), xcb_query_pointer(client.connection(), client.root()),
                nullptr));
            return pointer && pointer->child != XCB_WINDOW_NONE;
        },
        Deadline::usual());
}

int X11SessionDesk::resizedAt() const {
    // Frames are as thin as a pixel, and rounded at the corners; kwin has its handles outside.
    return windowManager_ == WindowManager::Kind::kwin ? 3 : -2;
}

void X11SessionDesk::buttonUp(std::uint8_t button) {
    pointer_.buttonUp(button);
    desktop_.input().roundTrip();
}

}  // namespace lumatile::desktop
