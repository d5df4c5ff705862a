// Another window manager takes over while the program runs.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/desktop/support/SnapDesktop.h"

namespace lumatile::desktop {
namespace {

WindowManager::Kind after(WindowManager::Kind kind) {
    const auto* const place =
        std::find(WindowManager::kinds.begin(), WindowManager::kinds.end(), kind);
    const auto* const next = std::next(place);
    return next == WindowManager::kinds.end() ? WindowManager::kinds.front() : *next;
}

class WindowManagerReplaced : public OnEveryWindowManager {
protected:
    static void expectEverythingWorks(SnapDesktop& desktop, TestWindow& window) {
        for (const std::string_view command : {"left", "rightThird", "topRight", "maximize"}) {
            SCOPED_TRACE(std::string(command));
            desktop.press(command);
            EXPECT_TRUE(reaches(window, desktop.expected().area(defaultShortcut(command), 0)));
        }
        ASSERT_TRUE(desktop.settle(window));
        window.place({200, 160, 600, 400});
        desktop.press("center");
        EXPECT_TRUE(reaches(window, desktop.expected().centered({200, 160, 600, 400}, 0)));
        desktop.press("restore");
        EXPECT_TRUE(reaches(window, {200, 160, 600, 400}));
    }
};

TEST_P(WindowManagerReplaced, everythingWorksAgainWithoutRestart) {
    SnapDesktop::Setup setup;
    setup.windowManager = GetParam();
    SnapDesktop desktop(setup);
    const auto window = desktop.desktop().openWindow({});
    expectEverythingWorks(desktop, *window);

    desktop.desktop().windowManager().crash();
    // Shortcuts that come while nobody manages windows are lost, and do no harm.
    desktop.press("left");
    desktop.desktop().startWindowManager(after(GetParam()), {});
    ASSERT_TRUE(XClient::waitUntil([&] { return window->isManaged(); }));
    window->activate();
    expectEverythingWorks(desktop, *window);

    TestWindow::Options options;
    options.kind = TestWindow::Kind::dialog;
    const auto later = desktop.desktop().openWindow(options);
    expectEverythingWorks(desktop, *later);
    EXPECT_TRUE(desktop.desktop().windowManager().isRunning())
        << desktop.desktop().session().output(toString(after(GetParam())));
    EXPECT_EQ(desktop.endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, WindowManagerReplaced, testing::ValuesIn(WindowManager::kinds),
                         nameOf);

}  // namespace
}  // namespace lumatile::desktop
