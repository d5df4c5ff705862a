#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "oled_protection/OrbitScheduler.h"
#include "tests/unit/oled_protection/FakeWindow.h"

namespace lumatile {
namespace {

constexpr Rect area{0, 0, 1920, 1080};

double whole(int from, int to) { return *rc::gen::inRange(from, to); }

Rect arbitraryFrame() {
    return {whole(-100, 1800), whole(-100, 1000), whole(40, 1920), whole(40, 1080)};
}

OrbitConfig arbitraryConfig() {
    return {*rc::gen::inRange<std::int64_t>(0, 21), *rc::gen::inRange<std::int64_t>(0, 7),
            *rc::gen::arbitrary<bool>()};
}

std::optional<JitterPolicy> arbitraryJitter() {
    return *rc::gen::arbitrary<bool>()
               ? std::optional(JitterPolicy{whole(0, 21), *rc::gen::element(10.0, 3600.0)})
               : std::nullopt;
}

/// A desktop on which the user and the protection both move windows. Everything lies on whole
/// pixels, so what must be equal can be compared exactly.
struct Desktop {
    struct Entry {
        std::shared_ptr<FakeWindow> window;
        bool isMovedByUser = false;  ///< Since the orbit last read it.
    };

    Desktop() {
        orbit.setBounds([](const Rect& frame) {
            return area.contains(frame.center()) ? std::optional(area) : std::nullopt;
        });
        const int count = *rc::gen::inRange(1, 5);
        for (int id = 0; id < count; ++id) {
            entries.push_back({std::make_shared<FakeWindow>(id, arbitraryFrame())});
        }
        sync();
    }

    void sync() {
        std::vector<std::shared_ptr<WindowControlling>> windows;
        for (const Entry& entry : entries) {
            windows.push_back(entry.window);
        }
        orbit.sync(windows);
    }

    Entry& anyEntry() { return entries[*rc::gen::inRange<std::size_t>(0, entries.size())]; }

    void userMoves() {
        Entry& entry = anyEntry();
        entry.window->current = entry.window->current.offsetBy(whole(2, 300), whole(-300, 300));
        entry.isMovedByUser = true;
    }

    void snap() {
        Entry& entry = anyEntry();
        const Rect target = arbitraryFrame();
        const std::optional<JitterPolicy> jitter = orbit.jitter();
        entry.window->setFrame(jitter ? jitter->adjust(target, area, now) : target);
        orbit.noteSnapped(entry.window, target);
        entry.isMovedByUser = false;
    }

    bool isActive() const { return orbit.config().enabled || orbit.jitter(); }

    void stepAndCheck() {
        now += whole(1, 8000);
        for (const Entry& entry : entries) {
            entry.window->resetCounts();
        }
        orbit.step(now);
        const double reach =
            (orbit.config().enabled ? static_cast<double>(orbit.config().radiusPx) : 0) +
            (orbit.jitter() ? orbit.jitter()->tolerancePx : 0);
        for (Entry& entry : entries) {
            const FakeWindow& window = *entry.window;
            RC_ASSERT(window.writes() <= 1);
            RC_ASSERT(window.reads <= 1 + window.writes());
            if (!isActive()) {
                RC_ASSERT(window.reads == 0);
                continue;
            }
            const OrbitScheduler::Tracked tracked = orbit.tracked(window.key()).value();
            RC_ASSERT(tracked.lastApplied == window.current);
            if (entry.isMovedByUser) {
                RC_ASSERT(tracked.home == window.current);
                RC_ASSERT(window.writes() == 0);
                entry.isMovedByUser = false;
                continue;
            }
            RC_ASSERT(std::abs(window.current.minX() - tracked.home.minX()) <= reach);
            RC_ASSERT(std::abs(window.current.minY() - tracked.home.minY()) <= reach);
            RC_ASSERT(std::abs(window.current.maxX() - tracked.home.maxX()) <= reach);
            RC_ASSERT(std::abs(window.current.maxY() - tracked.home.maxY()) <= reach);
        }
    }

    /// Whether all windows are where they belong, except for those in the user's hands.
    void checkAtHome() const {
        for (const Entry& entry : entries) {
            if (entry.isMovedByUser) {
                continue;
            }
            const std::optional<OrbitScheduler::Tracked> tracked =
                orbit.tracked(entry.window->key());
            RC_ASSERT(tracked.has_value());
            RC_ASSERT(entry.window->current == tracked->home);
        }
    }

    OrbitScheduler orbit;
    std::vector<Entry> entries;
    double now = 1.7e9;
};

RC_GTEST_PROP(OrbitSchedulerOnADesktop, stepsStayWithinReachAndEverythingComesHome, ()) {
    Desktop desktop;
    const int actions = *rc::gen::inRange(1, 40);
    for (int i = 0; i < actions; ++i) {
        switch (*rc::gen::inRange(0, 9)) {
            case 0:
                desktop.userMoves();
                break;
            case 1:
                desktop.snap();
                break;
            case 2:
                desktop.sync();
                break;
            case 3: {
                const bool wasActive = desktop.isActive();
                desktop.orbit.setConfig(arbitraryConfig());
                if (wasActive && !desktop.isActive()) {
                    desktop.checkAtHome();
                }
                break;
            }
            case 4: {
                const bool wasActive = desktop.isActive();
                desktop.orbit.setJitter(arbitraryJitter());
                if (wasActive && !desktop.isActive()) {
                    desktop.checkAtHome();
                }
                break;
            }
            default:
                desktop.stepAndCheck();
        }
        RC_ASSERT(desktop.orbit.stepIndex() >= 0);
        RC_ASSERT(static_cast<std::size_t>(desktop.orbit.stepIndex()) <
                  desktop.orbit.path().size());
    }
    desktop.orbit.restoreHomes();
    desktop.checkAtHome();
    desktop.orbit.stop();
    RC_ASSERT(desktop.orbit.trackedCount() == 0U);
}

RC_GTEST_PROP(OrbitSchedulerOnADesktop, aWholeRoundEndsWhereItBegan, ()) {
    OrbitScheduler orbit(OrbitConfig{*rc::gen::inRange<std::int64_t>(1, 21),
                                     *rc::gen::inRange<std::int64_t>(1, 7), true});
    const Rect home = arbitraryFrame();
    const auto window = std::make_shared<FakeWindow>(1, home);
    orbit.sync({window});
    orbit.step(0);
    const Rect first = window->current;
    for (std::size_t i = 0; i < orbit.path().size(); ++i) {
        orbit.step(static_cast<double>(i));
    }
    RC_ASSERT(window->current == first);
    RC_ASSERT(window->frameWrites == 0);
}

}  // namespace
}  // namespace lumatile
