// A snapped window goes from where it was to where it will be, and is nowhere else on the way; on
// every session.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/desktop/support/OuterRectangles.h"
#include "tests/desktop/support/session/SharedDesk.h"

namespace lumatile::desktop {
namespace {

constexpr PixelRect usual{210, 160, 700, 450};

class OneChange : public OnSharedSession {
protected:
    using Command = std::function<void(std::string_view)>;

    void press(std::string_view command) { desk().press(command); }

    /// The same by the program that asks for things over the bus, as the menu's items do it inside.
    void ask(std::string_view command) {
        const std::vector<std::string> words{LUMATILECTL_PROGRAM, "run",
                                             "command." + std::string(command)};
        // The program can be asked a moment after its shortcuts work.
        ASSERT_TRUE(desk().waitUntil([&] {
            ChildProcess asking = desk().session().start(words, "asking");
            const auto exit = asking.wait(Deadline::usual());
            return exit && exit->status == 0;
        }));
    }

    PixelRect area(std::string_view command) {
        return desk().expected().area(defaultShortcut(command), 0);
    }

    /// @param window the active one
    void expectOneChangeEach(SessionWindow& window, const Command& run) {
        window.place(usual);
        for (const std::string_view command :
             // metacity makes a window without a frame full-screen that covers the screen.
             {"left", "bottomRight", "centerThird", "center", "restore", "maximize"}) {
            SCOPED_TRACE(command);
            if (command == "center" || command == "restore") {
                window.place(usual);
            }
            const PixelRect before = window.frame();
            const PixelRect wanted = command == "center"    ? desk().expected().centered(before, 0)
                                     : command == "restore" ? before
                                                            : area(command);
            if (command == "restore") {
                run("left");
                ASSERT_TRUE(settles(window, area("left")));
            }
            desk().forget();
            window.forgetFrames();
            ASSERT_NO_FATAL_FAILURE(run(command));
            ASSERT_TRUE(settles(window, wanted));
            EXPECT_EQ(window.frames().size(), 2U) << toString(window.frames());
            EXPECT_LE(window.sizes().size(), 2U) << toString(window.sizes());
            EXPECT_EQ(window.timesAsked(), 1U);
            EXPECT_THAT(window.otherThanPlaces(), testing::IsEmpty());
        }
    }

private:
    /// Whether the window is at `wanted` when everything is done.
    testing::AssertionResult settles(SessionWindow& window, const PixelRect& wanted) {
        const testing::AssertionResult arrived = desk().reaches(window, wanted);
        if (!arrived) {
            return arrived;
        }
        if (!desk().settle(window)) {
            return testing::AssertionFailure() << "the program does not answer";
        }
        return desk().reaches(window, wanted);
    }
};

TEST_P(OneChange, ofEveryKindOfWindowByKey) {
    for (const std::string& kind : GetParam().windowKinds) {
        SCOPED_TRACE(kind);
        const auto window = desk().open(kind, usual);
        expectOneChangeEach(*window, [this](std::string_view command) { press(command); });
    }
}

TEST_P(OneChange, ofRealProgramsWindows) {
    for (const SessionProgram& program : GetParam().programs) {
        if (program.columnWidth > 1) {
            continue;  // A terminal takes whole steps by itself, after it has been placed.
        }
        SCOPED_TRACE(program.name);
        const RunningProgram running = desk().openProgram(program);
        expectOneChangeEach(*running.window, [this](std::string_view command) { press(command); });
    }
}

TEST_P(OneChange, byAnotherProgramsWish) {
    const auto window = desk().open(GetParam().windowKinds.front(), usual);
    expectOneChangeEach(*window, [this](std::string_view command) { ask(command); });
}

TEST_P(OneChange, noneOfAWindowThatIsThere) {
    for (const std::string& kind : GetParam().windowKinds) {
        SCOPED_TRACE(kind);
        const auto window = desk().open(kind, usual);
        desk().press("rightThird");
        ASSERT_TRUE(desk().reaches(*window, area("rightThird")));
        ASSERT_TRUE(desk().settle(*window));
        desk().forget();
        window->forgetFrames();
        desk().press("rightThird");
        ASSERT_TRUE(desk().settle(*window));
        EXPECT_EQ(window->timesAsked(), 0U);
        EXPECT_EQ(window->frames().size(), 1U) << toString(window->frames());
        EXPECT_TRUE(window->isAt(area("rightThird"))) << window->frame();
    }
}

INSTANTIATE_TEST_SUITE_P(Desktop, OneChange, testing::ValuesIn(sessionKinds()), nameOfSession);

}  // namespace
}  // namespace lumatile::desktop
