// Windows of real programs, also with a compositor where the window manager has one: only then does
// a window that draws its own frame have a shadow.

#include <gtest/gtest.h>

#include <memory>

#include "tests/desktop/support/session/SessionKinds.h"

namespace lumatile::desktop {
namespace {

class RealPrograms : public OnEverySession {
protected:
    static void expectSnaps(SessionDesk& desk, const SessionProgram& real) {
        SCOPED_TRACE(real.name);
        const RunningProgram program = desk.openProgram(real);
        for (const std::string_view command : {"left", "bottomRight", "centerThird", "maximize"}) {
            SCOPED_TRACE(command);
            desk.press(command);
            EXPECT_TRUE(
                desk.reaches(*program.window, desk.expected().area(defaultShortcut(command), 0)));
        }
    }
};

TEST_P(RealPrograms, snapExactly) {
    for (const bool isComposited : GetParam().compositings) {
        SCOPED_TRACE(isComposited ? "composited" : "plain");
        SessionDesk::Setup setup;
        setup.isComposited = isComposited;
        const std::unique_ptr<SessionDesk> desk = GetParam().start(setup);
        for (const SessionProgram& program : GetParam().programs) {
            expectSnaps(*desk, program);
        }
        EXPECT_EQ(desk->endProgram(), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Desktop, RealPrograms, testing::ValuesIn(sessionKinds()), nameOfSession);

}  // namespace
}  // namespace lumatile::desktop
