#include "tests/desktop/support/DesktopSession.h"

#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <charconv>
#include <system_error>
#include <vector>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {
namespace {

constexpr const char* markName = "LUMATILE_PRIVATE_DESKTOP";

// The processes whose environment says that they belong to the session.
std::vector<pid_t> processesMarked(const std::string& mark) {
    // Variables end with a zero byte.
    const std::string wanted = std::string(markName) + "=" + mark + '\0';
    std::vector<pid_t> result;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
        const std::string name = entry.path().filename().string();
        pid_t pid = 0;
        const auto [end, failure] = std::from_chars(name.data(), name.data() + name.size(), pid);
        if (failure != std::errc{} || end != name.data() + name.size() || pid == getpid()) {
            continue;
        }
        if (readFile(entry.path() / "environ").find(wanted) != std::string::npos) {
            result.push_back(pid);
        }
    }
    return result;
}

void end(pid_t pid) {
    const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
    if (descriptor < 0) {
        return;
    }
    kill(pid, SIGTERM);
    kill(pid, SIGCONT);
    pollfd ended{descriptor, POLLIN, 0};
    if (poll(&ended, 1, 2000) <= 0) {
        kill(pid, SIGKILL);
        poll(&ended, 1, 2000);
    }
    close(descriptor);
    // Orphans of the session are our children by now; for others this does nothing.
    waitpid(pid, nullptr, WNOHANG);
}

}  // namespace

DesktopSession::DesktopSession(const std::string& display)
    : mark_(folder_.path().filename().string()), environment_(inheritedEnvironment()) {
    const std::filesystem::path runtime = folder() / "run";
    std::filesystem::create_directories(configuration());
    std::filesystem::create_directory(runtime);
    std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
    environment_[markName] = mark_;
    environment_["DISPLAY"] = display;
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

DesktopSession::~DesktopSession() {
    bus_.stop();
    for (const pid_t pid : processesMarked(mark_)) {
        end(pid);
    }
}

void DesktopSession::startBus() {
    const std::filesystem::path socket = folder() / "run" / "bus";
    environment_["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + socket.string();
    bus_ = start({"dbus-daemon", "--session", "--nofork", "--nopidfile", "--nosyslog",
                  "--address=unix:path=" + socket.string(), "--print-address"},
                 "bus");
    // It prints its address when it listens.
    const bool listens = XClient::waitUntil(
        [&] { return output("bus").find('\n') != std::string::npos || !bus_.isRunning(); },
        Deadline::usual(), {bus_.descriptor()});
    if (!listens || !bus_.isRunning()) {
        throw DesktopError("the message bus did not start: " + output("bus"));
    }
}

ChildProcess DesktopSession::start(const std::vector<std::string>& command, const std::string& name,
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

std::string DesktopSession::output(const std::string& name) const {
    return readFile(folder() / (name + ".log"));
}

void DesktopSession::endProgram(const std::string& executable) const {
    for (const pid_t pid : processesMarked(mark_)) {
        std::error_code gone;
        const auto program =
            std::filesystem::read_symlink("/proc/" + std::to_string(pid) + "/exe", gone);
        if (!gone && program.filename() == executable) {
            end(pid);
        }
    }
}

}  // namespace lumatile::desktop
