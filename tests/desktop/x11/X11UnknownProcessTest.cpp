#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <string>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/x11/X11DesktopTest.h"

namespace lumatile::desktop {
namespace {

/// A server that listens on a network socket too. It knows no process of a client from there.
class NetworkServer {
public:
    NetworkServer() {
        std::array<int, 2> pipe{};
        if (pipe2(pipe.data(), O_CLOEXEC) != 0) {
            throw DesktopError("no pipe");
        }
        process_ =
            ChildProcess({.command = {"Xvfb", "-displayfd", std::to_string(pipe[1]), "-ac",
                                      "-noreset", "-listen", "tcp", "-screen", "0", "1280x800x24"},
                          .environment = inheritedEnvironment(),
                          .output = {},
                          .keptDescriptor = pipe[1]});
        close(pipe[1]);
        for (char character = 0; read(pipe[0], &character, 1) == 1 && character != '\n';) {
            number_ += character;
        }
        close(pipe[0]);
        if (number_.empty()) {
            throw DesktopError("the server does not start");
        }
    }

    std::string local() const { return ":" + number_; }
    std::string remote() const { return "127.0.0.1:" + number_; }

private:
    ChildProcess process_;
    std::string number_;
};

TEST(X11UnknownProcess, windowIsReachedThroughTheFocusedApplication) {
    const NetworkServer server;
    PrivateSession session(server.local());
    const WindowManager windowManager(session, WindowManager::Kind::openbox);
    X11Adapter adapter(server.local());
    TestWindow::Options options;
    options.statesPid = false;
    TestWindow first(server.remote(), options);
    first.mapActive();
    TestWindow second(server.remote(), options);
    second.mapActive();
    adapter.connection->synchronize();

    EXPECT_EQ(adapter.workspace.frontmostApplication(), std::nullopt);
    EXPECT_TRUE(adapter.workspace.runningApplications().empty());
    const std::shared_ptr<AXWindow> focused = adapter.bridge.focusedWindow();
    ASSERT_TRUE(focused);
    EXPECT_EQ(focused->key(), AXElementKey{adapter.element(second.id())});
    EXPECT_EQ(focused->pid(), std::nullopt);
    focused->setFrame({10, 20, 500, 400});
    EXPECT_EQ(second.frame(), (PixelRect{10, 20, 500, 400}));

    const auto application = AttributeReader::element(
        adapter.platform, adapter.platform.systemWideElement(), AttributeName::focusedApplication);
    ASSERT_TRUE(application);
    EXPECT_EQ(adapter.platform.pid(*application), std::nullopt);
    const auto windows = AttributeReader::value<std::vector<Element>>(
        adapter.platform, *application, AttributeName::windows);
    ASSERT_TRUE(windows);
    // The other window belongs to another client of the server, which may be another program.
    EXPECT_EQ(windows->size(), 1U);

    first.activate();
    adapter.connection->synchronize();
    EXPECT_EQ(adapter.bridge.focusedWindow()->key(), AXElementKey{adapter.element(first.id())});
}

TEST(X11UnknownProcess, whatTheWindowStatesCountsWhereTheServerKnowsNothing) {
    const NetworkServer server;
    PrivateSession session(server.local());
    const WindowManager windowManager(session, WindowManager::Kind::openbox);
    X11Adapter adapter(server.local());
    TestWindow window(server.remote(), {});
    window.setCardinals(window.id(), "_NET_WM_PID", XCB_ATOM_CARDINAL, {4321});
    window.mapActive();
    adapter.connection->synchronize();
    EXPECT_EQ(adapter.window(window.id()).pid(), Pid{4321});
    for (const std::uint32_t bad : {0U, 0x80000000U, 0xffffffffU}) {
        window.setCardinals(window.id(), "_NET_WM_PID", XCB_ATOM_CARDINAL, {bad});
        window.roundTrip();
        adapter.connection->synchronize();
        EXPECT_EQ(adapter.window(window.id()).pid(), std::nullopt);
    }
}

}  // namespace
}  // namespace lumatile::desktop
