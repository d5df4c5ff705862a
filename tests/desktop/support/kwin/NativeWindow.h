#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/kwin/ProbedWindow.h"

namespace lumatile::desktop {

/// A window of a program of a real toolkit on a private compositor, by itself one of Wayland.
class NativeWindow {
public:
    enum class Toolkit {
        qt,   ///< Framed by the compositor.
        gtk,  ///< Draws its own frame and a shadow round it.
    };

    struct Options {
        Toolkit toolkit = Toolkit::qt;
        std::string title = "native window";
        std::string applicationId = "org.lumatile.test.Window";
        int width = 640;  ///< Of what the program draws into.
        int height = 400;
        int minimumWidth = 0;
        int minimumHeight = 0;
        bool fullScreen = false;
        bool dialog = false;  ///< A dialog of a hidden window of the same program.
        std::uint32_t color = 0x3a6ea5;
        int count = 1;     ///< Of windows that look alike; Qt only. This is one of them.
        bool onX = false;  ///< On the X server beside the compositor.
    };

    /// Shown, managed and active.
    /// @throws DesktopError when the program does not show it
    NativeWindow(PrivateSession& session, KWinProbe& probe, const Options& options);
    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;
    ~NativeWindow();

    const std::string& id() const { return window_->id(); }
    ChildProcess& process() { return process_; }

    /// As the compositor tells it.
    /// @throws DesktopError when the window is gone
    WindowState state() const { return window_->state(); }
    Rect frame() const { return window_->frame(); }

    /// Asks the compositor for a place of the outer frame and waits for it.
    void place(const Rect& wanted) const { window_->place(wanted); }

    void activate() const { window_->activate(); }

    /// Ends the program and waits until the compositor has forgotten the window.
    void close();

private:
    ChildProcess process_;
    std::optional<ProbedWindow> window_;
};

}  // namespace lumatile::desktop
