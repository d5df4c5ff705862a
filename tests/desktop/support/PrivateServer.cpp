#include "tests/desktop/support/PrivateServer.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <utility>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {
namespace {

constexpr std::string_view configuration = R"(
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AutoEnableDevices" "false"
    Option "AutoAddGPU" "false"
    Option "DontVTSwitch" "true"
EndSection
Section "Device"
    Identifier "device"
    Driver "dummy"
    VideoRam 256000
EndSection
Section "Monitor"
    Identifier "monitor"
    HorizSync 1-5000
    VertRefresh 1-1000
    Modeline "1920x1080" 148.50 1920 2008 2052 2200 1080 1084 1089 1125
    Modeline "1080x1920" 148.50 1080 1096 1112 1290 1920 1922 1924 1932
    Modeline "1366x768" 85.50 1366 1436 1579 1792 768 771 774 798
EndSection
Section "Screen"
    Identifier "screen"
    Device "device"
    Monitor "monitor"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Modes "1920x1080"
        Virtual 3840 2160
    EndSubSection
EndSection
)";

// Where there is a start script round the server, a signal would reach the script alone.
std::string serverProgram() {
    const std::string direct = "/usr/lib/xorg/Xorg";
    return std::filesystem::exists(direct) ? direct : "Xorg";
}

std::string readLine(int descriptor, ChildProcess& process, Deadline deadline) {
    std::string line;
    while (!deadline.isOver()) {
        std::array<pollfd, 2> watched{pollfd{descriptor, POLLIN, 0},
                                      pollfd{process.descriptor(), POLLIN, 0}};
        poll(watched.data(), watched.size(), deadline.milliseconds(1000));
        if ((watched[0].revents & POLLIN) != 0) {
            std::array<char, 32> text{};
            const ssize_t count = read(descriptor, text.data(), text.size());
            if (count > 0) {
                line.append(text.data(), static_cast<std::size_t>(count));
            }
            if (line.ends_with('\n')) {
                line.pop_back();
                return line;
            }
        } else if (!process.isRunning()) {
            break;
        }
    }
    return {};
}

}  // namespace

PrivateServer::PrivateServer(const MonitorLayout& layout, Kind kind,
                             const std::vector<std::string>& withoutExtensions)
    : layout_(layout), kind_(kind) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw DesktopError("no pipe");
    }
    const auto [readEnd, writeEnd] = ends;
    const std::string number = std::to_string(writeEnd);
    ChildProcess::Start start;
    start.environment = inheritedEnvironment();
    start.environment["HOME"] = folder_.path().string();
    start.output = folder_.path() / "server.log";
    start.keptDescriptor = writeEnd;
    if (kind == Kind::dummyDriver) {
        const auto file = folder_.write("xorg.conf", configuration);
        // No configuration folder of the machine's own may add devices to a private server.
        const auto empty = folder_.path() / "xorg.conf.d";
        std::filesystem::create_directory(empty);
        start.command = {serverProgram(),
                         "-displayfd",
                         number,
                         "-config",
                         file.string(),
                         "-configdir",
                         empty.string(),
                         "-logfile",
                         (folder_.path() / "Xorg.log").string(),
                         "-noreset",
                         "-ac",
                         "-nolisten",
                         "tcp",
                         "-novtswitch",
                         "-sharevts",
                         "vt7"};
    } else {
        const PixelRect root = layout.root();
        start.command = {
            "Xvfb",      "-displayfd",
            number,      "-screen",
            "0",         std::to_string(root.width) + "x" + std::to_string(root.height) + "x24",
            "-noreset",  "-ac",
            "-nolisten", "tcp"};
    }
    for (const std::string& extension : withoutExtensions) {
        start.command.insert(start.command.end(), {"-extension", extension});
    }
    process_ = ChildProcess(start);
    close(writeEnd);
    const std::string answer = readLine(readEnd, process_, Deadline::usual());
    close(readEnd);
    if (answer.empty() || std::isdigit(static_cast<unsigned char>(answer.front())) == 0) {
        throw DesktopError("the X server did not start:\n" +
                           readFile(folder_.path() / "server.log"));
    }
    display_ = ":" + answer;
    layKeyboard();
    if (std::find(withoutExtensions.begin(), withoutExtensions.end(), "RANDR") ==
        withoutExtensions.end()) {
        arranger_ = std::make_unique<ScreenArranger>(display_);
        arrange(layout);
    }
}

void PrivateServer::layKeyboard() {
    // Without devices Xorg numbers the keys in a way that no Linux desktop does; with them it would
    // be this one.
    ChildProcess::Start start;
    start.command = {"setxkbmap", "-display", display_,  "-rules", "evdev",
                     "-model",    "pc105",    "-layout", "us"};
    start.environment = inheritedEnvironment();
    start.output = folder_.path() / "keyboard.log";
    if (ChildProcess(start).wait(Deadline::usual()) != ChildProcess::Exit{0, 0}) {
        throw DesktopError("no keyboard layout:\n" + readFile(start.output));
    }
}

void PrivateServer::arrange(const MonitorLayout& layout) {
    if (!arranger_) {
        throw DesktopError("a server without RandR has the monitors that it has");
    }
    if (kind_ == Kind::dummyDriver) {
        arranger_->arrange(layout);
    } else {
        arranger_->arrangeVirtually(layout);
    }
    layout_ = layout;
}

void PrivateServer::unplug(std::size_t monitor) {
    arranger_->unplug(monitor);
    layout_.monitors.erase(layout_.monitors.begin() + static_cast<std::ptrdiff_t>(monitor));
    layout_.primary = 0;
}

void PrivateServer::stop() {
    arranger_.reset();
    process_.stop();
}

}  // namespace lumatile::desktop
