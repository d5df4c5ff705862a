// A terminal on the X server of a Plasma session: its program takes whole columns and rows alone,
// and KWin has one work area of all screens for what such a program asks for.

#include <gtest/gtest.h>

#include "tests/desktop/kwin/PlasmaDesk.h"
#include "tests/desktop/support/ExpectedFrame.h"
#include "tests/desktop/support/kwin/ProbedWindow.h"
#include "tests/desktop/support/kwin/WaylandPanel.h"

namespace lumatile::desktop {
namespace {

constexpr int panelHeight = 300;

// Of the terminal's own font, pixels.
constexpr double column = 6;
constexpr double row = 13;

/// The second screen reaches below the panel of the first.
KWinDesktop::Options besideAPortrait() {
    KWinDesktop::Options options;
    options.outputs = {{0, 0}, {1920, 0, 1, true}};
    return options;
}

bool isStepped(double size, double wanted, double step) {
    return size <= wanted && size > wanted - step;
}

TEST(KWinTerminal, takesWholeStepsOfItsTargetOnAScreenThatReachesBelowAPanel) {
    const MonitorLayout layout = MonitorLayout::landscapeAndPortrait();
    PlasmaDesk desk(besideAPortrait());
    const WaylandPanel panel(desk.desktop().server().socket(), "Virtual-0", 1920, panelHeight);
    ExpectedFrame expected(layout);
    expected.reserve(0, panelHeight);
    ChildProcess process = desk.desktop().session().start(
        {"xterm", "-geometry", "70x20+2200+300", "-e", "exec sleep 1000"}, "xterm");
    const auto shown = [&] {
        return desk.probe().find(
            [&](const WindowState& state) { return state.pid == process.pid(); });
    };
    ASSERT_TRUE(waitInSession([&] { return shown().has_value(); }));
    const ProbedWindow terminal(desk.probe(), shown()->id);
    terminal.activate();
    for (const char* command : {"right", "left", "bottomRight", "maximize", "topLeft", "right"}) {
        SCOPED_TRACE(command);
        const PixelRect target = expected.area(defaultShortcut(command), 1);
        desk.press(command);
        EXPECT_TRUE(waitInSession([&] {
            const Rect frame = terminal.frame();
            return frame.x == target.x && frame.y == target.y &&
                   isStepped(frame.width, target.width, column) &&
                   isStepped(frame.height, target.height, row);
        })) << terminal.state()
            << " instead of " << target;
    }
    EXPECT_EQ(desk.endProgram(), "");
}

}  // namespace
}  // namespace lumatile::desktop
