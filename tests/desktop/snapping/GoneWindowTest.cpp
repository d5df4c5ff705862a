// Windows that go away while the program is about to snap them, on every session.

#include <gtest/gtest.h>

#include <memory>

#include "tests/desktop/support/session/SessionKinds.h"

namespace lumatile::desktop {
namespace {

class GoneWindow : public OnEverySession {};

TEST_P(GoneWindow, isNoTrouble) {
    const std::unique_ptr<SessionDesk> desk = GetParam().start({});
    // Of every kind: some close within the snap, others before it.
    for (const std::string& kind : GetParam().windowKinds) {
        for (int round = 0; round < 6; ++round) {
            // Not placed: the shortcut that was meant for the one before may reach it.
            const auto doomed = desk->open(kind, {200, 150, 640, 400});
            desk->press("left");
        }
    }
    const auto window = desk->open(GetParam().windowKinds.front(), {200, 150, 640, 400});
    ASSERT_TRUE(desk->settle(*window));
    desk->press("right");
    EXPECT_TRUE(desk->reaches(*window, desk->expected().area(defaultShortcut("right"), 0)));
    EXPECT_EQ(desk->endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, GoneWindow, testing::ValuesIn(sessionKinds()), nameOfSession);

}  // namespace
}  // namespace lumatile::desktop
