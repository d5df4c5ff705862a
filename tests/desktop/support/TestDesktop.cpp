#include "tests/desktop/support/TestDesktop.h"

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/WindowActivation.h"
#include "tests/desktop/support/WindowManagerAnswer.h"

namespace lumatile::desktop {

TestDesktop::TestDesktop(const MonitorLayout& layout)
    : server_(layout),
      session_(server_.display()),
      observer_(server_.display()),
      input_(server_.display()) {}

TestDesktop::TestDesktop(const MonitorLayout& layout, WindowManager::Kind kind)
    : TestDesktop(layout, kind, WindowManager::Options{}) {}

TestDesktop::TestDesktop(const MonitorLayout& layout, WindowManager::Kind kind,
                         WindowManager::Options options)
    : TestDesktop(layout) {
    startWindowManager(kind, options);
}

WindowManager& TestDesktop::windowManager() {
    if (!windowManager_) {
        throw DesktopError("there is no window manager");
    }
    return *windowManager_;
}

void TestDesktop::startWindowManager(WindowManager::Kind kind, WindowManager::Options options) {
    windowManager_.reset();
    windowManager_ = std::make_unique<WindowManager>(session_, kind, options);
}

void TestDesktop::arrange(const MonitorLayout& layout) {
    server_.arrange(layout);
    const PixelRect root = layout.root();
    const auto width = static_cast<std::uint32_t>(root.width);
    const auto height = static_cast<std::uint32_t>(root.height);
    const bool followed = XClient::waitUntil([&] {
        const std::vector<std::uint32_t> size =
            observer_.cardinals(observer_.root(), "_NET_DESKTOP_GEOMETRY");
        return size.size() < 2 || (size[0] == width && size[1] == height);
    });
    if (!followed) {
        throw DesktopError("the window manager does not follow the monitors");
    }
    // The root may have the size that it had before.
    if (windowManager_) {
        waitForWindowManager(observer_);
    }
}

std::unique_ptr<TestWindow> TestDesktop::openWindow(const TestWindow::Options& options) {
    auto window = std::make_unique<TestWindow>(display(), options);
    window->mapActive();
    return window;
}

std::unique_ptr<TestWindow> TestDesktop::openPanel(std::size_t monitor, int height) {
    TestWindow::Options options;
    options.kind = TestWindow::Kind::dock;
    options.title = "panel";
    options.windowClass = "TestPanel";
    options.color = 0x202428;
    options.area = panelArea(monitor, height);
    options.strut = panelStrut(options.area);
    auto panel = std::make_unique<TestWindow>(display(), options);
    panel->map();
    return panel;
}

void TestDesktop::layPanel(TestWindow& panel, std::size_t monitor, int height) {
    const PixelRect area = panelArea(monitor, height);
    panel.setStrut(panelStrut(area));
    panel.place(area);
}

PixelRect TestDesktop::panelArea(std::size_t monitor, int height) const {
    const PixelRect& place = server_.layout().monitors.at(monitor);
    return {place.x, place.bottom() - height, place.width, height};
}

std::array<std::uint32_t, 12> TestDesktop::panelStrut(const PixelRect& panel) const {
    std::array<std::uint32_t, 12> strut{};
    // Struts count from the edge of the root, not of the monitor.
    strut[3] = static_cast<std::uint32_t>(server_.layout().root().height - panel.y);
    strut[10] = static_cast<std::uint32_t>(panel.x);
    strut[11] = static_cast<std::uint32_t>(panel.right() - 1);
    return strut;
}

TestDesktop::Program TestDesktop::openProgram(const std::vector<std::string>& command,
                                              const std::string& windowClass,
                                              const Environment& further) {
    Program program;
    program.process = session_.start(command, windowClass, further);
    const bool shown = XClient::waitUntil(
        [&] {
            program.window = observer_.windowOfClass(windowClass);
            return program.window != XCB_WINDOW_NONE || !program.process.isRunning();
        },
        Deadline::usual(), {program.process.descriptor()});
    if (!shown || program.window == XCB_WINDOW_NONE) {
        throw DesktopError(command.front() + " shows no window:\n" + session_.output(windowClass));
    }
    activateWindow(observer_, program.window);
    return program;
}

}  // namespace lumatile::desktop
