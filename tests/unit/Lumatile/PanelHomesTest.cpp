#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "tests/unit/Lumatile/DesktopUnderProtection.h"

namespace lumatile {
namespace {

constexpr std::string_view shiftAndJitter =
    R"({"orbitAmplitude":2,"orbitStepInterval":5,"orbitWaitForPause":false,)"
    R"("jitterTolerance":6,"idleDimEnabled":false})";

TEST(PanelHomes, manyHidesMoveAWindowByNothing) {
    DesktopUnderProtection desk;
    const WindowID window = desk.open(desk.editor, opened);
    desk.open(desk.editor, opened);
    desk.advance(1);
    for (int hide = 0; hide < 2000; ++hide) {
        desk.advance(5 * (1 + hide % 3));
        desk.programs.minimize(window);
        desk.advance(5);
        desk.programs.focus(window);
    }
    const Offset shift = desk.shift(window);
    EXPECT_LE(std::max(std::abs(shift.dx), std::abs(shift.dy)), 1);
    desk.advance(6);
    EXPECT_EQ(desk.home(window), opened);
    desk.conductor->stopFeatures();
    EXPECT_EQ(desk.frame(window), opened);
}

TEST(PanelHomes, aWindowThatCameBackSinceTheLastStepGoesHomeWithTheOthers) {
    for (const bool switchesOff : {false, true}) {
        DesktopUnderProtection desk;
        const WindowID window = desk.open(desk.editor, opened);
        desk.advance(5.5);
        desk.programs.minimize(window);
        desk.advance(20);
        desk.programs.focus(window);
        EXPECT_NE(desk.frame(window), opened);
        if (switchesOff) {
            OLEDSettings settings = desk.conductor->oledSettings();
            settings.orbitEnabled = false;
            desk.conductor->changeOLEDSettings(settings);
        } else {
            desk.conductor->stopFeatures();
        }
        EXPECT_EQ(desk.frame(window), opened);
    }
}

TEST(PanelHomes, aWindowThatIsAwayWhenTheProtectionEndsGetsHomeWithTheNext) {
    DesktopUnderProtection desk;
    const WindowID window = desk.open(desk.editor, opened);
    desk.advance(5.5);
    desk.programs.minimize(window);
    desk.advance(20);
    desk.conductor->stopFeatures();
    desk.programs.focus(window);
    desk.conductor->startFeatures();
    desk.advance(5.5);
    EXPECT_EQ(desk.home(window), opened);
}

TEST(PanelHomes, aWindowThatIsMovedWhileItIsAwayIsAtHomeThere) {
    DesktopUnderProtection desk;
    const WindowID window = desk.open(desk.editor, opened);
    desk.advance(5.5);
    desk.programs.minimize(window);
    desk.advance(20);
    desk.programs.focus(window);
    const Rect moved = desk.frame(window)->offsetBy(2, 0);
    desk.dragTo(window, moved);
    desk.advance(5);
    EXPECT_EQ(desk.home(window), moved);
}

TEST(PanelHomes, homesFollowTheOriginWhetherWindowsStayOrMoveAlong) {
    DesktopUnderProtection desk;
    desk.plugPortrait();
    const WindowID stays = desk.open(desk.editor, opened);
    const WindowID movesAlong = desk.open(desk.editor, opened);
    desk.advance(5.5);
    const Rect along = *desk.frame(movesAlong);
    desk.screens.makePrimary("tall");
    // Some window managers take windows along with what they take for the screen's new place.
    desk.windowManager.moveByHand(movesAlong, desk.screens.toArrangement(along));
    desk.advance(5);
    EXPECT_EQ(desk.home(stays), opened.offsetBy(-1920, 0));
    EXPECT_EQ(desk.home(movesAlong), opened);
    EXPECT_EQ(desk.shift(stays, opened.offsetBy(-1920, 0)), ring[1]) << "no step is lost";
}

TEST(PanelHomes, goneWindowsAreForgottenSomeTime) {
    DesktopUnderProtection desk;
    for (int i = 0; i < 3000; ++i) {
        const WindowID window = desk.open(desk.editor, opened);
        if (i % 100 == 0) {
            desk.advance(5);
        }
        desk.programs.close(window);
    }
    const WindowID window = desk.open(desk.editor, opened);
    desk.advance(11);
    EXPECT_EQ(desk.home(window), opened);
}

/// Somebody who hides windows in every way and brings them back, moving none.
class HidingUser {
public:
    explicit HidingUser(DesktopUnderProtection& desk) : desk_(desk) {
        desk_.plugPortrait();
        programs_ = {desk_.editor, desk_.launch({.pid = 101, .applicationId = "browser"})};
        const int count = *rc::gen::inRange(1, 5);
        for (int i = 0; i < count; ++i) {
            const Rect frame{whole(0, 2400), whole(24, 900), whole(100, 900), whole(100, 700)};
            windows_.push_back({desk_.open(programs_[index(2)], frame), frame, std::nullopt});
        }
        desk_.advance(5.5);
    }

    void act() {
        Window& window = windows_[index(windows_.size())];
        const ApplicationID program = programs_[index(programs_.size())];
        SimulatedWindow& model = desk_.model(window.id);
        switch (*rc::gen::inRange(0, 10)) {
            case 0:
                tell("minimizes or shows");
                model.traits.isMinimized = !model.traits.isMinimized;
                break;
            case 1:
                tell("maximizes or restores");
                cover(window, model.traits.isMaximized, model.traits.isFullScreen);
                break;
            case 2:
                tell("full screen");
                cover(window, model.traits.isFullScreen, model.traits.isMaximized);
                break;
            case 3:
                tell("hides or shows a program");
                desk_.programs.setHidden(program, !desk_.programs.find(program)->isHidden);
                break;
            case 4:
                tell("hangs or recovers");
                desk_.programs.find(program)->isHung = !desk_.programs.find(program)->isHung;
                break;
            case 5:
                tell("unreadable size");
                if (model.faults.unreadable.erase(std::string(AttributeName::size)) == 0) {
                    model.faults.unreadable.emplace(AttributeName::size);
                }
                break;
            case 6:
                tell("primary screen");
                isTallPrimary_ = !isTallPrimary_;
                desk_.screens.makePrimary(isTallPrimary_ ? "tall" : "main");
                desk_.advance(6);  // Homes follow with the next step.
                break;
            case 7:
                hangDuringAStep();
                break;
            case 8:
                tell("another hour");
                desk_.clock.jump(3600);
                break;
            default:
                stopOrStart();
                break;
        }
        desk_.advance(whole(0, 16));
    }

    void look() {
        for (const Window& window : windows_) {
            const Rect frame = arranged(*desk_.frame(window.id));
            const double most = 2 + 6 + 1.5;
            if (!window.uncovered && (std::abs(frame.minX() - window.home.minX()) > most ||
                                      std::abs(frame.maxX() - window.home.maxX()) > most ||
                                      std::abs(frame.minY() - window.home.minY()) > most ||
                                      std::abs(frame.maxY() - window.home.maxY()) > most)) {
                RC_FAIL("away from home");
            }
            if (const std::optional<Rect> home = desk_.home(window.id)) {
                RC_ASSERT(arranged(*home).isWithin(1e-6, window.home));
            }
        }
    }

    /// A step in which everybody takes part; then the protection ends.
    void end() {
        tell("the end");
        for (const ApplicationID program : programs_) {
            if (*rc::gen::arbitrary<bool>()) {
                desk_.programs.setHidden(program, false);
            }
        }
        desk_.conductor->stopFeatures();
        for (const Window& window : windows_) {
            const SimulatedWindow& model = desk_.model(window.id);
            const SimulatedApplication& program = *desk_.programs.find(model.application);
            if (wasRunning_ && desk_.programs.canBeSeen(model) && !program.isHung &&
                !window.uncovered && model.faults.unreadable.empty()) {
                RC_ASSERT(arranged(*desk_.frame(window.id)).isWithin(1e-6, window.home));
            }
        }
    }

    std::string story() const { return story_.str(); }

private:
    struct Window {
        WindowID id{};
        Rect home;                                   ///< In the arrangement.
        std::optional<SimulatedGeometry> uncovered;  ///< To which it returns; absent: it is there.
    };

    static double whole(int from, int to) { return *rc::gen::inRange(from, to); }
    static std::size_t index(std::size_t count) { return *rc::gen::inRange<std::size_t>(0, count); }

    Rect arranged(const Rect& frame) const { return desk_.screens.toArrangement(frame); }

    /// @param isCovering maximized or full screen, the other one while it is not
    void cover(Window& window, bool& isCovering, bool other) {
        if (other) {
            return;
        }
        SimulatedGeometry& geometry = desk_.model(window.id).geometry;
        isCovering = !isCovering;
        if (isCovering) {
            window.uncovered = geometry;
            const Rect all = *desk_.screens.visibleArrangedFrameAt(window.home.origin());
            geometry = {all, all};
        } else {
            geometry = *window.uncovered;
            window.uncovered.reset();
        }
    }

    void hangDuringAStep() {
        const ApplicationID program = programs_[index(programs_.size())];
        if (desk_.programs.find(program)->isHung || desk_.traffic.openOrders() > 0) {
            return;
        }
        tell("hangs during a step");
        desk_.traffic.before(index(60) + 1,
                             [this, program] { desk_.programs.find(program)->isHung = true; });
        desk_.advance(7);
        desk_.programs.find(program)->isHung = false;
    }

    void stopOrStart() {
        tell("stops or starts");
        wasRunning_ = !desk_.conductor->featuresRunning();
        if (wasRunning_) {
            desk_.conductor->startFeatures();
        } else {
            desk_.conductor->stopFeatures();
        }
    }

    void tell(const std::string& what) { story_ << what << "\n"; }

    DesktopUnderProtection& desk_;
    std::vector<ApplicationID> programs_;
    std::vector<Window> windows_;
    bool isTallPrimary_ = false;
    bool wasRunning_ = true;
    std::ostringstream story_;
};

RC_GTEST_PROP(PanelHomes, whateverHidesAndReturnsNoWindowLeavesItsHome, ()) {
    DesktopUnderProtection desk(shiftAndJitter);
    HidingUser user(desk);
    const int acts = *rc::gen::inRange(1, 60);
    for (int act = 0; act < acts; ++act) {
        user.act();
        RC_LOG() << user.story();
        user.look();
    }
    user.end();
}

}  // namespace
}  // namespace lumatile
