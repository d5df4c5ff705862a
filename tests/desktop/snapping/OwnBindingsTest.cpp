// Window managers that have their own use for some of the combinations keep them; every other
// shortcut works beside them.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/desktop/support/SnapDesktop.h"

namespace lumatile::desktop {
namespace {

// What each takes by default, of the combinations that the program wants.
std::set<std::string_view> taken(WindowManager::Kind kind) {
    switch (kind) {
        case WindowManager::Kind::openbox:
        case WindowManager::Kind::metacity:
            return {"left", "right", "top", "bottom"};
        case WindowManager::Kind::xfwm4:
            return {"left", "right", "top", "bottom", "leftThird"};
        case WindowManager::Kind::kwin:
            return {};
    }
    return {};
}

class OwnBindings : public OnEveryWindowManager {};

TEST_P(OwnBindings, refusedCombinationsDoNothingAndAllOthersWork) {
    SnapDesktop::Setup setup;
    setup.windowManager = GetParam();
    setup.options.ownBindings = true;
    SnapDesktop desktop(setup);
    const auto window = desktop.desktop().openWindow({});
    const PixelRect free{201, 103, 600, 450};
    const std::set<std::string_view> refused = taken(GetParam());
    for (const DefaultShortcut& shortcut : defaultShortcuts()) {
        if (shortcut.kind != DefaultShortcut::Kind::area) {
            continue;
        }
        SCOPED_TRACE(std::string(shortcut.command));
        ASSERT_TRUE(desktop.settle(*window));
        window->place(free);
        desktop.observer().forget();
        desktop.press(shortcut);
        if (!refused.contains(shortcut.command)) {
            EXPECT_TRUE(reaches(*window, desktop.expected().area(shortcut, 0)));
            continue;
        }
        // The window manager may have gone to another workspace.
        desktop.observer().ask(desktop.observer().root(), "_NET_CURRENT_DESKTOP", {0, 0});
        window->activate();
        ASSERT_TRUE(desktop.settle(*window));
        EXPECT_EQ(window->frame(), free);
        EXPECT_EQ(desktop.observer().messages(window->id(), "_NET_MOVERESIZE_WINDOW").size(), 0U);
    }
    EXPECT_EQ(desktop.endProgram(), "");
}

TEST_P(OwnBindings, refusedCombinationsAreNamedInOneLine) {
    SnapDesktop::Setup setup;
    setup.windowManager = GetParam();
    setup.options.ownBindings = true;
    SnapDesktop desktop(setup);
    const std::string output = desktop.program().output();
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), taken(GetParam()).empty() ? 0 : 1)
        << output;
    if (!taken(GetParam()).empty()) {
        EXPECT_NE(output.find("Left"), std::string::npos) << output;
    }
}

INSTANTIATE_TEST_SUITE_P(Desktop, OwnBindings, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
