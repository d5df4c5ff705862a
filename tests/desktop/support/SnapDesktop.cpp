#include "tests/desktop/support/SnapDesktop.h"

namespace lumatile::desktop {

SnapDesktop::SnapDesktop(const Setup& setup)
    : desktop_(setup.layout, setup.windowManager, setup.options), expected_(setup.layout) {
    panelMonitor_ = setup.panel;
    if (setup.panel) {
        panel_ = desktop_.openPanel(*setup.panel, panelHeight);
        expected_.reserve(*setup.panel, panelHeight);
    }
    program_ =
        std::make_unique<LumatileProcess>(desktop_.session(), LUMATILE_PROGRAM, setup.settings);
}

void SnapDesktop::press(const DefaultShortcut& shortcut) {
    input().press(shortcut.modifiers(), shortcut.key);
}

bool SnapDesktop::settle() {
    const MonitorLayout& layout = desktop_.server().layout();
    ExpectedFrame now(layout);
    if (panel_) {
        now.reserve(*panelMonitor_, panelHeight);
    }
    const PixelRect whole = now.area(defaultShortcut("maximize"), 0);
    const PixelRect& screen = layout.monitors.front();
    TestWindow::Options options;
    options.area = {screen.x + 300, screen.y + 200, 400, 300};
    options.kind = TestWindow::Kind::undecorated;  // A frame would be painted for a moment only.
    options.title = "marker";
    const std::unique_ptr<TestWindow> marker = desktop_.openWindow(options);
    // No window manager has the combination. A shortcut that was still on its way may reach the
    // marker, too; this one comes after it.
    press("maximize");
    const bool answered = XClient::waitUntil([&] { return marker->frame() == whole; });
    marker->close();
    // What the window manager makes active in its place is not to come in between later.
    const bool isForgotten =
        XClient::waitUntil([&] { return observer().activeWindow() != marker->id(); });
    return answered && isForgotten;
}

bool SnapDesktop::settle(TestWindow& window) {
    const bool answered = settle();
    window.activate();
    return answered;
}

std::string SnapDesktop::endProgram() { return complaintAboutEnd(*program_); }

testing::AssertionResult reaches(TestWindow& window, const PixelRect& wanted) {
    if (XClient::waitUntil([&] { return window.frame() == wanted; }, Deadline::usual())) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure()
           << "the window is at " << window.frame() << " instead of " << wanted;
}

std::string nameOf(const testing::TestParamInfo<WindowManager::Kind>& kind) {
    return toString(kind.param);
}

}  // namespace lumatile::desktop
