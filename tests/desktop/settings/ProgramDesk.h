#pragma once

#include <memory>
#include <string>

#include "tests/desktop/support/AccessibleTree.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::desktop {

/// The program on a private desktop with its settings, which are read as a screen reader reads them
/// and worked with a real mouse and real keys.
class ProgramDesk {
public:
    explicit ProgramDesk(WindowManager::Kind kind = WindowManager::Kind::openbox);

    TestDesktop& desktop() { return desktop_; }
    const AccessibleTree& tree() const { return tree_; }
    LumatileProcess& program() { return *program_; }
    std::string bus();

    /// Starts the program.
    /// @param oledSettings as JSON; absent: the recommended ones
    void start(const std::optional<std::string>& oledSettings = std::nullopt);

    /// Starts it a second time, and waits until the settings of the first are the active window.
    bool openSettings();

    xcb_window_t settingsWindow() { return desktop_.observer().windowOfClass("lumatile"); }

    /// Clicks on the middle of something that shows.
    /// @return false when it does not show in time
    bool click(const std::string& role, const std::string& name);

    /// Waits until a menu of the program is on the screen.
    bool showsMenu();

    /// Waits until the stored settings hold this text.
    bool stores(const std::string& text);

private:
    /// Waits until the program has heard where the window manager has put its settings: what it
    /// tells of places is counted from there.
    bool knowsItsPlace();

    TestDesktop desktop_;
    AccessibleTree tree_;
    std::unique_ptr<LumatileProcess> program_;
};

}  // namespace lumatile::desktop
