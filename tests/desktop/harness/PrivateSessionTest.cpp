#include "tests/desktop/support/PrivateSession.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <memory>

#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {
namespace {

TEST(PrivateSession, givesItsProgramsAHomeAndABusOfTheirOwn) {
    PrivateSession session(":none");
    ChildProcess program = session.start(
        {"sh", "-c", "touch \"$XDG_CONFIG_HOME/seen\"; test -S \"$XDG_RUNTIME_DIR/bus\""}, "probe");
    EXPECT_EQ(program.wait(Deadline::usual()), (ChildProcess::Exit{0, 0}));
    EXPECT_TRUE(std::filesystem::exists(session.configuration() / "seen"));
}

TEST(PrivateSession, leavesNoProcessBehindNotEvenADetachedOne) {
    auto session = std::make_unique<PrivateSession>(":none");
    // The shell ends and its child lives on, as services do that the bus starts.
    ChildProcess program =
        session->start({"sh", "-c", "setsid sleep 1000 & echo $!; echo done"}, "detached");
    program.wait(Deadline::usual());
    const pid_t orphan = std::stoi(session->output("detached"));
    ASSERT_EQ(kill(orphan, 0), 0);
    session.reset();
    EXPECT_NE(kill(orphan, 0), 0);
}

}  // namespace
}  // namespace lumatile::desktop
