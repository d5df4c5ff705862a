// Windows of real programs, with a compositor where the window manager has one: only then does a
// window that draws its own frame have a shadow.

#include <gtest/gtest.h>

#include "tests/desktop/support/SnapDesktop.h"

namespace lumatile::desktop {
namespace {

struct RealProgram {
    std::vector<std::string> command;
    std::string windowClass;
    bool hasSteps = false;
};

class RealPrograms : public OnEveryWindowManager {
protected:
    static void expectSnaps(SnapDesktop& desktop, const RealProgram& real) {
        SCOPED_TRACE(real.windowClass);
        const auto program = desktop.desktop().openProgram(real.command, real.windowClass);
        for (const std::string_view command : {"left", "bottomRight", "centerThird", "maximize"}) {
            const PixelRect wanted = desktop.expected().area(defaultShortcut(command), 0);
            const auto frame = [&] {
                return outerFrame(desktop.observer(), program.window).value_or(PixelRect{});
            };
            desktop.press(command);
            EXPECT_TRUE(XClient::waitUntil([&] {
                const PixelRect now = frame();
                return real.hasSteps ? now.x == wanted.x && now.y == wanted.y &&
                                           now.width <= wanted.width && now.height <= wanted.height
                                     : now == wanted;
            })) << command
                << ": the window became " << frame() << " instead of " << wanted;
        }
    }
};

const std::vector<RealProgram>& programs() {
    static const std::vector<RealProgram> all{
        {{"xterm", "-e", "exec sleep 1000"}, "XTerm", true},  // States no window type.
        {{"xlogo"}, "XLogo"},                                 // States no process.
        {{LUMATILE_CLIENT_SIDE_WINDOW}, "ClientSideWindow"},
    };
    return all;
}

TEST_P(RealPrograms, snapExactly) {
    SnapDesktop::Setup setup;
    setup.windowManager = GetParam();
    SnapDesktop desktop(setup);
    for (const RealProgram& program : programs()) {
        expectSnaps(desktop, program);
    }
    EXPECT_EQ(desktop.endProgram(), "");
}

TEST_P(RealPrograms, snapExactlyUnderACompositor) {
    SnapDesktop::Setup setup;
    setup.windowManager = GetParam();
    setup.options.compositing = true;
    SnapDesktop desktop(setup);
    for (const RealProgram& program : programs()) {
        expectSnaps(desktop, program);
    }
    EXPECT_EQ(desktop.endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, RealPrograms, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
