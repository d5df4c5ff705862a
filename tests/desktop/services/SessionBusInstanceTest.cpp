#include "platform/freedesktop/bus/SessionBusInstance.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "platform/freedesktop/bus/BusConnection.h"
#include "tests/desktop/support/MainLoop.h"
#include "tests/desktop/support/MockService.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::desktop {
namespace {

/// A program on a bus of its own, and another client that asks it.
class SessionBusInstanceTest : public testing::Test {
protected:
    /// @return the bus's name of the error, empty when there was none
    std::string ask(const char* method) {
        const std::string name = SessionBusInstance::nameOn(":7");
        std::optional<std::string> answer;
        client.call({name.c_str(), "/org/lumatile/Lumatile", "org.lumatile.Lumatile", method},
                    nullptr, 5000, false,
                    [&](const BusConnection::Reply& reply) { answer = reply.errorName; });
        EXPECT_TRUE(runUntil([&] { return answer.has_value(); }));
        runReady();
        return answer.value_or("no answer");
    }

    PrivateSession session{":none"};
    std::string address = session.environment().at("DBUS_SESSION_BUS_ADDRESS");
    BusConnection own{address};
    BusConnection client{address};
    int opened = 0;
};

TEST_F(SessionBusInstanceTest, theFirstOpensItsSettingsWhenAsked) {
    SessionBusInstance instance(own, ":7", [this] { ++opened; });
    ASSERT_EQ(instance.claim(), InstanceClaim::first);
    EXPECT_EQ(ask("OpenSettings"), "");
    ASSERT_TRUE(runUntil([&] { return opened == 1; }));
    EXPECT_EQ(ask("Quit"), "org.freedesktop.DBus.Error.UnknownMethod");
    EXPECT_EQ(opened, 1);
}

TEST_F(SessionBusInstanceTest, claimingTwiceIsClaimingOnce) {
    SessionBusInstance instance(own, ":7", [] {});
    EXPECT_EQ(instance.claim(), InstanceClaim::first);
    EXPECT_EQ(instance.claim(), InstanceClaim::first);
}

TEST_F(SessionBusInstanceTest, displaysSideBySideDoNotMeet) {
    SessionBusInstance one(own, ":7", [] {});
    SessionBusInstance other(client, ":8", [] {});
    EXPECT_EQ(one.claim(), InstanceClaim::first);
    EXPECT_EQ(other.claim(), InstanceClaim::first);
}

TEST_F(SessionBusInstanceTest, nobodyIsAnsweredAfterItsEnd) {
    {
        SessionBusInstance instance(own, ":7", [this] { ++opened; });
        ASSERT_EQ(instance.claim(), InstanceClaim::first);
    }
    EXPECT_NE(ask("OpenSettings"), "");
    EXPECT_EQ(opened, 0);
}

TEST_F(SessionBusInstanceTest, aFormerProgramLeavesTheNameToTheNext) {
    {
        BusConnection ended(address);
        SessionBusInstance former(ended, ":7", [] {});
        ASSERT_EQ(former.claim(), InstanceClaim::first);
    }
    SessionBusInstance next(own, ":7", [] {});
    EXPECT_EQ(next.claim(), InstanceClaim::first);
}

TEST(SessionBusInstance, withoutABusThereIsNoPlaceToMeet) {
    for (const char* const address : {"", "disabled:", "unix:path=/nowhere/bus"}) {
        BusConnection none{address};
        EXPECT_EQ(SessionBusInstance(none, ":7", [] {}).claim(), InstanceClaim::unavailable)
            << address;
    }
}

}  // namespace
}  // namespace lumatile::desktop
