#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/kwin/KWinProbe.h"

namespace lumatile::desktop {

/// A window of a program of a real toolkit on a private compositor.
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
    };

    /// Shown, managed and active.
    /// @throws DesktopError when the program does not show it
    NativeWindow(PrivateSession& session, KWinProbe& probe, const Options& options);
    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;
    ~NativeWindow();

    const std::string& id() const { return id_; }
    ChildProcess& process() { return process_; }

    /// As the compositor tells it.
    /// @throws DesktopError when the window is gone
    WindowState state() const;
    Rect frame() const { return state().frame; }

    /// Asks the compositor for a place of the outer frame and waits for it.
    void place(const Rect& wanted);

    void activate();

    /// Ends the program and waits until the compositor has forgotten the window.
    void close();

private:
    KWinProbe* probe_;
    ChildProcess process_;
    std::string id_;
};

}  // namespace lumatile::desktop
