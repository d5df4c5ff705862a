#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>

#include "commands/SnapCommand.h"
#include "geometry/Rect.h"
#include "oled_protection/JitterPolicy.h"
#include "ports/Platform.h"
#include "windows/AXElementKey.h"
#include "windows/WindowControlling.h"

namespace lumatile {

class Blacklist;
class CommandStore;
struct DisplayService;
class OrbitScheduler;

/// Turns a command into a moved window. Every shortcut and every menu item ends here. What cannot
/// be carried out (no front window, an excluded application, a window on no screen, a frame that
/// cannot be read) does nothing and says nothing.
class SnapExecution {
public:
    using FrameHistory = std::unordered_map<AXElementKey, Rect>;

    /// What it works with; all of it outlives the execution.
    struct Services {
        Platform platform;
        const CommandStore& store;
        const Blacklist& blacklist;
        const JitterPolicy& jitter;
        OrbitScheduler& orbit;
        std::function<const DisplayService&()> displays;
    };

    explicit SnapExecution(Services services);

    /// Runs `command` on the front window.
    void performCommand(const SnapCommand& command);

    /// Runs `command`, chosen in a window of this program, on the window that the user worked in
    /// before: the command is never meant for the window that it is chosen in. Nothing becomes
    /// active or comes in front by it.
    void performCommandBehindUs(const SnapCommand& command);

    /// The frame each window had just before the last command that was performed on it. Entries of
    /// closed windows stay: their keys never match another window.
    const FrameHistory& frameHistory() const { return frameHistory_; }

    /// Stores `frame` as the one to restore, or forgets the window where absent.
    void recordFrame(const std::optional<Rect>& frame, const AXElementKey& key);

private:
    /// Where a command puts a window.
    struct Placement {
        Rect frame;                ///< The frame to set.
        std::optional<Rect> home;  ///< The snap target before edge jitter; areas alone have one.
    };

    void perform(const SnapCommand& command, const std::shared_ptr<WindowControlling>& window);
    std::shared_ptr<WindowControlling> frontWindow();
    std::shared_ptr<WindowControlling> windowBehindUs();
    bool isBlacklisted(const WindowControlling& window);
    std::optional<Placement> placement(const SnapCommand& command, const WindowControlling& window,
                                       const Rect& visibleFrame);

    Services services_;
    FrameHistory frameHistory_;
};

}  // namespace lumatile
