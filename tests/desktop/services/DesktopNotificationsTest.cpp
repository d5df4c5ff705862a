#include "platform/freedesktop/bus/DesktopNotifications.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/desktop/support/MainLoop.h"
#include "tests/desktop/support/MockService.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::desktop {
namespace {

constexpr const char* path = "/org/freedesktop/Notifications";
constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* xml =
    "<node><interface name='org.freedesktop.Notifications'><method name='Notify'>"
    "<arg type='s' direction='in'/><arg type='u' direction='in'/><arg type='s' direction='in'/>"
    "<arg type='s' direction='in'/><arg type='s' direction='in'/><arg type='as' direction='in'/>"
    "<arg type='a{sv}' direction='in'/><arg type='i' direction='in'/>"
    "<arg type='u' direction='out'/></method></interface></node>";

struct Shown {
    guint replaces = 0;
    std::string title;
    std::string text;
    std::vector<std::string> actions;
};

/// A notification service on a bus of its own.
class DesktopNotificationsTest : public testing::Test {
protected:
    void startService() {
        mock = std::make_unique<MockService>(
            session.environment().at("DBUS_SESSION_BUS_ADDRESS"), service,
            [this](const MockService::Call& call) {
                const char* title = nullptr;
                const char* text = nullptr;
                GVariantIter* actions = nullptr;
                Shown notice;
                g_variant_get(call.arguments, "(&su&s&s&sasa{sv}i)", nullptr, &notice.replaces,
                              nullptr, &title, &text, &actions, nullptr, nullptr);
                notice.title = title;
                notice.text = text;
                const char* action = nullptr;
                while (g_variant_iter_next(actions, "&s", &action) != 0) {
                    notice.actions.emplace_back(action);
                }
                g_variant_iter_free(actions);
                shown.push_back(notice);
                call.answer(
                    g_variant_new("(u)", notice.replaces == 0 ? ++number : notice.replaces));
            });
        mock->offer(path, xml);
    }

    void act(guint of, const char* key) {
        mock->emit(path, service, "ActionInvoked", g_variant_new("(us)", of, key));
    }

    /// Shows a notice and waits until the service's number of it has arrived.
    void show(const Notice& notice) {
        const std::size_t before = shown.size();
        notifications.show(notice, [this] { ++chosen; });
        ASSERT_TRUE(runUntil([&] { return shown.size() > before; }));
        roundTrip();
    }

    /// Everything that the service, or the bus where there is none, sent before has been handled
    /// afterwards.
    void roundTrip() {
        bool answered = false;
        const char* asked = mock ? service : "org.freedesktop.DBus";
        bus.call({asked, "/org/freedesktop/DBus", "org.freedesktop.DBus.Peer", "Ping"}, nullptr,
                 5000, false, [&](const BusConnection::Reply&) { answered = true; });
        ASSERT_TRUE(runUntil([&] { return answered; }));
        runReady();
    }

    PrivateSession session{":none"};
    std::unique_ptr<MockService> mock;
    std::vector<Shown> shown;
    guint number = 40;
    int chosen = 0;
    BusConnection bus{session.environment().at("DBUS_SESSION_BUS_ADDRESS")};
    DesktopNotifications notifications{bus};
};

TEST_F(DesktopNotificationsTest, showsTextsAndTheAction) {
    startService();
    show({"An update", "Version 2 <b> & more", "Show Updates"});
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(shown[0].title, "An update");
    EXPECT_EQ(shown[0].text, "Version 2 &lt;b&gt; &amp; more");
    EXPECT_THAT(shown[0].actions, testing::ElementsAre("act", "Show Updates"));
    EXPECT_EQ(shown[0].replaces, 0U);
}

TEST_F(DesktopNotificationsTest, withoutAnActionThereIsNoButton) {
    startService();
    show({"Title", "Text", ""});
    EXPECT_THAT(shown[0].actions, testing::IsEmpty());
}

TEST_F(DesktopNotificationsTest, theActionIsToldOnce) {
    startService();
    show({"Title", "Text", "Do It"});
    act(41, "act");
    ASSERT_TRUE(runUntil([&] { return chosen == 1; }));
    act(41, "act");
    roundTrip();
    EXPECT_EQ(chosen, 1);
}

TEST_F(DesktopNotificationsTest, otherNotificationsAndOtherActionsAreNotOurs) {
    startService();
    show({"Title", "Text", "Do It"});
    act(7, "act");
    act(0, "act");
    act(41, "dismiss");
    mock->emit(path, service, "ActionInvoked", g_variant_new("(s)", "act"));
    act(41, "act");
    ASSERT_TRUE(runUntil([&] { return chosen > 0; }));
    EXPECT_EQ(chosen, 1);
}

TEST_F(DesktopNotificationsTest, aSecondOneTakesThePlaceOfTheFirst) {
    startService();
    show({"First", "Text", "Do It"});
    show({"Second", "Text", "Do It"});
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(shown[1].replaces, 41U);
}

TEST_F(DesktopNotificationsTest, aDesktopWithoutTheServiceShowsNothing) {
    notifications.show({"Title", "Text", "Do It"}, [this] { ++chosen; });
    roundTrip();
    startService();
    show({"Later", "Text", "Do It"});
    EXPECT_EQ(shown.size(), 1U);
    act(41, "act");
    EXPECT_TRUE(runUntil([&] { return chosen == 1; }));
}

TEST_F(DesktopNotificationsTest, whatComesAfterItsEndIsDropped) {
    startService();
    {
        DesktopNotifications gone(bus);
        gone.show({"Title", "Text", "Do It"}, [this] { ++chosen; });
    }
    ASSERT_TRUE(runUntil([&] { return shown.size() == 1; }));
    act(41, "act");
    roundTrip();
    EXPECT_EQ(chosen, 0);
}

}  // namespace
}  // namespace lumatile::desktop
