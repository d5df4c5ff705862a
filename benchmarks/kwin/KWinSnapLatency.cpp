#include "benchmarks/kwin/KWinSnapLatency.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/KeyPosition.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/kwin/KWinDesktop.h"
#include "tests/desktop/support/kwin/SessionWait.h"

namespace lumatile::benchmark {

using desktop::Deadline;
using desktop::DesktopError;
using desktop::KWinDesktop;
using desktop::LumatileProcess;
using desktop::NativeWindow;
using desktop::waitInSession;
namespace Key = desktop::KeyPosition;

namespace {

using Clock = std::chrono::steady_clock;

const Rect start{300, 200, 800, 600};
const Rect leftHalf{0, 0, 960, 1080};

struct Contestant {
    std::string name;
    std::vector<std::uint8_t> modifiers;
    std::vector<double> samples = {};
};

class Course {
public:
    Course() : window_(desktop_.openWindow({})), lumatile_(desktop_.session(), LUMATILE_PROGRAM) {}

    /// Presses the contestant's key until it works for the first time.
    void warmUp(const Contestant& contestant) {
        constexpr int mostPresses = 20;
        for (int press = 0; press < mostPresses; ++press) {
            begin();
            desktop_.input().press(contestant.modifiers, Key::left);
            if (waitInSession([this] { return window_->frame() == leftHalf; },
                              Deadline::in(std::chrono::milliseconds(500)))) {
                return;
            }
        }
        throw DesktopError(contestant.name + " does not move the window");
    }

    void run(Contestant& contestant) {
        begin();
        // So that no press runs into the tail of the one before. Of random length, so that nobody's
        // timers fall into step.
        std::this_thread::sleep_for(std::chrono::milliseconds(pause_(random_)));
        desktop_.probe().sync();
        desktop::FakeInput& input = desktop_.input();
        for (const std::uint8_t modifier : contestant.modifiers) {
            input.keyDown(modifier);
        }
        const Clock::time_point pressed = Clock::now();
        input.keyDown(Key::left);
        const bool isThere = waitInSession([this] { return window_->frame() == leftHalf; });
        const Clock::time_point arrived = Clock::now();
        input.keyUp(Key::left);
        for (const std::uint8_t modifier : contestant.modifiers) {
            input.keyUp(modifier);
        }
        if (!isThere) {
            throw DesktopError(contestant.name + " did not move the window");
        }
        contestant.samples.push_back(
            std::chrono::duration<double, std::micro>(arrived - pressed).count());
    }

private:
    /// KWin takes a tile back only as it was laid: by the same command again. A window that has
    /// been moved out of it still counts as tiled for that.
    void begin() {
        desktop_.probe().sync();
        if (window_->state().tiled) {
            desktop_.probe().shortcut("slotWindowQuickTileLeft");
            if (!waitInSession([this] { return !window_->state().tiled; })) {
                throw DesktopError("the window stays tiled");
            }
        }
        window_->place(start);
    }

    KWinDesktop desktop_;
    std::unique_ptr<NativeWindow> window_;
    LumatileProcess lumatile_;
    std::mt19937 random_{1};
    std::uniform_int_distribution<int> pause_{20, 40};
};

}  // namespace

KWinSnapLatency KWinSnapLatency::measure(int rounds) {
    std::array<Contestant, 2> contestants{
        {{"Lumatile", {Key::leftControl, Key::leftAlt}}, {"KWin's quick tile", {Key::leftSuper}}}};
    Course course;
    for (const Contestant& contestant : contestants) {
        course.warmUp(contestant);
    }
    for (int round = 0; round < rounds; ++round) {
        // Everybody comes after the other equally often.
        for (std::size_t turn = 0; turn < contestants.size(); ++turn) {
            course.run(contestants[(turn + static_cast<std::size_t>(round)) % contestants.size()]);
        }
    }
    return {Statistics::of(contestants[0].samples), Statistics::of(contestants[1].samples)};
}

}  // namespace lumatile::benchmark
