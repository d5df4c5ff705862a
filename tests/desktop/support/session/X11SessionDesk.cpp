#include "tests/desktop/support/session/X11SessionDesk.h"

#include <map>

#include "tests/desktop/support/AskedFrame.h"

namespace lumatile::desktop {
namespace {

using Kind = TestWindow::Kind;

const std::map<std::string, Kind>& kinds() {
    static const std::map<std::string, Kind> all{{"decorated", Kind::decorated},
                                                 {"undecorated", Kind::undecorated},
                                                 {"clientSide", Kind::clientSide},
                                                 {"sizeIncrement", Kind::sizeIncrement}};
    return all;
}

class X11SessionWindow : public SessionWindow {
public:
    X11SessionWindow(std::unique_ptr<TestWindow> window, Kind kind, DesktopObserver& observer)
        : window_(std::move(window)), kind_(kind), observer_(observer) {}

    PixelRect frame() override { return window_->frame(); }
    bool isAt(const PixelRect& wanted) override { return mayBecome(window_->frame(), wanted); }
    bool mayBecome(const PixelRect& frame, const PixelRect& wanted) const override {
        return hasSteps() ? TestWindow::isStepped(frame, wanted) : frame == wanted;
    }
    bool hasSteps() const override { return kind_ == Kind::sizeIncrement; }
    void place(const PixelRect& wanted) override { window_->place(wanted); }
    void activate() override { window_->activate(); }
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
};

SnapDesktop::Setup setupOf(WindowManager::Kind windowManager, const SessionDesk::Setup& setup) {
    SnapDesktop::Setup result;
    result.windowManager = windowManager;
    result.layout = setup.layout;
    result.panel = setup.panel;
    result.settings = setup.settings;
    // Metacity's own tile cannot be undone by any message.
    result.options.edgeTiling = !setup.isForDrags || windowManager != WindowManager::Kind::metacity;
    return result;
}

}  // namespace

X11SessionDesk::X11SessionDesk(WindowManager::Kind windowManager, const Setup& setup)
    : desktop_(setupOf(windowManager, setup)) {}

std::vector<std::string> X11SessionDesk::windowKinds() {
    std::vector<std::string> names;
    for (const auto& [name, kind] : kinds()) {
        names.push_back(name);
    }
    return names;
}

std::unique_ptr<SessionWindow> X11SessionDesk::open(const std::string& kind,
                                                    const PixelRect& area) {
    TestWindow::Options options;
    options.kind = kinds().at(kind);
    options.area = area;
    return std::make_unique<X11SessionWindow>(desktop_.desktop().openWindow(options), options.kind,
                                              desktop_.observer());
}

void X11SessionDesk::movePointer(int x, int y) {
    desktop_.input().movePointer(x, y);
    desktop_.input().roundTrip();
}

void X11SessionDesk::buttonUp() {
    desktop_.input().buttonUp();
    desktop_.input().roundTrip();
}

bool X11SessionDesk::follows(SessionWindow& window, const PixelRect& before) {
    return window.frame() != before;
}

}  // namespace lumatile::desktop
