#include <QCoreApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include "platform/freedesktop/bus/BusConnection.h"
#include "tests/desktop/support/Deadline.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::desktop {
namespace {

TEST(ToolkitRunLoop, servesTheAnswersOfTheBus) {
    int argc = 0;
    const QCoreApplication application(argc, nullptr);
    PrivateSession session(":none");
    BusConnection bus(session.environment().at("DBUS_SESSION_BUS_ADDRESS"));
    bool hasAnswered = false;
    bus.call({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetId"},
             nullptr, 15000, false, [&](const BusConnection::Reply& reply) {
                 hasAnswered = reply.value != nullptr;
                 QCoreApplication::quit();
             });
    QTimer::singleShot(Deadline::usual().milliseconds(60000), [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
    EXPECT_TRUE(hasAnswered);
}

}  // namespace
}  // namespace lumatile::desktop
