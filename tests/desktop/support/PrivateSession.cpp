#include "tests/desktop/support/PrivateSession.h"

#include <vector>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/SessionProcesses.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {
PrivateSession::PrivateSession(const std::string& display)
    : mark_(folder_.path().filename().string()), environment_(inheritedEnvironment()) {
    const std::filesystem::path runtime = folder() / "run";
    std::filesystem::create_directories(configuration());
    std::filesystem::create_directory(runtime);
    std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
    environment_[sessionMark] = mark_;
    if (!display.empty()) {
        environment_["DISPLAY"] = display;
    }
    environment_["HOME"] = home().string();
    environment_["XDG_RUNTIME_DIR"] = runtime.string();
    environment_["XDG_CONFIG_HOME"] = configuration().string();
    environment_["XDG_CACHE_HOME"] = (home() / ".cache").string();
    environment_["XDG_DATA_HOME"] = (home() / ".local/share").string();
    environment_["XDG_STATE_HOME"] = (home() / ".local/state").string();
    environment_["GSETTINGS_BACKEND"] = "keyfile";
    environment_["GIO_USE_VFS"] = "local";
    environment_["NO_AT_BRIDGE"] = "1";
    startBus();
}

PrivateSession::~PrivateSession() {
    bus_.stop();
    endProcessesOfSession(mark_);
    reapOrphans(&ChildProcess::owns);
}

void PrivateSession::startBus() {
    const std::filesystem::path socket = folder() / "run" / "bus";
    environment_["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + socket.string();
    const std::size_t said = output("bus").size();  // By one before it.
    bus_ = start({"dbus-daemon", "--session", "--nofork", "--nopidfile", "--nosyslog",
                  "--address=unix:path=" + socket.string(), "--print-address"},
                 "bus");
    // It prints its address when it listens.
    const bool listens = XClient::waitUntil(
        [&] { return output("bus").find('\n', said) != std::string::npos || !bus_.isRunning(); },
        Deadline::usual(), {bus_.descriptor()});
    if (!listens || !bus_.isRunning()) {
        throw DesktopError("the message bus did not start: " + output("bus"));
    }
}

ChildProcess PrivateSession::start(const std::vector<std::string>& command, const std::string& name,
                                   const Environment& further) {
    ChildProcess::Start start;
    start.command = command;
    start.environment = environment_;
    for (const auto& [variable, value] : further) {
        start.environment[variable] = value;
    }
    start.output = folder() / (name + ".log");
    return ChildProcess(start);
}

std::string PrivateSession::output(const std::string& name) const {
    return readFile(folder() / (name + ".log"));
}

void PrivateSession::endProgram(const std::string& executable) const {
    endProcessesOfSession(mark_, executable);
}

}  // namespace lumatile::desktop
