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
    : probe_(&probe),
      process_(session.start(commandOf(options), options.applicationId,
                             {{"QT_QPA_PLATFORM", "wayland"}, {"GDK_BACKEND", "wayland"}})) {
    const bool shown = waitInSession([&] {
        const auto found = probe_->find([&](const WindowState& state) {
            return state.pid == process_.pid() && state.caption == options.title;
        });
        if (found) {
            id_ = found->id;
        }
        return found.has_value() || !process_.isRunning();
    });
    if (!shown || id_.empty()) {
        throw DesktopError("no window is shown:\n" + session.output(options.applicationId) +
                           "\nKWin said:\n" + session.output("kwin"));
    }
    activate();
}

NativeWindow::~NativeWindow() {
    process_.stop();
    waitInSession([&] { return !probe_->window(id_); }, Deadline::in(std::chrono::seconds(5)));
}

WindowState NativeWindow::state() const {
    const auto state = probe_->window(id_);
    if (!state) {
        throw DesktopError("the window is gone");
    }
    return *state;
}

void NativeWindow::place(const Rect& wanted) {
    probe_->place(id_, wanted);
    if (!waitInSession([&] { return frame() == wanted; })) {
        std::ostringstream text;
        text << "the window is not where it was placed, but " << state();
        throw DesktopError(text.str());
    }
}

void NativeWindow::activate() {
    probe_->activate(id_);
    if (!waitInSession([&] { return state().active; })) {
        throw DesktopError("the window does not become active");
    }
}

void NativeWindow::close() {
    process_.stop();
    if (!waitInSession([&] { return !probe_->window(id_); })) {
        throw DesktopError("the compositor does not forget the window");
    }
}

}  // namespace lumatile::desktop
