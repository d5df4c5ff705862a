#include "tests/desktop/support/kwin/NativeWindow.h"

#include <sstream>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/kwin/SessionWait.h"

namespace lumatile::desktop {
namespace {

std::vector<std::string> commandOf(const NativeWindow::Options& options) {
    std::ostringstream color;
    color << "#" << std::hex;
    color.width(6);
    color.fill('0');
    color << options.color;
    std::vector<std::string> command{
        options.toolkit == NativeWindow::Toolkit::qt ? LUMATILE_QT_WINDOW
                                                     : LUMATILE_CLIENT_SIDE_WINDOW,
        "--title=" + options.title,
        "--id=" + options.applicationId,
        "--size=" + std::to_string(options.width) + "x" + std::to_string(options.height),
        "--minimum=" + std::to_string(options.minimumWidth) + "x" +
            std::to_string(options.minimumHeight),
        "--color=" + color.str()};
    if (options.count > 1) {
        command.push_back("--count=" + std::to_string(options.count));
    }
    if (options.fullScreen) {
        command.emplace_back("--full-screen");
    }
    if (options.dialog) {
        command.emplace_back("--dialog");
    }
    return command;
}

}  // namespace

NativeWindow::NativeWindow(PrivateSession& session, KWinProbe& probe, const Options& options)
    : process_(session.start(commandOf(options), options.applicationId,
                             {{"QT_QPA_PLATFORM", options.onX ? "xcb" : "wayland"},
                              {"GDK_BACKEND", options.onX ? "x11" : "wayland"}})) {
    // Windows that come later would take the focus again.
    const bool shown = waitInSession([&] {
        int count = 0;
        for (const auto& [id, state] : probe.windows()) {
            if (state.pid == process_.pid() && state.caption == options.title) {
                window_.emplace(probe, id);
                ++count;
            }
        }
        return count == options.count || !process_.isRunning();
    });
    if (!shown || !window_) {
        throw DesktopError("no window is shown:\n" + session.output(options.applicationId) +
                           "\nKWin said:\n" + session.output("kwin"));
    }
    activate();
}

NativeWindow::~NativeWindow() {
    process_.stop();
    waitInSession([&] { return !window_->probe().window(id()); },
                  Deadline::in(std::chrono::seconds(5)));
}

void NativeWindow::close() {
    process_.stop();
    if (!waitInSession([&] { return !window_->probe().window(id()); })) {
        throw DesktopError("the compositor does not forget the window");
    }
}

}  // namespace lumatile::desktop
