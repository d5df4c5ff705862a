// What the panel protection costs beside the window system: one orbit step over many windows, by
// itself and with the whole application on the desktop in memory, and reading the stored settings
// at launch.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Lumatile/ApplicationConductor.h"
#include "oled_protection/OLEDSettingsCodec.h"
#include "oled_protection/OrbitScheduler.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace lumatile {
namespace {

class NumberedHandle final : public ElementHandle {
public:
    explicit NumberedHandle(std::size_t number) : number_(number) {}

    bool equals(const ElementHandle& other) const override { return other.hash() == number_; }
    std::size_t hash() const override { return number_; }

private:
    std::size_t number_;
};

/// A window that goes where it is told, at no cost.
class PlainWindow final : public WindowControlling {
public:
    PlainWindow(std::size_t number, const Rect& frame)
        : key_{std::make_shared<NumberedHandle>(number)}, frame_(frame) {}

    AXElementKey key() const override { return key_; }
    std::optional<Rect> frame() const override { return frame_; }
    void setFrame(const Rect& frame) override { frame_ = frame; }
    void setPosition(const Point& position) override {
        frame_ = {position.x, position.y, frame_.width, frame_.height};
    }
    std::optional<Pid> pid() const override { return 1; }
    bool isWindow() const override { return true; }

private:
    AXElementKey key_;
    Rect frame_;
};

/// One step with orbit and jitter on, the candidates gathered anew as before every step.
void orbitStep(benchmark::State& state) {
    const Rect area{0, 0, 1920, 1080};
    OrbitScheduler orbit({}, JitterPolicy{3, 3600});
    orbit.setBounds([&area](const Rect&) { return area; });
    std::vector<std::shared_ptr<WindowControlling>> windows;
    const auto count = static_cast<std::size_t>(state.range(0));
    for (std::size_t i = 0; i < count; ++i) {
        const auto place = static_cast<double>(i % 500);
        windows.push_back(std::make_shared<PlainWindow>(i, Rect{place, place, 800, 500}));
    }
    double now = 1'700'000'000;
    for (auto _ : state) {
        orbit.sync(windows);
        orbit.step(now);
        now += 1;
    }
    if (orbit.lastShift()->at != now - 1) {
        state.SkipWithError("a step moved nothing");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(orbitStep)->Arg(10)->Arg(100)->Arg(1000);

/// One step of the application, candidates asked for and windows moved, on the desktop in memory,
/// whose own work is the larger part. Ten windows a program.
void desktopStep(benchmark::State& state) {
    constexpr std::int64_t windowsOfProgram = 10;
    constexpr double interval = 5;
    SimulatedDesktop desk;
    desk.plug("main", {0, 0, 1920, 1080});
    desk.preferences.storeOnDisk(OLEDSettings::preferenceKey,
                                 Bytes(R"({"orbitStepInterval":5,"orbitWaitForPause":false,)"
                                       R"("jitterEnabled":false,"idleDimEnabled":false})"));
    ApplicationID program{};
    for (std::int64_t index = 0; index < state.range(0); ++index) {
        if (index % windowsOfProgram == 0) {
            program = desk.launch({.pid = 100 + index});
        }
        const auto place = static_cast<double>(index % 500);
        desk.open(program, Rect{place, place, 800, 500});
    }
    const auto conductor = std::make_shared<ApplicationConductor>(desk.platform());
    conductor->setAccessibilityGranted();
    conductor->startFeatures();
    desk.advance(1.5 * interval);  // The first step meets the windows as well.
    desk.traffic.clear();
    for (auto _ : state) {
        desk.advance(interval);
    }
    const auto moves = static_cast<double>(state.iterations() * state.range(0));
    const auto perMove = [&](AccessKind kind) {
        return static_cast<double>(desk.traffic.count(kind)) / moves;
    };
    state.counters["writesPerWindow"] = perMove(AccessKind::write);
    // The frame before and after, of two attributes each, and what makes a window a candidate.
    state.counters["readsPerWindow"] = perMove(AccessKind::read);
    if (conductor->orbit().trackedCount() != static_cast<std::size_t>(state.range(0)) ||
        perMove(AccessKind::write) != 1) {
        state.SkipWithError("a window was not written once in every step");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(desktopStep)->Arg(10)->Arg(100)->Arg(1000);

void decodeSettings(benchmark::State& state) {
    const std::string text = OLEDSettingsCodec::encode(OLEDSettings::recommended);
    for (auto _ : state) {
        benchmark::DoNotOptimize(OLEDSettingsCodec::decode(text));
    }
}
BENCHMARK(decodeSettings);

}  // namespace
}  // namespace lumatile
