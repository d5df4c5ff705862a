#include "tests/desktop/wayland/WaylandDesk.h"

#include <poll.h>

#include <array>
#include <filesystem>
#include <sstream>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

namespace {

constexpr const char* socketName = "wayland-test";

// Nothing tells when the socket is there.
constexpr std::chrono::milliseconds lookEvery(20);

std::string text(double number) {
    std::ostringstream stream;
    stream << number;
    return stream.str();
}

}  // namespace

WaylandDesk::WaylandDesk(const Outputs& outputs,
                         const std::function<void(PrivateSession&)>& prepare) {
    if (prepare) {
        prepare(session_);
    }
    // Run as root, the installed one is refused what its file capabilities promise.
    const std::filesystem::path program = session_.folder() / "kwin_wayland";
    std::filesystem::copy_file("/usr/bin/kwin_wayland", program);
    compositor_ = session_.start({program.string(), "--virtual", "--width", "1280", "--height",
                                  "800", "--output-count", std::to_string(outputs.count), "--scale",
                                  text(outputs.scale), "--socket", socketName, "--no-lockscreen"},
                                 "kwin",
                                 {{"XDG_SESSION_TYPE", "wayland"},
                                  {"XDG_CURRENT_DESKTOP", "KDE"},
                                  {"KWIN_COMPOSE", "Q"},
                                  {"KWIN_WAYLAND_NO_PERMISSION_CHECKS", "1"},
                                  {"KWIN_SCREENSHOT_NO_PERMISSION_CHECKS", "1"}});
    const Deadline deadline = Deadline::usual();
    while (!connection_) {
        if (deadline.isOver() || !compositor_.isRunning()) {
            throw DesktopError("no compositor: " + session_.output("kwin"));
        }
        connection_ = WaylandConnection::open(socket());
        poll(nullptr, 0, static_cast<int>(lookEvery.count()));
    }
    // The socket is there before anything is offered.
    if (!waitUntil([&] { return !connection_->globals().empty(); }, deadline)) {
        throw DesktopError("a compositor that offers nothing: " + session_.output("kwin"));
    }
}

std::string WaylandDesk::socket() const {
    return (session_.folder() / "run" / socketName).string();
}

bool WaylandDesk::waitUntil(const std::function<bool()>& condition, Deadline deadline) {
    connection_->dispatch();
    while (!condition()) {
        if (deadline.isOver() || connection_->isLost()) {
            return condition();
        }
        std::array<pollfd, 1> descriptors = {{{connection_->fileDescriptor(), POLLIN, 0}}};
        poll(descriptors.data(), descriptors.size(), deadline.milliseconds(1000));
        connection_->dispatch();
    }
    return true;
}

}  // namespace lumatile::desktop
