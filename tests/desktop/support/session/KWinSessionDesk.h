#pragma once

#include "tests/desktop/support/kwin/KWinDesktop.h"
#include "tests/desktop/support/kwin/OverheardOrders.h"
#include "tests/desktop/support/kwin/ScreenPicture.h"
#include "tests/desktop/support/kwin/WaylandPanel.h"
#include "tests/desktop/support/session/KWinSessionWindow.h"
#include "tests/desktop/support/session/SessionDesk.h"

namespace lumatile::desktop {

/// A private KWin Wayland session as a session of the tables of cases.
class KWinSessionDesk : public SessionDesk {
public:
    explicit KWinSessionDesk(const Setup& setup);

    /// Names of the kinds of windows that `open` knows.
    static std::vector<std::string> windowKinds();

    KWinDesktop& desktop() { return desktop_; }

    const ExpectedFrame& expected() const override { return expected_; }
    LumatileProcess& program() override { return *program_; }
    PrivateSession& session() override { return desktop_.session(); }
    std::unique_ptr<SessionWindow> open(const std::string& kind, const PixelRect& area) override;
    std::array<std::unique_ptr<SessionWindow>, 2> openPair() override;
    std::unique_ptr<SessionWindow> openTyped(const std::string& type) override;
    SessionWindow& panel() override;
    RunningProgram openProgram(const SessionProgram& program) override;
    using SessionDesk::press;
    void press(const DefaultShortcut& shortcut) override;
    bool setLock(std::uint8_t lockKey, bool on) override;
    void movePointer(int x, int y) override { desktop_.input().movePointer(x, y); }
    void buttonDown(std::uint8_t button) override { desktop_.input().buttonDown(button); }
    void buttonUp(std::uint8_t button) override { desktop_.input().buttonUp(button); }
    void pressKey(std::uint8_t key) override { desktop_.input().press({}, key); }
    void arrange(const MonitorLayout& layout) override;
    void unplug(std::size_t monitor) override;
    ScreenColor colorAt(int x, int y) override {
        return ScreenPicture::colorAt(desktop_.session(), x, y);
    }
    SessionHighlight& highlight() override { return highlight_; }
    int resizedAt() const override { return 3; }
    void forget() override { orders_.forget(); }
    void roundTrip() override { desktop_.probe().sync(); }
    void awaitWindowManager() override { roundTrip(); }
    using SessionDesk::waitUntil;
    bool waitUntil(const std::function<bool()>& condition, Deadline deadline) override;
    using SessionDesk::settle;
    bool settle() override;

private:
    std::unique_ptr<KWinSessionWindow> openOnX(const TestWindow::Options& options);
    std::unique_ptr<KWinSessionWindow> openNative(const NativeWindow::Options& options);

    /// The program's layer surface, the only window that it has while nobody asks for others.
    class Highlight final : public SessionHighlight {
    public:
        explicit Highlight(KWinSessionDesk& desk) : desk_(desk) {}
        bool isShown() override;
        bool waitUntilAt(const PixelRect& wanted) override;
        bool waitUntilHidden() override;
        int timesShown() override;
        void forget() override;

    private:
        std::optional<WindowState> seen() const;

        KWinSessionDesk& desk_;
        std::size_t before_ = 0;  // Windows of the program that had appeared by then.
    };

    KWinDesktop desktop_;
    std::vector<ArrangedOutput> outputs_;
    std::optional<std::size_t> panelMonitor_;
    OverheardOrders orders_;
    MonitorLayout layout_;  // As it is now.
    ExpectedFrame expected_;
    std::unique_ptr<WaylandPanel> panel_;
    std::unique_ptr<KWinSessionWindow> panelWindow_;
    std::unique_ptr<LumatileProcess> program_;
    Highlight highlight_{*this};
};

}  // namespace lumatile::desktop
