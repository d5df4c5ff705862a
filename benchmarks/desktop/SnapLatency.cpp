#include "benchmarks/desktop/SnapLatency.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <random>
#include <sstream>
#include <thread>

#include "benchmarks/desktop/HotKeyDaemon.h"
#include "benchmarks/desktop/OpenboxBinding.h"
#include "benchmarks/support/GeometryWatcher.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::benchmark {

using desktop::Deadline;
using desktop::DesktopError;
using desktop::LumatileProcess;
using desktop::MonitorLayout;
using desktop::PixelRect;
using desktop::TestDesktop;
using desktop::TestWindow;
using desktop::WindowManager;
using desktop::XClient;
namespace Key = desktop::KeyPosition;

namespace {

// Keys that nobody else on this desktop has with Control and Alt.
constexpr std::uint8_t keyZ = 52;
constexpr std::uint8_t keyX = 53;
constexpr std::uint8_t keyV = 55;
constexpr std::uint8_t keyB = 56;
constexpr std::uint8_t keyN = 57;

constexpr PixelRect start{300, 200, 800, 600};

struct Contestant {
    std::string name;
    std::uint8_t key;
    std::vector<double> samples = {};
};

// The private desktop with all contestants on it.
class Course {
public:
    Course()
        : desktop_(MonitorLayout::landscape(), WindowManager::Kind::openbox),
          window_(desktop_.openWindow({})),
          watcher_(desktop_.display(), window_->id()),
          target_(leftHalf()),
          lumatile_(desktop_.session(), LUMATILE_PROGRAM),
          messenger_(desktop_.session().start(messengerCommand(), "bare_messenger")),
          daemon_(desktop_.session(), shortcuts()) {
        bindLeftHalf(desktop_.session(), desktop_.observer(), "C-A-z");
    }

    /// Presses the contestant's key until it works for the first time, and checks that it leads to
    /// the very place that everybody's leads to.
    void warmUp(const Contestant& contestant) {
        const Deadline deadline = Deadline::usual();
        bool there = false;
        while (!there) {
            if (deadline.isOver()) {
                throw DesktopError(contestant.name + " does not move the window to " +
                                   desktop::toString(target_) + " but to " +
                                   desktop::toString(window_->frame()));
            }
            window_->place(start);
            desktop_.input().press({Key::leftControl, Key::leftAlt}, contestant.key);
            there = XClient::waitUntil([&] { return window_->frame() == target_; },
                                       Deadline::in(std::chrono::milliseconds(500)));
        }
        const GeometryWatcher::Place place = watcher_.place();
        if (place_ && place != *place_) {
            throw DesktopError(contestant.name + " lays the window otherwise than the others");
        }
        place_ = place;
    }

    void run(Contestant& contestant) {
        window_->place(start);
        // So that no press runs into the tail of the one before: programs that end, answers that
        // are still read. Of random length, so that nobody's timers fall into step.
        std::this_thread::sleep_for(std::chrono::milliseconds(pause_(random_)));
        desktop::InputDriver& input = desktop_.input();
        input.keyDown(Key::leftControl);
        input.keyDown(Key::leftAlt);
        const std::optional<double> time = watcher_.press(contestant.key, place_.value());
        input.keyUp(contestant.key);
        input.keyUp(Key::leftAlt);
        input.keyUp(Key::leftControl);
        if (!time) {
            throw DesktopError(contestant.name + " did not move the window");
        }
        contestant.samples.push_back(*time);
    }

private:
    PixelRect leftHalf() {
        const PixelRect monitor = desktop_.server().layout().primaryMonitor();
        return {monitor.x, monitor.y, monitor.width / 2, monitor.height};
    }

    struct Inside {
        int width;
        int height;
    };

    // Of the window where its frame fills the target.
    Inside insideTarget() {
        const std::vector<std::uint32_t> extents =
            window_->cardinals(window_->id(), "_NET_FRAME_EXTENTS");
        if (extents.size() != 4) {
            throw DesktopError("the window has no frame extents");
        }
        return {target_.width - static_cast<int>(extents[0] + extents[1]),
                target_.height - static_cast<int>(extents[2] + extents[3])};
    }

    std::vector<std::string> messengerCommand() {
        const Inside inside = insideTarget();
        return {BARE_MESSENGER,
                std::to_string(keyN),
                std::to_string(window_->id()),
                std::to_string(target_.x),
                std::to_string(target_.y),
                std::to_string(inside.width),
                std::to_string(inside.height)};
    }

    // The shortest commands that do it, sizes worked out beforehand, and the shortest script that
    // works out the half of whatever screen there is. Sizes are the client's; the corner is the
    // frame's.
    std::vector<HotKeyDaemon::Shortcut> shortcuts() {
        const Inside inside = insideTarget();
        const int frameWidth = target_.width - inside.width;
        const int frameHeight = target_.height - inside.height;
        std::ostringstream wmctrl;
        wmctrl << "wmctrl -r :ACTIVE: -e 0,0,0," << inside.width << ',' << inside.height;
        std::ostringstream xdotool;
        xdotool << "xdotool getactivewindow windowmove 0 0 windowsize " << inside.width << ' '
                << inside.height;
        std::ostringstream script;
        script << "#!/bin/sh\nset -- $(xdotool getdisplaygeometry)\n"
               << "wmctrl -r :ACTIVE: -e 0,0,0,$(($1 / 2 - " << frameWidth << ")),$(($2 - "
               << frameHeight << "))\n";
        const std::filesystem::path file = folder_.write("left-half", script.str());
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        return {{"ctrl + alt + x", wmctrl.str()},
                {"ctrl + alt + v", xdotool.str()},
                {"ctrl + alt + b", file.string()}};
    }

    TemporaryFolder folder_;
    TestDesktop desktop_;
    std::unique_ptr<TestWindow> window_;
    GeometryWatcher watcher_;
    PixelRect target_;
    LumatileProcess lumatile_;
    desktop::ChildProcess messenger_;
    HotKeyDaemon daemon_;
    std::optional<GeometryWatcher::Place> place_;
    std::mt19937 random_{1};
    std::uniform_int_distribution<int> pause_{20, 40};
};

}  // namespace

SnapLatency SnapLatency::measure(int rounds) {
    std::array<Contestant, 6> contestants{{{"Lumatile", Key::left},
                                           {"openbox key binding", keyZ},
                                           {"a bare message to openbox", keyN},
                                           {"sxhkd starts wmctrl", keyX},
                                           {"sxhkd starts xdotool", keyV},
                                           {"sxhkd starts a script", keyB}}};
    Course course;
    for (const Contestant& contestant : contestants) {
        course.warmUp(contestant);
    }
    for (int round = 0; round < rounds; ++round) {
        // Everybody comes after everybody else equally often.
        for (std::size_t turn = 0; turn < contestants.size(); ++turn) {
            course.run(contestants[(turn + static_cast<std::size_t>(round)) % contestants.size()]);
        }
        if ((round + 1) % 25 == 0) {
            std::fprintf(stderr, "key presses: %d of %d rounds\n", round + 1, rounds);
        }
    }
    std::vector<SnapMethod> methods;
    methods.reserve(contestants.size());
    for (const Contestant& contestant : contestants) {
        methods.push_back({contestant.name, Statistics::of(contestant.samples)});
    }
    return {methods[0], methods[1], methods[2], {methods.begin() + 3, methods.end()}};
}

}  // namespace lumatile::benchmark
