#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/DesktopObserver.h"
#include "tests/desktop/support/InputDriver.h"
#include "tests/desktop/support/MonitorLayout.h"
#include "tests/desktop/support/PrivateServer.h"
#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/TestWindow.h"
#include "tests/desktop/support/WindowManager.h"

namespace lumatile::desktop {

/// A whole private desktop: server, session, window manager, an observer and the user's hands.
class TestDesktop {
public:
    TestDesktop(const MonitorLayout& layout, WindowManager::Kind kind,
                WindowManager::Options options);
    TestDesktop(const MonitorLayout& layout, WindowManager::Kind kind);

    /// Without a window manager.
    explicit TestDesktop(const MonitorLayout& layout);

    const std::string& display() const { return server_.display(); }
    PrivateServer& server() { return server_; }
    PrivateSession& session() { return session_; }
    DesktopObserver& observer() { return observer_; }
    InputDriver& input() { return input_; }

    /// @throws DesktopError when there is none
    WindowManager& windowManager();
    void startWindowManager(WindowManager::Kind kind, WindowManager::Options options);

    /// Changes the monitors and waits until the window manager has followed, as far as it says so.
    void arrange(const MonitorLayout& layout);

    /// A new window, mapped and active.
    std::unique_ptr<TestWindow> openWindow(const TestWindow::Options& options);

    /// A panel of `height` along the lower edge of a monitor, mapped, its room reserved.
    std::unique_ptr<TestWindow> openPanel(std::size_t monitor, int height);

    /// Lays an open panel along the lower edge of a monitor, as panels do when monitors change.
    void layPanel(TestWindow& panel, std::size_t monitor, int height);

    /// A real program, started and with its window managed and active.
    struct Program {
        ChildProcess process;
        xcb_window_t window = XCB_WINDOW_NONE;
    };
    /// @param windowClass WM_CLASS class of the window to wait for
    /// @param further variables beside the session's
    Program openProgram(const std::vector<std::string>& command, const std::string& windowClass,
                        const Environment& further = {});

private:
    PixelRect panelArea(std::size_t monitor, int height) const;
    std::array<std::uint32_t, 12> panelStrut(const PixelRect& panel) const;

    PrivateServer server_;
    PrivateSession session_;
    std::unique_ptr<WindowManager> windowManager_;
    DesktopObserver observer_;
    InputDriver input_;
};

}  // namespace lumatile::desktop
