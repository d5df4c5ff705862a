// The program started where it runs already.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <algorithm>
#include <filesystem>
#include <string>

#include "platform/freedesktop/bus/RuntimeFolderInstance.h"
#include "platform/freedesktop/bus/SessionBusInstance.h"
#include "tests/desktop/support/EventWait.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::desktop {
namespace {

const QString objectPath = QStringLiteral("/org/lumatile/Lumatile");
const QString interfaceName = QStringLiteral("org.lumatile.Lumatile");

std::string busOf(TestDesktop& desktop) {
    return desktop.session().environment().at("DBUS_SESSION_BUS_ADDRESS");
}

QString nameOf(TestDesktop& desktop) {
    return QString::fromStdString(SessionBusInstance::nameOn(desktop.display()));
}

/// Something on the bus under the program's name.
class OtherInstance final : public QDBusVirtualObject {
public:
    OtherInstance(const std::string& address, const QString& name, bool answers)
        : bus_(QDBusConnection::connectToBus(QString::fromStdString(address), "other")),
          answers_(answers) {
        EXPECT_TRUE(bus_.registerVirtualObject(objectPath, this));
        EXPECT_TRUE(bus_.registerService(name));
    }
    OtherInstance(const OtherInstance&) = delete;
    OtherInstance& operator=(const OtherInstance&) = delete;
    ~OtherInstance() override {
        bus_.unregisterObject(objectPath);
        QDBusConnection::disconnectFromBus("other");
    }

    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        asked.push_back(message.member().toStdString());
        return answers_ && connection.send(message.createReply());
    }

    std::vector<std::string> asked;

private:
    QDBusConnection bus_;
    bool answers_;
};

QDBusMessage ask(TestDesktop& desktop, const QString& interface, const QString& member,
                 const QVariantList& arguments = {}) {
    QDBusConnection bus =
        QDBusConnection::connectToBus(QString::fromStdString(busOf(desktop)), "asker");
    QDBusMessage message =
        QDBusMessage::createMethodCall(nameOf(desktop), objectPath, interface, member);
    message.setArguments(arguments);
    QDBusMessage answer = bus.call(message);
    QDBusConnection::disconnectFromBus("asker");
    return answer;
}

TEST(SecondStart, endsWithStatusZeroAndLeavesTheFirstAlone) {
    TestDesktop desktop(MonitorLayout::landscape());
    LumatileProcess first(desktop.session(), LUMATILE_PROGRAM);
    ChildProcess second = desktop.session().start({LUMATILE_PROGRAM}, "second");
    EXPECT_EQ(second.wait(Deadline::usual()), (ChildProcess::Exit{0, 0}));
    EXPECT_EQ(desktop.session().output("second"), "");
    EXPECT_TRUE(first.isRunning());
    EXPECT_TRUE(LumatileProcess::isClean(first.stop())) << first.output();
    EXPECT_EQ(first.output(), "");
    // The desktop is free again.
    LumatileProcess next(desktop.session(), LUMATILE_PROGRAM);
    EXPECT_TRUE(next.isRunning());
}

TEST(SecondStart, opensTheSettingsOfTheFirst) {
    TestDesktop desktop(MonitorLayout::landscape(), WindowManager::Kind::openbox);
    LumatileProcess first(desktop.session(), LUMATILE_PROGRAM);
    EXPECT_EQ(desktop.observer().windowOfClass("lumatile"), xcb_window_t{XCB_WINDOW_NONE});
    ChildProcess second = desktop.session().start({LUMATILE_PROGRAM}, "second");
    EXPECT_EQ(second.wait(Deadline::usual()), (ChildProcess::Exit{0, 0}));
    EXPECT_TRUE(XClient::waitUntil([&] {
        const xcb_window_t window = desktop.observer().windowOfClass("lumatile");
        return window != XCB_WINDOW_NONE && desktop.observer().activeWindow() == window;
    }));
    EXPECT_TRUE(LumatileProcess::isClean(first.stop())) << first.output();
}

TEST(SecondStart, takesNoOptions) {
    TestDesktop desktop(MonitorLayout::landscape());
    LumatileProcess first(desktop.session(), LUMATILE_PROGRAM);
    // The toolkit would end a program that was given this.
    ChildProcess second =
        desktop.session().start({LUMATILE_PROGRAM, "-platform", "nowhere", "--quit"}, "second");
    EXPECT_EQ(second.wait(Deadline::usual()), (ChildProcess::Exit{0, 0}))
        << desktop.session().output("second");
    EXPECT_TRUE(first.isRunning());
}

TEST(SecondStart, asksTheOneThatRunsToOpenItsSettings) {
    TestDesktop desktop(MonitorLayout::landscape());
    OtherInstance running(busOf(desktop), nameOf(desktop), true);
    ChildProcess program = desktop.session().start({LUMATILE_PROGRAM}, "second");
    ASSERT_TRUE(waitForEvents([&] { return !running.asked.empty(); }));
    EXPECT_EQ(running.asked, std::vector<std::string>{"OpenSettings"});
    EXPECT_EQ(program.wait(Deadline::usual()), (ChildProcess::Exit{0, 0}));
    EXPECT_EQ(desktop.session().output("second"), "");
}

TEST(SecondStart, saysInOneLineThatTheOneThatRunsDoesNotAnswer) {
    TestDesktop desktop(MonitorLayout::landscape());
    OtherInstance running(busOf(desktop), nameOf(desktop), false);
    ChildProcess program = desktop.session().start({LUMATILE_PROGRAM}, "second");
    ASSERT_TRUE(waitForEvents([&] { return !running.asked.empty(); }));
    EXPECT_EQ(program.wait(Deadline::usual()), (ChildProcess::Exit{1, 0}));
    EXPECT_EQ(desktop.session().output("second"),
              "Lumatile: another Lumatile runs on this desktop, but it does not answer\n");
}

TEST(SecondStart, theProgramAnswersWhoeverAsksAndNothingElse) {
    TestDesktop desktop(MonitorLayout::landscape());
    LumatileProcess program(desktop.session(), LUMATILE_PROGRAM);
    EXPECT_EQ(ask(desktop, interfaceName, "OpenSettings").type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(ask(desktop, interfaceName, "OpenSettings", {1}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(ask(desktop, interfaceName, "Quit").type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(ask(desktop, "org.example", "OpenSettings").type(), QDBusMessage::ErrorMessage);
    EXPECT_TRUE(program.isRunning());
    EXPECT_TRUE(LumatileProcess::isClean(program.stop())) << program.output();
}

TEST(SecondStart, anotherDisplayOnTheSameBusHasAProgramOfItsOwn) {
    TestDesktop desktop(MonitorLayout::landscape());
    const PrivateServer other(MonitorLayout::landscape());
    LumatileProcess first(desktop.session(), LUMATILE_PROGRAM);
    LumatileProcess::Settings settings;
    settings.environment = {{"DISPLAY", other.display()}};
    LumatileProcess second(desktop.session(), LUMATILE_PROGRAM, settings);
    EXPECT_TRUE(first.isRunning());
    EXPECT_TRUE(second.isRunning());
}

TEST(SecondStart, findsTheFirstWithoutABusToo) {
    TestDesktop desktop(MonitorLayout::landscape());
    const std::filesystem::path runtime = desktop.session().folder() / "other-run";
    std::filesystem::create_directory(runtime);
    const Environment withoutBus{{"DBUS_SESSION_BUS_ADDRESS", "disabled:"},
                                 {"XDG_RUNTIME_DIR", runtime.string()}};
    {
        // This process stands in for the one that runs.
        setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
        RuntimeFolderInstance running(desktop.display());
        unsetenv("XDG_RUNTIME_DIR");
        ASSERT_EQ(running.claim(), InstanceClaim::first);
        ChildProcess program = desktop.session().start({LUMATILE_PROGRAM}, "second", withoutBus);
        EXPECT_EQ(program.wait(Deadline::usual()), (ChildProcess::Exit{0, 0}))
            << desktop.session().output("second");
        EXPECT_TRUE(running.consume());
    }
    LumatileProcess::Settings settings;
    settings.environment = withoutBus;
    LumatileProcess first(desktop.session(), LUMATILE_PROGRAM, settings);
    ChildProcess third = desktop.session().start({LUMATILE_PROGRAM}, "third", withoutBus);
    EXPECT_EQ(third.wait(Deadline::usual()), (ChildProcess::Exit{0, 0}))
        << desktop.session().output("third");
    EXPECT_TRUE(first.isRunning());
    EXPECT_TRUE(LumatileProcess::isClean(first.stop())) << first.output();
}

/// @return whether another start ends in silence and opens the settings of the one that runs
bool opensTheSettings(TestDesktop& desktop, const Environment& environment = {}) {
    EXPECT_EQ(desktop.observer().windowOfClass("lumatile"), xcb_window_t{XCB_WINDOW_NONE});
    ChildProcess second = desktop.session().start({LUMATILE_PROGRAM}, "second", environment);
    EXPECT_EQ(second.wait(Deadline::usual()), (ChildProcess::Exit{0, 0}));
    EXPECT_EQ(desktop.session().output("second"), "");
    return XClient::waitUntil(
        [&] { return desktop.observer().windowOfClass("lumatile") != XCB_WINDOW_NONE; });
}

TEST(SecondStart, withoutABusFindsAFirstThatHasOne) {
    TestDesktop desktop(MonitorLayout::landscape(), WindowManager::Kind::openbox);
    LumatileProcess first(desktop.session(), LUMATILE_PROGRAM);
    EXPECT_TRUE(opensTheSettings(desktop, {{"DBUS_SESSION_BUS_ADDRESS", "disabled:"}}));
    EXPECT_TRUE(LumatileProcess::isClean(first.stop())) << first.output();
}

TEST(SecondStart, findsTheFirstAfterTheBusHasDied) {
    TestDesktop desktop(MonitorLayout::landscape(), WindowManager::Kind::openbox);
    LumatileProcess first(desktop.session(), LUMATILE_PROGRAM);
    desktop.session().endBus();
    EXPECT_TRUE(opensTheSettings(desktop));
    EXPECT_TRUE(LumatileProcess::isClean(first.stop())) << first.output();
}

TEST(SecondStart, findsTheFirstOnABusThatWasStartedAnew) {
    TestDesktop desktop(MonitorLayout::landscape(), WindowManager::Kind::openbox);
    LumatileProcess first(desktop.session(), LUMATILE_PROGRAM);
    desktop.session().endBus();
    desktop.session().startBus();
    EXPECT_TRUE(opensTheSettings(desktop));
    EXPECT_TRUE(LumatileProcess::isClean(first.stop())) << first.output();
}

}  // namespace
}  // namespace lumatile::desktop
