#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "platform/simulated/SimulatedApplication.h"
#include "platform/simulated/SimulatedWindow.h"

namespace lumatile {

/// The running applications, their windows, how those are stacked and which one has the focus.
class SimulatedPrograms {
public:
    ApplicationID launch(SimulatedApplicationTraits traits);

    /// Ends an application with all its windows.
    void quit(ApplicationID id);

    /// Opens a window above the others and gives it the focus.
    /// @param arranged its outer frame in the screens' arrangement
    WindowID open(ApplicationID application, SimulatedWindowTraits traits, const Rect& arranged);

    void close(WindowID id);

    /// Raises a window and gives it the focus; brings it back when it is minimized or hidden.
    void focus(WindowID id);

    /// Takes the focus from every window, as a click on the empty desktop does.
    void focusNothing() { focused_.reset(); }

    void minimize(WindowID id);
    void setHidden(ApplicationID id, bool hidden);

    /// Null once it is gone.
    SimulatedWindow* find(WindowID id);
    const SimulatedWindow* find(WindowID id) const;
    SimulatedApplication* find(ApplicationID id);
    const SimulatedApplication* find(ApplicationID id) const;
    SimulatedApplication* findByPid(Pid pid);

    std::optional<WindowID> focusedWindow() const { return focused_; }
    std::optional<ApplicationID> focusedApplication() const;

    /// The one that the application itself calls focused: the last that had the focus and can be
    /// seen.
    std::optional<WindowID> focusedWindow(const SimulatedApplication& application) const;

    /// The last standard window that had the focus, seen or not.
    std::optional<WindowID> mainWindow(const SimulatedApplication& application) const;

    /// The uppermost window that can be seen at a point of the arrangement.
    std::optional<WindowID> topmostAt(const Point& point) const;

    bool canBeSeen(const SimulatedWindow& window) const;

    /// Bottom to top.
    const std::vector<WindowID>& stacking() const { return stacking_; }

    const std::map<ApplicationID, SimulatedApplication>& applications() const {
        return applications_;
    }

private:
    void focusTopmost();

    std::map<ApplicationID, SimulatedApplication> applications_;
    std::map<WindowID, SimulatedWindow> windows_;
    std::vector<WindowID> stacking_;
    std::optional<WindowID> focused_;
    std::uint64_t lastID_ = 0;
};

}  // namespace lumatile
