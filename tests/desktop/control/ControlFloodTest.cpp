// Another program that asks the running one for thousands of things at once.

#include <gtest/gtest.h>

#include <string>

#include "tests/desktop/control/CallFlood.h"
#include "tests/desktop/control/ControlledProgram.h"
#include "tests/desktop/support/DefaultShortcuts.h"
#include "tests/desktop/support/ExpectedFrame.h"

namespace lumatile::desktop {
namespace {

TEST(ControlFlood, tenThousandRequestsLeaveKeysTheirTurnAndTheLastOneIsStored) {
    ControlledProgram controlled;
    ASSERT_NO_FATAL_FAILURE(controlled.start());
    TestDesktop& desktop = controlled.desktop();
    const auto window = desktop.openWindow({});
    const DefaultShortcut& key = defaultShortcut("leftThird");
    const PixelRect place = ExpectedFrame(MonitorLayout::landscape()).area(key, 0);
    ASSERT_NE(window->frame(), place);

    constexpr int times = 10'000;
    CallFlood flood(desktop.session().environment().at("DBUS_SESSION_BUS_ADDRESS"),
                    controlled.name());
    flood.switchEdgeJitter(times);
    flood.awaitAnswer();
    desktop.input().press(key.modifiers(), key.key);
    while (window->frame() != place && flood.answered() < times) {
        flood.listen();
    }
    EXPECT_EQ(window->frame(), place) << "not before the last answer";
    while (flood.answered() < times) {
        flood.awaitAnswer();
    }
    EXPECT_EQ(flood.refused(), 0);
    EXPECT_TRUE(XClient::waitUntil([&] {
        return controlled.stored().find(R"(\"jitterEnabled\":true)") != std::string::npos;
    }));
    EXPECT_EQ(controlled.ask({"protection"}),
              (Outcome{0, "pixelShift\toff\nedgeJitter\ton\nidleDimming\toff\n"}));
    EXPECT_TRUE(LumatileProcess::isClean(controlled.program().stop()));
}

}  // namespace
}  // namespace lumatile::desktop
