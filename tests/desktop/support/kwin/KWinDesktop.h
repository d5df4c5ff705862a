#pragma once

#include <memory>
#include <vector>

#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/TestWindow.h"
#include "tests/desktop/support/kwin/FakeInput.h"
#include "tests/desktop/support/kwin/KWinProbe.h"
#include "tests/desktop/support/kwin/KWinServer.h"
#include "tests/desktop/support/kwin/NativeWindow.h"
#include "tests/desktop/support/kwin/OutputArrangement.h"

namespace lumatile::desktop {

/// A whole private desktop: a KWin Wayland session with an X server beside it, a look inside, and a
/// user's hands.
class KWinDesktop {
public:
    struct Options {
        /// One for each output.
        std::vector<ArrangedOutput> outputs{{}};
        std::size_t primary = 0;
        int width = 1920;  ///< Of every output before it is turned, pixels.
        int height = 1080;
        bool pictures = false;  ///< Whether pictures of the screens can be taken, which costs more.
    };

    KWinDesktop();
    explicit KWinDesktop(const Options& options);

    PrivateSession& session() { return session_; }
    KWinServer& server() { return server_; }
    KWinProbe& probe() { return *probe_; }
    FakeInput& input() { return *input_; }

    /// Changes the outputs while programs run, and waits until KWin has.
    void arrange(const std::vector<ArrangedOutput>& outputs, std::size_t primary = 0);

    /// Starts KWin anew after it has ended; the windows of before are gone.
    void restart();

    /// A new window of a native program, shown and active.
    std::unique_ptr<NativeWindow> openWindow(const NativeWindow::Options& options);

    /// A new window on the X server, shown and active.
    std::unique_ptr<TestWindow> openXWindow(const TestWindow::Options& options);

private:
    void connect();

    Options options_;
    PrivateSession session_;
    KWinServer server_;
    std::unique_ptr<FakeInput> input_;
    std::unique_ptr<KWinProbe> probe_;
};

}  // namespace lumatile::desktop
