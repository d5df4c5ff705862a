#include "platform/x11/X11Workspace.h"

#include <unistd.h>

#include "tests/desktop/x11/X11DesktopTest.h"

namespace lumatile::desktop {
namespace {

class X11WorkspaceOn : public X11DesktopTest {
protected:
    std::optional<RunningApplication> application(Pid pid) {
        adapter().connection->synchronize();
        for (const RunningApplication& running : adapter().workspace.runningApplications()) {
            if (running.pid == pid) {
                return running;
            }
        }
        return std::nullopt;
    }

    std::optional<std::string> identifier(TestWindow& window) {
        window.roundTrip();
        adapter().connection->synchronize();
        const auto front = adapter().workspace.frontmostApplication();
        return front ? front->applicationId : std::nullopt;
    }
};

TEST_P(X11WorkspaceOn, frontmostApplicationOwnsTheActiveWindow) {
    start();
    EXPECT_EQ(adapter().workspace.frontmostApplication(), std::nullopt);
    const auto window = open(Kind::decorated);
    auto front = adapter().workspace.frontmostApplication();
    ASSERT_TRUE(front);
    EXPECT_EQ(front->pid, getpid());
    EXPECT_EQ(front->applicationId, "testwindow");
    EXPECT_TRUE(front->isRegular);
    EXPECT_FALSE(front->isHidden);

    auto program = desktop().openProgram({"xterm", "-class", "FrontTerm"}, "FrontTerm");
    adapter().connection->synchronize();
    front = adapter().workspace.frontmostApplication();
    ASSERT_TRUE(front);
    EXPECT_EQ(front->pid, program.process.pid());
    EXPECT_EQ(front->applicationId, "frontterm");
    EXPECT_EQ(adapter().workspace.runningApplications().size(), 2U);
}

TEST_P(X11WorkspaceOn, theFrontmostOtherApplicationIsTheOneBehindOurs) {
    start();
    EXPECT_EQ(adapter().workspace.frontmostOtherApplication(), std::nullopt);
    auto program = desktop().openProgram({"xterm", "-class", "BehindTerm"}, "BehindTerm");
    const auto window = open(Kind::decorated);
    adapter().connection->synchronize();
    ASSERT_EQ(adapter().workspace.frontmostApplication()->pid, getpid());
    const auto other = adapter().workspace.frontmostOtherApplication();
    ASSERT_TRUE(other);
    EXPECT_EQ(other->pid, program.process.pid());
    program.process.stop();
    EXPECT_TRUE(XClient::waitUntil([&] {
        adapter().connection->synchronize();
        return !adapter().workspace.frontmostOtherApplication();
    }));
}

TEST_P(X11WorkspaceOn, desktopFileNamesTheApplicationBeforeTheClassDoes) {
    start();
    const auto window = open(Kind::decorated);
    const xcb_atom_t utf8 = window->atom("UTF8_STRING");
    EXPECT_EQ(identifier(*window), "testwindow") << "as under Wayland";
    window->setText(window->id(), "_KDE_NET_WM_DESKTOP_FILE", utf8, "org.example.Editor");
    EXPECT_EQ(identifier(*window), "org.example.Editor");
    window->setText(window->id(), "_KDE_NET_WM_DESKTOP_FILE", utf8,
                    "/usr/share/applications/org.example.Viewer.desktop");
    EXPECT_EQ(identifier(*window), "org.example.Viewer");
    window->setText(window->id(), "_GTK_APPLICATION_ID", utf8, "org.example.Writer");
    EXPECT_EQ(identifier(*window), "org.example.Writer");
    for (const std::string& bad : {std::string("\xff\xfe"), std::string("line\nbreak"),
                                   std::string(300, 'a'), std::string()}) {
        window->setText(window->id(), "_GTK_APPLICATION_ID", utf8, bad);
        EXPECT_EQ(identifier(*window), "org.example.Viewer");
    }
}

TEST_P(X11WorkspaceOn, panelsAloneMakeNoRegularApplication) {
    start();
    const auto panel = desktop().openPanel(0, 40);
    auto running = application(getpid());
    ASSERT_TRUE(running);
    EXPECT_FALSE(running->isRegular);
    const auto window = open(Kind::decorated);
    running = application(getpid());
    ASSERT_TRUE(running);
    EXPECT_TRUE(running->isRegular);
}

TEST_P(X11WorkspaceOn, applicationIsHiddenWhenAllItsWindowsAreMinimized) {
    start();
    const auto first = open(Kind::decorated);
    const auto second = open(Kind::decorated);
    constexpr std::uint32_t iconic = 3;
    for (TestWindow* window : {first.get(), second.get()}) {
        EXPECT_FALSE(application(getpid())->isHidden);
        window->ask(window->id(), "WM_CHANGE_STATE", {iconic});
        ASSERT_TRUE(XClient::waitUntil([&] { return window->hasState("_NET_WM_STATE_HIDDEN"); }));
    }
    EXPECT_TRUE(application(getpid())->isHidden);
    first->activate();
    ASSERT_TRUE(XClient::waitUntil([&] { return !first->hasState("_NET_WM_STATE_HIDDEN"); }));
    EXPECT_FALSE(application(getpid())->isHidden);
}

TEST_P(X11WorkspaceOn, applicationIsHiddenWhileTheDesktopIsShown) {
    start();
    const auto window = open(Kind::decorated);
    EXPECT_FALSE(application(getpid())->isHidden);
    const auto show = [&](std::uint32_t on) {
        window->ask(window->root(), "_NET_SHOWING_DESKTOP", {on});
        return XClient::waitUntil(
            [&] { return window->cardinal(window->root(), "_NET_SHOWING_DESKTOP") == on; });
    };
    ASSERT_TRUE(show(1));
    EXPECT_TRUE(application(getpid())->isHidden);
    ASSERT_TRUE(show(0));
    EXPECT_TRUE(XClient::waitUntil([&] { return !application(getpid())->isHidden; }));
}

INSTANTIATE_TEST_SUITE_P(Every, X11WorkspaceOn, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
