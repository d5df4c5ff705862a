#include "tests/desktop/support/LumatileProcess.h"

#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {
namespace {

constexpr int sanitizerStatus = 99;

// The end of a socket on which a service says that it is ready.
class ReadySocket {
public:
    explicit ReadySocket(const std::filesystem::path& path)
        : descriptor_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string text = path.string();
        if (descriptor_ < 0 || text.size() >= sizeof address.sun_path) {
            throw DesktopError("no socket at " + text);
        }
        std::copy(text.begin(), text.end(), static_cast<char*>(address.sun_path));
        if (bind(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
            throw DesktopError("no socket at " + text);
        }
    }
    ReadySocket(const ReadySocket&) = delete;
    ReadySocket& operator=(const ReadySocket&) = delete;
    ~ReadySocket() { close(descriptor_); }

    int descriptor() const { return descriptor_; }

    bool saidReady() {
        std::array<char, 512> text{};
        for (;;) {
            const ssize_t count = recv(descriptor_, text.data(), text.size(), 0);
            if (count < 0) {
                return ready_;
            }
            const std::string_view message(text.data(), static_cast<std::size_t>(count));
            ready_ = ready_ || message.find("READY=1") != std::string_view::npos;
        }
    }

private:
    int descriptor_;
    bool ready_ = false;
};

// A byte array in the native format of the program's settings.
std::string stored(std::string_view key, std::string_view bytes) {
    std::string line = std::string(key) + "=\"@ByteArray(";
    for (const char character : bytes) {
        if (character == '"' || character == '\\') {
            line += '\\';
        }
        if (character == '\n') {
            line += "\\n";
        } else {
            line += character;
        }
    }
    return line + ")\"\n";
}

constexpr const char* pathOfSettings = "config/lumatile/lumatile.conf";

std::string settingsText(const LumatileProcess::Settings& settings) {
    std::string text = "[General]\n";
    if (settings.oledSettings) {
        text += stored("oledSettings", *settings.oledSettings);
    }
    if (settings.commands) {
        text += stored("commands", *settings.commands);
    }
    if (settings.syncFolder) {
        text += stored("syncFolder", *settings.syncFolder);
    }
    return text;
}

std::string withOption(const Environment& environment, const std::string& name,
                       const std::string& option) {
    const auto present = environment.find(name);
    return present == environment.end() ? option : present->second + ":" + option;
}

}  // namespace

LumatileProcess::LumatileProcess(PrivateSession& session, const std::filesystem::path& program)
    : LumatileProcess(session, program, Settings{}) {}

LumatileProcess::LumatileProcess(PrivateSession& session, const std::filesystem::path& program,
                                 const Settings& settings) {
    ChildProcess::Start start;
    start.command = {program.string()};
    start.environment = session.environment();
    for (const auto& [name, value] : settings.environment) {
        start.environment[name] = value;
    }
    start.output = folder_.path() / "lumatile.log";
    // A fault that a sanitizer finds must not end like an ordinary run.
    // And a program that hangs should tell where.
    const std::string status = "exitcode=" + std::to_string(sanitizerStatus) + ":handle_abort=1";
    for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
        start.environment[name] = withOption(session.environment(), name, status);
    }
    if (start.environment.contains("WAYLAND_DISPLAY")) {
        // The toolkit leaves objects of its own connection at the end of every program. Only whole
        // stacks tell them from ours.
        start.environment["ASAN_OPTIONS"] += ":fast_unwind_on_malloc=0";
    }
    // When the server goes away the toolkit ends the program with its own connection still open.
    const std::filesystem::path suppressions = folder_.write(
        "leaks", "leak:libX11.so\nleak:libQt6XcbQpa.so\nleak:libQt6WaylandClient.so\n");
    start.environment["LSAN_OPTIONS"] +=
        ":suppressions=" + suppressions.string() + ":print_suppressions=0";
    std::filesystem::path configuration = folder_.path() / "config";
    if (settings.writableFolder) {
        folder_.write(pathOfSettings, settingsText(settings));
    } else {
        // Below a file there can be no folder, for the superuser neither.
        configuration = folder_.write("file", "") / "config";
    }
    start.environment["XDG_CONFIG_HOME"] = configuration.string();
    ReadySocket socket(folder_.path() / "ready");
    start.environment["NOTIFY_SOCKET"] = (folder_.path() / "ready").string();
    process_ = ChildProcess(start);
    bool ready = false;
    XClient::waitUntil(
        [&] {
            ready = socket.saidReady();
            return ready || !process_.isRunning();
        },
        Deadline::usual(), {socket.descriptor(), process_.descriptor()});
    if (!ready) {
        throw DesktopError(program.string() + " does not get ready:\n" + output());
    }
}

LumatileProcess::~LumatileProcess() { process_.stop(); }

std::filesystem::path LumatileProcess::settingsFile() const {
    return folder_.path() / pathOfSettings;
}

std::string LumatileProcess::output() const { return readFile(folder_.path() / "lumatile.log"); }

std::optional<ChildProcess::Exit> LumatileProcess::stop() {
    process_.signal(SIGTERM);
    if (!process_.wait(Deadline::usual())) {
        process_.signal(SIGABRT);
        process_.wait(Deadline::in(std::chrono::seconds(10)));
    }
    return process_.stop();
}

std::optional<ChildProcess::Exit> LumatileProcess::wait(Deadline deadline) {
    return process_.wait(deadline);
}

bool LumatileProcess::isClean(const std::optional<ChildProcess::Exit>& exit) {
    return exit == ChildProcess::Exit{0, 0};
}

std::string complaintAboutEnd(LumatileProcess& program) {
    const auto exit = program.stop();
    if (LumatileProcess::isClean(exit)) {
        return {};
    }
    return "it ended with " +
           (exit && exit->status ? "status " + std::to_string(*exit->status)
                                 : "signal " + std::to_string(exit ? exit->signal : 0)) +
           ":\n" + program.output();
}

}  // namespace lumatile::desktop
