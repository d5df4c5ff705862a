// From the press of a key, as the platform reports it, to the rectangle that the window gets: the
// action is found by its id, the command's twin for the screen by its key, then grid and jitter.
// It shall take less than a microsecond, which is nothing beside one round trip to the server.

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "commands/CommandStore.h"
#include "geometry/Grid.h"
#include "geometry/Orientation.h"
#include "hotkeys/HotkeyService.h"
#include "oled_protection/JitterPolicy.h"

namespace lumatile {
namespace {

constexpr Rect landscape{0, 32, 1366, 736};
constexpr Rect portrait{1366, 0, 1080, 1920};
constexpr JitterPolicy jitter{3, 3600};
constexpr double now = 1'700'000'000;

/// A keyboard on which every combination is free.
class FreeKeyboard final : public HotKeyPlatform {
public:
    void installHandler(Handler handler) override { handler_ = std::move(handler); }

    std::optional<HotKeyReference> registerHotKey(std::uint32_t, std::uint32_t,
                                                  HotKeyID id) override {
        return id.id;
    }

    void unregisterHotKey(HotKeyReference) override {}

    void press(std::uint32_t id) { handler_(HotKeyID{HotkeyService::signature, id}); }

private:
    Handler handler_;
};

/// All hot keys of a store, each with an action that works out its target on one screen.
class Bindings {
public:
    Bindings(CommandStore& store, const Rect& visibleFrame) : service_(keyboard_) {
        for (const SnapCommand& command : store.hotkeyBindings()) {
            const auto resolve = [this, &store, visibleFrame, command] {
                const SnapCommand oriented =
                    store.counterpart(command, orientationOf(visibleFrame));
                const Rect target = Grid::rect(oriented.targetArea(), visibleFrame, oriented.axis);
                target_ = jitter.adjust(target, visibleFrame, now);
            };
            const std::uint32_t id = service_.registerHotKey(
                command.shortcut->carbonKeyCode, command.shortcut->carbonModifiers, resolve);
            if (command.nameKey == "command.right") {
                rightHalf_ = id;
            }
        }
    }

    /// The right half: its rectangle has an inner edge and lies apart from the frame's origin.
    Rect pressRightHalf() {
        keyboard_.press(rightHalf_);
        return target_;
    }

private:
    FreeKeyboard keyboard_;
    HotkeyService service_;
    Rect target_;
    std::uint32_t rightHalf_ = 0;
};

/// Measures a press and fails when its target is another one than the cells say.
void measure(benchmark::State& state, CommandStore& store, const Rect& visibleFrame,
             const CellRect& cells) {
    Bindings bindings(store, visibleFrame);
    const Rect expected = jitter.adjust(
        Grid::rect(cells, visibleFrame, orientationOf(visibleFrame)), visibleFrame, now);
    if (bindings.pressRightHalf() != expected) {
        state.SkipWithError("the press gives another rectangle");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(bindings.pressRightHalf());
    }
}

void keyToTargetOnLandscape(benchmark::State& state) {
    CommandStore store;
    measure(state, store, landscape, {12, 0, 12, 12});
}
BENCHMARK(keyToTargetOnLandscape);

/// The command has to be exchanged for its portrait twin.
void keyToTargetOnPortrait(benchmark::State& state) {
    CommandStore store;
    measure(state, store, portrait, {6, 0, 6, 24});
}
BENCHMARK(keyToTargetOnPortrait);

/// With a thousand areas of the user's own behind the built-in commands.
void keyToTargetAmongManyAreas(benchmark::State& state) {
    CommandStore store;
    for (int i = 0; i < 1000; ++i) {
        store.commands.push_back(SnapCommand::custom("Area", 0, 0, 6, 6));
    }
    measure(state, store, portrait, {6, 0, 6, 24});
}
BENCHMARK(keyToTargetAmongManyAreas);

}  // namespace
}  // namespace lumatile
