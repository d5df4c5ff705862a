#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/desktop/support/ExpectedFrame.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::demonstration {

/// A private desktop with a landscape and a portrait monitor, a window manager that leaves the
/// shortcuts alone, a few programs, and Lumatile.
class DemonstrationDesktop {
public:
    /// Tells every step that it takes.
    explicit DemonstrationDesktop(const std::filesystem::path& program);

    struct Screen {
        std::string name;
        std::size_t monitor = 0;
    };
    static const std::vector<Screen>& screens();

    desktop::TestDesktop& desktop() { return desktop_; }
    desktop::LumatileProcess& lumatile() { return *lumatile_; }
    const desktop::ExpectedFrame& expected() const { return expected_; }

    /// Windows that take every size; terminals keep whole lines.
    const std::vector<xcb_window_t>& windows() const { return windows_; }
    xcb_window_t terminal() const { return terminal_; }
    xcb_window_t logo() const { return logo_; }

    void activate(xcb_window_t window);
    void place(xcb_window_t window, const desktop::PixelRect& frame);
    void press(const desktop::DefaultShortcut& shortcut);
    desktop::PixelRect frame(xcb_window_t window);

    /// Lets the panel say something; simple markup.
    void caption(const std::string& markup);

    /// Saves the root when the programs have painted.
    void save(const std::filesystem::path& file);

private:
    void paintBackground();
    xcb_window_t open(const std::vector<std::string>& command, const std::string& windowClass);
    void openCaption();

    desktop::TestDesktop desktop_;
    desktop::ExpectedFrame expected_;
    std::vector<desktop::ChildProcess> programs_;
    std::vector<xcb_window_t> windows_;
    xcb_window_t terminal_ = XCB_WINDOW_NONE;
    xcb_window_t logo_ = XCB_WINDOW_NONE;
    xcb_window_t caption_ = XCB_WINDOW_NONE;
    std::unique_ptr<desktop::LumatileProcess> lumatile_;
};

/// Prints "step … " now and "done" at its end.
class Step {
public:
    explicit Step(const std::string& what);
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
    ~Step();

private:
    int exceptions_;
};

}  // namespace lumatile::demonstration
