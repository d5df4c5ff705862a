#include "tests/desktop/settings/SettingsDesk.h"

#include <unistd.h>

#include <array>
#include <sstream>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/WindowManagerAnswer.h"

namespace lumatile::desktop {

SettingsDesk::SettingsDesk(WindowManager::Kind kind, WindowManager::Options options,
                           const Environment& scale)
    : desktop_(MonitorLayout::landscape(), kind, options) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        throw DesktopError("no pipe");
    }
    ChildProcess::Start start;
    start.command = {LUMATILE_SETTINGS_PROGRAM, std::to_string(ends[0])};
    start.environment = desktop_.session().environment();
    start.environment["DISPLAY"] = desktop_.display();
    start.environment["QT_QPA_PLATFORM"] = "xcb";
    for (const auto& [name, value] : scale) {
        start.environment[name] = value;
    }
    start.output = desktop_.session().folder() / "settings.log";
    start.keptDescriptor = ends[0];
    process_ = ChildProcess(start);
    close(ends[0]);
    input_ = ends[1];
    if (!XClient::waitUntil([&] {
            const xcb_window_t window = desktop_.observer().windowOfClass("settings_program");
            return window != XCB_WINDOW_NONE && desktop_.observer().activeWindow() == window;
        })) {
        throw DesktopError("the settings do not become the active window: " + said());
    }
    // Whatever it has told the program of the window's place is there before our first question.
    waitForWindowManager(desktop_.observer());
}

SettingsDesk::~SettingsDesk() { close(input_); }

void SettingsDesk::tell(const std::string& line) {
    heard_ = said().size();
    const std::string whole = line + '\n';
    if (write(input_, whole.data(), whole.size()) != static_cast<ssize_t>(whole.size())) {
        throw DesktopError("the program of the settings does not listen");
    }
}

std::string SettingsDesk::said() { return desktop_.session().output("settings"); }

bool SettingsDesk::hears(const std::string& line) {
    return XClient::waitUntil([&] {
        const std::size_t found = said().find(line + '\n', heard_);
        if (found == std::string::npos) {
            return false;
        }
        heard_ = found;
        return true;
    });
}

bool SettingsDesk::click(const std::string& name) {
    tell("where " + name);
    int x = 0;
    int y = 0;
    const bool isFound = XClient::waitUntil([&] {
        const std::string all = said();
        const std::size_t found = all.find("at " + name + ' ', heard_);
        if (found == std::string::npos || all.find('\n', found) == std::string::npos) {
            return false;
        }
        std::istringstream place(all.substr(found + 4 + name.size()));
        return static_cast<bool>(place >> x >> y);
    });
    if (isFound) {
        desktop_.input().movePointer(x, y);
        desktop_.input().buttonDown();
        desktop_.input().buttonUp();
        // It may hold a click back to look at it first, and keys would overtake the click.
        waitForWindowManager(desktop_.observer());
    }
    return isFound;
}

}  // namespace lumatile::desktop
