#include "tests/desktop/support/kwin/KWinServer.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <utility>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {
namespace {

constexpr const char* socketName = "wayland-test";

// Windows come in front when they are opened, nothing takes its time for the eye, and no service
// that is not there is waited for.
constexpr const char* settings = R"([Windows]
FocusStealingPreventionLevel=0

[Plugins]
kwin4_effect_fadeEnabled=false
kwin4_effect_maximizeEnabled=false
kwin4_effect_scaleEnabled=false
)";
constexpr const char* globalSettings = R"([KDE]
AnimationDurationFactor=0
)";

void writeTo(const std::filesystem::path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

/// Where the compositor's first program says what the session's programs need to know.
class ReadyPipe {
public:
    explicit ReadyPipe(std::filesystem::path path) : path_(std::move(path)) {
        std::filesystem::remove(path_);
        if (mkfifo(path_.c_str(), S_IRUSR | S_IWUSR) != 0) {
            throw DesktopError("no pipe at " + path_.string());
        }
        // Open at both ends, or it would count as closed before the first program writes.
        descriptor_ = open(path_.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    }
    ReadyPipe(const ReadyPipe&) = delete;
    ReadyPipe& operator=(const ReadyPipe&) = delete;
    ~ReadyPipe() { close(descriptor_); }

    int descriptor() const { return descriptor_; }

    /// What was said so far.
    const std::string& text() {
        std::array<char, 256> part{};
        ssize_t count = 0;
        while ((count = read(descriptor_, part.data(), part.size())) > 0) {
            text_.append(part.data(), static_cast<std::size_t>(count));
        }
        return text_;
    }

private:
    std::filesystem::path path_;
    int descriptor_ = -1;
    std::string text_;
};

}  // namespace

KWinServer::KWinServer(PrivateSession& session) : KWinServer(session, Options{}) {}

KWinServer::KWinServer(PrivateSession& session, const Options& options)
    : session_(&session), options_(options) {
    writeTo(session.configuration() / "kwinrc", settings);
    writeTo(session.configuration() / "kdeglobals", globalSettings);
    session.setVariable("XDG_SESSION_TYPE", "wayland");
    session.setVariable("XDG_CURRENT_DESKTOP", "KDE");
    session.setVariable("WAYLAND_DISPLAY", socketName);
    // As installed it has a capability, and nobody else's namespace lets it run. It looks at the
    // name of its file.
    std::filesystem::create_directory(session.folder() / "bin");
    std::filesystem::copy_file("/usr/bin/kwin_wayland", session.folder() / "bin" / "kwin_wayland");
    start();
}

std::string KWinServer::socket() const {
    return (session_->folder() / "run" / socketName).string();
}

void KWinServer::start() {
    ReadyPipe pipe(session_->folder() / "kwin-ready");
    const std::filesystem::path ready = session_->folder() / "bin" / "ready";
    // Other programs of ours are let in without the server's secret, which is a new one each time.
    writeTo(ready, "#!/bin/sh\nxhost +local: >/dev/null\necho \"$DISPLAY\" >\"" +
                       (session_->folder() / "kwin-ready").string() + "\"\n");
    std::filesystem::permissions(ready, std::filesystem::perms::owner_all);
    process_ = session_->start(
        {(session_->folder() / "bin" / "kwin_wayland").string(), "--virtual", "--width",
         std::to_string(options_.width), "--height", std::to_string(options_.height),
         "--output-count", std::to_string(options_.outputs), "--xwayland", "--socket", socketName,
         "--no-lockscreen", ready.string()},
        "kwin",
        {{"KWIN_COMPOSE", options_.pictures ? "O2" : "Q"},
         {"KWIN_WAYLAND_NO_PERMISSION_CHECKS", "1"},
         {"KWIN_SCREENSHOT_NO_PERMISSION_CHECKS", "1"}});
    const bool isReady =
        XClient::waitUntil([&] { return pipe.text().ends_with('\n') || !process_.isRunning(); },
                           Deadline::usual(), {pipe.descriptor(), process_.descriptor()});
    if (!isReady || !process_.isRunning()) {
        throw DesktopError("KWin did not start:\n" + session_->output("kwin"));
    }
    display_ = pipe.text();
    display_.pop_back();
    session_->setVariable("DISPLAY", display_);
}

void KWinServer::crash() {
    process_.signal(SIGKILL);
    process_.wait(Deadline::usual());
}

}  // namespace lumatile::desktop
