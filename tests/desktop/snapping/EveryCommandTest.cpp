// Every command by its real shortcut, on every session, for every kind of window, on every
// arrangement of screens: what was asked of the window system, and what the window became.

#include <gtest/gtest.h>

#include <memory>
#include <ostream>

#include "tests/desktop/support/KeyPosition.h"
#include "tests/desktop/support/session/SharedDesk.h"

namespace lumatile::desktop {
namespace {

struct Arrangement {
    std::string name;
    MonitorLayout layout;
    std::size_t monitor = 0;  ///< Where the window is.
    std::optional<std::size_t> panel = std::nullopt;
};

const std::vector<Arrangement>& arrangements() {
    static const std::vector<Arrangement> all{
        {"landscape", MonitorLayout::landscape(), 0},
        {"smallLandscape", MonitorLayout::smallLandscape(), 0},
        {"portrait", MonitorLayout::portrait(), 0},
        {"landscapeBesidePortrait", MonitorLayout::landscapeAndPortrait(), 0, 0},
        {"portraitBesideLandscape", MonitorLayout::landscapeAndPortrait(), 1, 0},
        {"primaryAwayFromTheOrigin", MonitorLayout::portraitAndPrimaryLandscape(), 1, 1},
        {"leftOfThePrimary", MonitorLayout::portraitAndPrimaryLandscape(), 0, 1},
        {"scaledBesidePortrait", MonitorLayout::scaledLandscapeAndPortrait(), 0, 0},
        {"portraitBesideScaled", MonitorLayout::scaledLandscapeAndPortrait(), 1, 0},
    };
    return all;
}

class EveryCommand;

/// What holds for every window.
struct Rule {
    const char* name = "";
    void (EveryCommand::*check)() = nullptr;
};

struct Case {
    const SessionKind* session = nullptr;
    const Arrangement* arrangement = nullptr;
    std::string windowKind;
    Rule rule;
};

std::ostream& operator<<(std::ostream& stream, const Case& each) {
    return stream << each.session->name << ", " << each.arrangement->name << ", " << each.windowKind
                  << ", " << each.rule.name;
}

// A desktop serves all kinds of windows and all rules in turn; the next arrangement gets a new one.
class EveryCommand : public testing::TestWithParam<Case> {
public:
    void asksForItsTargetAndGetsIt();
    void centersWithoutResizing();
    void restoresTheFrameBeforeTheLastCommandAndBack();
    void restoreLeavesAWindowThatWasNeverSnapped();
    void movesToTheNeighbouringDisplayAndBack();

protected:
    static void TearDownTestSuite() { shared.drop(); }

    void SetUp() override {
        SessionDesk::Setup setup;
        setup.layout = arrangement().layout;
        setup.panel = arrangement().panel;
        desk_ = &shared.of(*GetParam().session, arrangement().name, setup);
        const PixelRect screen = desk().expected().visible(monitor());
        window_ = desk().open(GetParam().windowKind, {screen.x + 200, screen.y + 150, 640, 400});
        window_->place(free());
    }

    void TearDown() override {
        window_.reset();
        if (HasFailure()) {
            shared.drop();
        }
    }

    SessionDesk& desk() { return *desk_; }
    SessionWindow& window() { return *window_; }
    const Arrangement& arrangement() { return *GetParam().arrangement; }
    std::size_t monitor() { return arrangement().monitor; }

    // Somewhere in the middle of the screen; a size that a stepping window can have exactly.
    PixelRect free() {
        const PixelRect screen = desk().expected().visible(monitor());
        return {screen.x + 101, screen.y + 203, 600, 450};
    }

    PixelRect area(std::string_view command) {
        return desk().expected().area(defaultShortcut(command), monitor());
    }

    // With locks on and off in turn: they must not make a difference.
    void pressWithLocks(const DefaultShortcut& shortcut) {
        ++presses_;
        ASSERT_TRUE(desk().setLock(KeyPosition::capsLock, presses_ % 2 != 0));
        ASSERT_TRUE(desk().setLock(KeyPosition::numLock, presses_ % 4 >= 2));
        desk().press(shortcut);
    }

    void expectSnap(const DefaultShortcut& shortcut, const PixelRect& wanted) {
        SCOPED_TRACE(std::string(shortcut.command));
        const PixelRect before = window().frame();
        ASSERT_FALSE(window().isAt(wanted)) << "nothing to see: it is at " << before;
        desk().forget();
        pressWithLocks(shortcut);
        ASSERT_TRUE(desk().reaches(window(), wanted));
        const std::optional<PixelRect> asked = window().asked(before);
        ASSERT_TRUE(asked.has_value());
        EXPECT_TRUE(window().mayBecome(*asked, wanted))
            << "asked for " << *asked << " instead of " << wanted;
    }

private:
    static inline SharedDesk shared;

    SessionDesk* desk_ = nullptr;
    std::unique_ptr<SessionWindow> window_;
    int presses_ = 0;
};

void EveryCommand::asksForItsTargetAndGetsIt() {
    for (const DefaultShortcut& shortcut : defaultShortcuts()) {
        if (shortcut.kind == DefaultShortcut::Kind::area) {
            expectSnap(shortcut, desk().expected().area(shortcut, monitor()));
            if (HasFatalFailure()) {
                return;
            }
        }
    }
    // Nothing comes after the last target either.
    const PixelRect last = window().frame();
    ASSERT_TRUE(desk().settle(window()));
    EXPECT_EQ(window().frame(), last);
}

void EveryCommand::centersWithoutResizing() {
    const PixelRect before = window().frame();
    const PixelRect wanted = desk().expected().centered(before, monitor());
    desk().forget();
    pressWithLocks(defaultShortcut("center"));
    EXPECT_TRUE(desk().waitUntil([&] { return window().frame() == wanted; })) << window().frame();
    EXPECT_EQ(window().asked(before), wanted);
    ASSERT_TRUE(desk().settle(window()));
    EXPECT_EQ(window().frame(), wanted);
}

void EveryCommand::restoresTheFrameBeforeTheLastCommandAndBack() {
    const PixelRect before = window().frame();
    expectSnap(defaultShortcut("topLeft"), area("topLeft"));
    expectSnap(defaultShortcut("rightThird"), area("rightThird"));
    const PixelRect snapped = window().frame();
    pressWithLocks(defaultShortcut("restore"));
    EXPECT_TRUE(desk().reaches(window(), area("topLeft")));
    const PixelRect earlier = window().frame();
    EXPECT_NE(earlier, before);
    const auto comesTo = [&](const PixelRect& wanted) {
        return desk().waitUntil([&] { return window().frame() == wanted; });
    };
    pressWithLocks(defaultShortcut("restore"));
    EXPECT_TRUE(comesTo(snapped)) << window().frame();
    pressWithLocks(defaultShortcut("restore"));
    EXPECT_TRUE(comesTo(earlier)) << window().frame();
}

void EveryCommand::restoreLeavesAWindowThatWasNeverSnapped() {
    const PixelRect before = window().frame();
    desk().forget();
    pressWithLocks(defaultShortcut("restore"));
    ASSERT_TRUE(desk().settle(window()));
    EXPECT_EQ(window().frame(), before);
    EXPECT_EQ(window().timesAsked(), 0U);
}

void EveryCommand::movesToTheNeighbouringDisplayAndBack() {
    const PixelRect before = window().frame();
    const bool alone = arrangement().layout.monitors.size() < 2;
    const std::size_t other = alone ? monitor() : 1 - monitor();
    const PixelRect there = alone ? before : desk().expected().moved(before, monitor(), other);
    desk().forget();
    pressWithLocks(defaultShortcut("nextDisplay"));
    ASSERT_TRUE(desk().reaches(window(), there));
    ASSERT_TRUE(desk().settle(window()));
    EXPECT_TRUE(window().isAt(there)) << window().frame();
    if (alone) {
        EXPECT_EQ(window().timesAsked(), 0U);
    }
    pressWithLocks(defaultShortcut("previousDisplay"));
    // A window with steps may have lost one on the way.
    ASSERT_TRUE(desk().waitUntil([&] {
        const PixelRect frame = window().frame();
        return window().hasSteps() ? frame.x == before.x && frame.y == before.y : frame == before;
    })) << "the window became "
        << window().frame() << " instead of " << before;
}

std::vector<Case> cases() {
    const std::vector<Rule> rules{
        {"asksForItsTargetAndGetsIt", &EveryCommand::asksForItsTargetAndGetsIt},
        {"centersWithoutResizing", &EveryCommand::centersWithoutResizing},
        {"restoresTheFrameBeforeTheLastCommandAndBack",
         &EveryCommand::restoresTheFrameBeforeTheLastCommandAndBack},
        {"restoreLeavesAWindowThatWasNeverSnapped",
         &EveryCommand::restoreLeavesAWindowThatWasNeverSnapped},
        {"movesToTheNeighbouringDisplayAndBack",
         &EveryCommand::movesToTheNeighbouringDisplayAndBack}};
    std::vector<Case> result;
    for (const SessionKind& session : sessionKinds()) {
        for (const Arrangement& arrangement : arrangements()) {
            if (!session.hasScales && !arrangement.layout.scales.empty()) {
                continue;
            }
            for (const std::string& windowKind : session.windowKinds) {
                for (const Rule& rule : rules) {
                    result.push_back({&session, &arrangement, windowKind, rule});
                }
            }
        }
    }
    return result;
}

TEST_P(EveryCommand, keepsTheRule) { (this->*GetParam().rule.check)(); }

INSTANTIATE_TEST_SUITE_P(Desktop, EveryCommand, testing::ValuesIn(cases()),
                         [](const testing::TestParamInfo<Case>& each) {
                             return each.param.session->name + "_" + each.param.arrangement->name +
                                    "_" + each.param.windowKind + "_" + each.param.rule.name;
                         });

}  // namespace
}  // namespace lumatile::desktop
