#include "platform/freedesktop/tiling/XfconfTiling.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

#include "onboarding/SystemTiling.h"
#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/MainLoop.h"
#include "tests/desktop/support/MockService.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::desktop {
namespace {

/// Xfce's own settings service on a bus of its own, which starts it for the first who asks for
/// that.
class XfconfTilingTest : public testing::Test {
protected:
    /// As a user does it, which starts the service; waits for the program's end.
    void set(const std::string& type, const std::string& value) {
        ChildProcess query = session.start({"xfconf-query", "-c", "xfwm4", "-p",
                                            "/general/tile_on_move", "-n", "-t", type, "-s", value},
                                           "xfconf-query");
        EXPECT_EQ(query.wait(Deadline::usual()), (ChildProcess::Exit{0, 0}));
    }

    std::optional<bool> edge() { return tiling->lookup(SystemTiling::edgeDragKey); }
    std::optional<bool> top() { return tiling->lookup(SystemTiling::menuBarDragKey); }

    PrivateSession session{":none"};
    BusConnection bus{session.environment().at("DBUS_SESSION_BUS_ADDRESS")};
    std::unique_ptr<XfconfTiling> tiling;
};

TEST_F(XfconfTilingTest, aPropertyThatIsNotSetIsAbsent) {
    set("bool", "true");
    ChildProcess reset = session.start(
        {"xfconf-query", "-c", "xfwm4", "-p", "/general/tile_on_move", "-r"}, "reset");
    reset.wait(Deadline::usual());
    tiling = std::make_unique<XfconfTiling>(bus);
    ASSERT_TRUE(runUntil([&] { return tiling->canSwitchOff(); }));
    EXPECT_EQ(edge(), std::nullopt);
    EXPECT_EQ(top(), std::nullopt);
}

TEST_F(XfconfTilingTest, oneSwitchAnswersBothKeys) {
    set("bool", "false");
    tiling = std::make_unique<XfconfTiling>(bus);
    EXPECT_TRUE(runUntil([&] { return edge() == false && top() == false; }));
    EXPECT_EQ(tiling->lookup("SomethingElse"), std::nullopt);
}

TEST_F(XfconfTilingTest, aChangeIsSeenWithoutAsking) {
    set("bool", "true");
    tiling = std::make_unique<XfconfTiling>(bus);
    ASSERT_TRUE(runUntil([&] { return edge() == true; }));
    set("bool", "false");
    EXPECT_TRUE(runUntil([&] { return edge() == false; }));
}

TEST_F(XfconfTilingTest, aValueOfAnotherTypeIsAbsent) {
    set("string", "false");
    tiling = std::make_unique<XfconfTiling>(bus);
    ASSERT_TRUE(runUntil([&] { return tiling->canSwitchOff(); }));
    EXPECT_EQ(edge(), std::nullopt);
}

TEST_F(XfconfTilingTest, switchedOffItIsOffInTheSettings) {
    set("bool", "true");
    tiling = std::make_unique<XfconfTiling>(bus);
    ASSERT_TRUE(runUntil([&] { return edge() == true; }));
    EXPECT_TRUE(tiling->switchOff());
    ASSERT_TRUE(runUntil([&] { return edge() == false; }));
    ChildProcess query =
        session.start({"xfconf-query", "-c", "xfwm4", "-p", "/general/tile_on_move"}, "read-back");
    query.wait(Deadline::usual());
    EXPECT_EQ(session.output("read-back"), "false\n");
}

TEST_F(XfconfTilingTest, withoutTheServiceNothingIsKnownAndNothingStarted) {
    tiling = std::make_unique<XfconfTiling>(bus);
    int answered = 0;
    EXPECT_EQ(edge(), std::nullopt);
    // A question of our own behind it: once that is answered, so is the other.
    bus.call({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ListNames"},
             nullptr, 15000, false, [&](const BusConnection::Reply& reply) {
                 ++answered;
                 ASSERT_NE(reply.value, nullptr);
                 char* names = g_variant_print(reply.value, FALSE);
                 EXPECT_EQ(std::string(names).find("org.xfce"), std::string::npos) << names;
                 g_free(names);
             });
    ASSERT_TRUE(runUntil([&] { return answered == 1; }));
    EXPECT_EQ(edge(), std::nullopt);
    EXPECT_FALSE(tiling->canSwitchOff());
    EXPECT_FALSE(tiling->switchOff());
}

TEST_F(XfconfTilingTest, withoutABusNothingIsKnown) {
    BusConnection none{""};
    XfconfTiling without(none);
    runReady();
    EXPECT_EQ(without.lookup(SystemTiling::edgeDragKey), std::nullopt);
    EXPECT_FALSE(without.switchOff());
    runReady();
}

TEST_F(XfconfTilingTest, theLastValueHoldsWhenTheServiceHasGone) {
    set("bool", "false");
    tiling = std::make_unique<XfconfTiling>(bus);
    ASSERT_TRUE(runUntil([&] { return edge() == false; }));
    session.endProgram("xfconfd");
    EXPECT_TRUE(runUntil([&] {
        const auto value = edge();
        EXPECT_EQ(value, false);
        return !tiling->canSwitchOff();
    }));
    EXPECT_EQ(edge(), false);
}

TEST_F(XfconfTilingTest, anAnswerAfterItsEndIsDropped) {
    int held = 0;
    GDBusMethodInvocation* waiting = nullptr;
    MockService mock(session.environment().at("DBUS_SESSION_BUS_ADDRESS"), "org.xfce.Xfconf",
                     [&](const MockService::Call& call) {
                         ++held;
                         waiting = call.invocation;
                     });
    mock.offer("/org/xfce/Xfconf",
               "<node><interface name='org.xfce.Xfconf'><method name='GetProperty'>"
               "<arg type='s' direction='in'/><arg type='s' direction='in'/>"
               "<arg type='v' direction='out'/></method></interface></node>");
    tiling = std::make_unique<XfconfTiling>(bus);
    ASSERT_TRUE(runUntil([&] { return held == 1; }));
    tiling.reset();
    g_dbus_method_invocation_return_value(waiting,
                                          g_variant_new("(v)", g_variant_new_boolean(TRUE)));
    int answered = 0;
    bus.call({"org.xfce.Xfconf", "/", "org.freedesktop.DBus.Peer", "Ping"}, nullptr, 5000, false,
             [&](const BusConnection::Reply&) { ++answered; });
    EXPECT_TRUE(runUntil([&] { return answered == 1; }));
}

}  // namespace
}  // namespace lumatile::desktop
