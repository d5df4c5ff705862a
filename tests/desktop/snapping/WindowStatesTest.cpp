// Windows that are not simply standing there when a shortcut is pressed, on every session.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <memory>

#include "tests/desktop/support/session/SharedDesk.h"

namespace lumatile::desktop {
namespace {

constexpr PixelRect usual{200, 180, 600, 450};

class WindowStates : public OnSharedSession {
protected:
    std::unique_ptr<SessionWindow> open(const std::string& kind) {
        auto window = desk().open(kind, usual);
        window->place(usual);
        return window;
    }
    std::unique_ptr<SessionWindow> open() { return open(GetParam().windowKinds.front()); }

    PixelRect target(std::string_view command) {
        return desk().expected().area(defaultShortcut(command), 0);
    }

    // The state is left first, and the place is exact although the frame changes on the way.
    void expectSnapOutOf(SpecialState state, SessionWindow& window, std::string_view command) {
        SCOPED_TRACE(command);
        window.place(usual);
        window.enter(state);
        desk().press(command);
        // Maximized on both axes it fills the target already, and may stay.
        const bool isThere = command == "maximize" && state == SpecialState::maximized;
        ASSERT_TRUE(desk().waitUntil([&] {
            return window.isAt(target(command)) && (isThere || !window.isIn(state));
        })) << "the window became "
            << window.frame() << " instead of " << target(command);
        ASSERT_TRUE(desk().settle(window));
        EXPECT_TRUE(window.isAt(target(command))) << window.frame();
    }
};

TEST_P(WindowStates, aSnapTakesAWindowOutOfItsState) {
    for (const std::string& kind : GetParam().windowKinds) {
        SCOPED_TRACE(kind);
        for (const SpecialState state : GetParam().leftStates) {
            SCOPED_TRACE(testing::Message() << state);
            // What it becomes by the last command it may keep.
            const auto window = open(kind);
            for (const std::string_view command : {"leftThird", "bottomRight", "maximize"}) {
                ASSERT_NO_FATAL_FAILURE(expectSnapOutOf(state, *window, command));
            }
        }
    }
}

TEST_P(WindowStates, aRolledUpWindowSnaps) {
    for (const std::string& kind : GetParam().rolledUpKinds) {
        SCOPED_TRACE(kind);
        const auto window = open(kind);
        window->enter(SpecialState::shaded);
        desk().press("leftThird");
        ASSERT_TRUE(desk().reaches(*window, target("leftThird")));
        EXPECT_TRUE(desk().waitUntil([&] { return !window->isIn(SpecialState::shaded); }));
    }
}

TEST_P(WindowStates, aFullScreenWindowIsNeverMoved) {
    const PixelRect screen{0, 0, 1920, 1080};
    for (const std::string& kind : GetParam().windowKinds) {
        SCOPED_TRACE(kind);
        const auto window = open(kind);
        window->enter(SpecialState::fullScreen);
        ASSERT_TRUE(desk().reaches(*window, screen));
        desk().forget();
        desk().press("leftThird");
        desk().press("center");
        desk().press("nextDisplay");
        ASSERT_TRUE(desk().settle(*window));
        EXPECT_TRUE(window->isIn(SpecialState::fullScreen));
        EXPECT_TRUE(desk().reaches(*window, screen));
        EXPECT_EQ(window->timesAsked(), 0U);
        EXPECT_THAT(window->otherThanPlaces(), testing::IsEmpty());
    }
}

TEST_P(WindowStates, aMinimizedWindowIsLeftToItself) {
    const auto other = open();
    for (const std::string& kind : GetParam().windowKinds) {
        SCOPED_TRACE(kind);
        const auto window = open(kind);
        window->enter(SpecialState::minimized);
        other->activate();
        other->place(usual);
        desk().forget();
        desk().press("leftThird");
        ASSERT_TRUE(desk().reaches(*other, target("leftThird")));
        ASSERT_TRUE(desk().settle(*other));
        EXPECT_TRUE(window->isIn(SpecialState::minimized));
        EXPECT_EQ(window->timesAsked(), 0U);
        EXPECT_THAT(window->otherThanPlaces(), testing::IsEmpty());
    }
}

TEST_P(WindowStates, aStoppedProgramsWindowSnapsAndDelaysNoOther) {
    for (const SessionProgram& program : GetParam().programs) {
        SCOPED_TRACE(program.name);
        const RunningProgram stopped = desk().openProgram(program);
        stopped.process.signal(SIGSTOP);
        desk().press("topRight");
        if (!program.drawsItsSize) {
            EXPECT_TRUE(desk().reaches(*stopped.window, target("topRight")));
        }
        const auto window = open();
        desk().press("left");
        EXPECT_TRUE(desk().reaches(*window, target("left")));
        stopped.process.signal(SIGCONT);
        EXPECT_TRUE(desk().reaches(*stopped.window, target("topRight")));
    }
}

INSTANTIATE_TEST_SUITE_P(Desktop, WindowStates, testing::ValuesIn(sessionKinds()), nameOfSession);

}  // namespace
}  // namespace lumatile::desktop
