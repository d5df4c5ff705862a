#include "tests/desktop/support/session/X11SessionDesk.h"

#include <algorithm>
#include <array>
#include <utility>

#include "tests/desktop/support/AskedFrame.h"
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

class X11SessionWindow : public SessionWindow {
public:
    /// @param isPutOutOfItsTile whether a window that the window manager has tiled by itself goes
    ///        nowhere before it was maximized and restored
    X11SessionWindow(std::unique_ptr<TestWindow> window, Kind kind, DesktopObserver& observer,
                     bool isPutOutOfItsTile)
        : window_(std::move(window)),
          kind_(kind),
          observer_(observer),
          isPutOutOfItsTile_(isPutOutOfItsTile) {}

    PixelRect frame() override { return window_->frame(); }
    bool isAt(const PixelRect& wanted) override { return mayBecome(window_->frame(), wanted); }
    bool mayBecome(const PixelRect& frame, const PixelRect& wanted) const override {
        return hasSteps() ? TestWindow::isStepped(frame, wanted) : frame == wanted;
    }
    bool hasSteps() const override { return kind_ == Kind::sizeIncrement; }
    void place(const PixelRect& wanted) override {
        if (isPutOutOfItsTile_) {
            const std::vector<std::string> maximized{"_NET_WM_STATE_MAXIMIZED_VERT",
                                                     "_NET_WM_STATE_MAXIMIZED_HORZ"};
            window_->setState(maximized, true);
            window_->setState(maximized, false);
        }
        window_->place(wanted);
    }
    void activate() override { window_->activate(); }
    bool isActive() override { return window_->isActive(); }
    std::optional<PixelRect> asked(const PixelRect& before) override {
        return askedFrame(observer_, window_->id(), before);
    }
    std::size_t timesAsked() override {
        return observer_.messages(window_->id(), "_NET_MOVERESIZE_WINDOW").size();
    }

private:
    std::unique_ptr<TestWindow> window_;
    Kind kind_;
    DesktopObserver& observer_;
    bool isPutOutOfItsTile_;
};

SnapDesktop::Setup setupOf(WindowManager::Kind windowManager, const SessionDesk::Setup& setup) {
    SnapDesktop::Setup result;
    result.windowManager = windowManager;
    result.layout = setup.layout;
    result.panel = setup.panel;
    result.settings = setup.settings;
    // Metacity's own tile cannot be undone by any message.
    result.options.edgeTiling = !setup.isForDrags || windowManager != WindowManager::Kind::metacity;
    result.options.compositing = setup.isSeen;
    return result;
}

}  // namespace

X11SessionDesk::X11SessionDesk(WindowManager::Kind windowManager, const Setup& setup)
    : windowManager_(windowManager),
      desktop_(setupOf(windowManager, setup)),
      tilesAtEdges_(setup.isForDrags && windowManager == WindowManager::Kind::kwin) {
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
    return std::make_unique<X11SessionWindow>(desktop_.desktop().openWindow(options), options.kind,
                                              desktop_.observer(), tilesAtEdges_);
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
