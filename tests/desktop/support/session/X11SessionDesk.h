#pragma once

#include "tests/desktop/support/Compositor.h"
#include "tests/desktop/support/HighlightWatch.h"
#include "tests/desktop/support/SnapDesktop.h"
#include "tests/desktop/support/WindowManagerAnswer.h"
#include "tests/desktop/support/XPointer.h"
#include "tests/desktop/support/session/SessionDesk.h"
#include "tests/desktop/support/session/X11SessionWindow.h"

namespace lumatile::desktop {

/// A window manager on a private X server as a session of the tables of cases.
class X11SessionDesk : public SessionDesk {
public:
    X11SessionDesk(WindowManager::Kind windowManager, const Setup& setup);

    /// Names of the kinds of windows that `open` knows.
    static std::vector<std::string> windowKinds();

    /// Those of them that a title bar moves.
    static std::vector<std::string> titledKinds();

    SnapDesktop& desktop() { return desktop_; }

    const ExpectedFrame& expected() const override { return expected_; }
    LumatileProcess& program() override { return desktop_.program(); }
    PrivateSession& session() override { return desktop_.desktop().session(); }
    std::unique_ptr<SessionWindow> open(const std::string& kind, const PixelRect& area) override;
    std::array<std::unique_ptr<SessionWindow>, 2> openPair() override;
    std::unique_ptr<SessionWindow> openTyped(const std::string& type) override;
    SessionWindow& panel() override;
    RunningProgram openProgram(const SessionProgram& program) override;
    using SessionDesk::press;
    void press(const DefaultShortcut& shortcut) override { desktop_.press(shortcut); }
    bool setLock(std::uint8_t lockKey, bool on) override {
        return desktop_.input().setLock(lockKey, on);
    }
    void movePointer(int x, int y) override { pointer_.movePointer(x, y); }
    void buttonDown(std::uint8_t button) override { pointer_.buttonDown(button); }
    void buttonUp(std::uint8_t button) override;
    void pressKey(std::uint8_t key) override { desktop_.input().press({}, key); }
    void arrange(const MonitorLayout& layout) override;
    void unplug(std::size_t monitor) override { desktop_.desktop().server().unplug(monitor); }
    ScreenColor colorAt(int x, int y) override;
    SessionHighlight& highlight() override { return highlight_; }
    bool awaitSomethingAt(int x, int y) override;
    int resizedAt() const override;
    void forget() override { desktop_.observer().forget(); }
    void roundTrip() override { desktop_.observer().roundTrip(); }
    void awaitWindowManager() override { waitForWindowManager(desktop_.observer()); }
    using SessionDesk::waitUntil;
    bool waitUntil(const std::function<bool()>& condition, Deadline deadline) override {
        return pointer_.waitUntil(condition, deadline);
    }
    using SessionDesk::settle;
    bool settle() override { return desktop_.settle(); }

private:
    class Highlight final : public SessionHighlight {
    public:
        explicit Highlight(const std::string& display) : watch_(display) {}
        bool isShown() override { return watch_.isShown(); }
        bool waitUntilAt(const PixelRect& wanted) override { return watch_.waitUntilAt(wanted); }
        bool waitUntilHidden() override { return watch_.waitUntilHidden(); }
        int timesShown() override { return watch_.timesShown(); }
        void forget() override { watch_.forget(); }

    private:
        HighlightWatch watch_;
    };

    WindowManager::Kind windowManager_;
    SnapDesktop desktop_;
    Highlight highlight_{desktop_.desktop().display()};
    XPointer pointer_{desktop_.input()};
    ExpectedFrame expected_;
    X11SessionWindow::Desk forWindows_;
    std::optional<X11SessionWindow> panel_;
    std::optional<Compositor> compositor_;
    std::unique_ptr<ScreenColors> colors_;
};

}  // namespace lumatile::desktop
