#include "tests/desktop/settings/ProgramDesk.h"

#include "tests/desktop/support/OuterFrame.h"
#include "tests/desktop/support/WindowManagerAnswer.h"

namespace lumatile::desktop {

ProgramDesk::ProgramDesk(WindowManager::Kind kind)
    : desktop_(MonitorLayout::landscape(), kind), tree_(bus()) {}

std::string ProgramDesk::bus() {
    return desktop_.session().environment().at("DBUS_SESSION_BUS_ADDRESS");
}

void ProgramDesk::start(const std::optional<std::string>& oledSettings) {
    LumatileProcess::Settings settings;
    settings.oledSettings = oledSettings;
    // Otherwise only while a screen reader runs.
    settings.environment = {{"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}};
    program_ = std::make_unique<LumatileProcess>(desktop_.session(), LUMATILE_PROGRAM, settings);
}

bool ProgramDesk::openSettings() {
    ChildProcess second = desktop_.session().start({LUMATILE_PROGRAM}, "second");
    return second.wait(Deadline::usual()) == ChildProcess::Exit{0, 0} && XClient::waitUntil([&] {
               const xcb_window_t window = settingsWindow();
               return window != XCB_WINDOW_NONE && desktop_.observer().activeWindow() == window;
           }) &&
           tree_.waitForProgram("lumatile") && knowsItsPlace();
}

bool ProgramDesk::knowsItsPlace() {
    waitForWindowManager(desktop_.observer());
    return XClient::waitUntil([&] {
        const auto frame = tree_.find("frame", "Lumatile Settings");
        return frame && tree_.extents(*frame) == clientArea(desktop_.observer(), settingsWindow());
    });
}

bool ProgramDesk::click(const std::string& role, const std::string& name) {
    const auto node = tree_.waitFor(role, name);
    if (!node) {
        return false;
    }
    const PixelRect place = tree_.extents(*node);
    desktop_.input().movePointer(place.x + place.width / 2, place.y + place.height / 2);
    desktop_.input().buttonDown();
    desktop_.input().buttonUp();
    // It may hold a click back to look at it first, and keys would overtake the click.
    waitForWindowManager(desktop_.observer());
    return true;
}

bool ProgramDesk::showsMenu() {
    return XClient::waitUntil(
        [&] { return desktop_.observer().unmanagedWindowOf(program_->pid()) != XCB_WINDOW_NONE; });
}

bool ProgramDesk::stores(const std::string& text) {
    return XClient::waitUntil(
        [&] { return readFile(program_->settingsFile()).find(text) != std::string::npos; });
}

}  // namespace lumatile::desktop
