#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/freedesktop/files/DesktopEntries.h"
#include "platform/windows/ListedWindow.h"
#include "platform/x11/X11WindowMirror.h"
#include "ports/Workspace.h"

namespace lumatile {

/// The applications of an X desktop: the processes that own its managed windows.
class X11Workspace final : public Workspace {
public:
    /// @param mirror outlives the workspace
    explicit X11Workspace(X11WindowMirror& mirror) : mirror_(mirror) {}

    std::optional<RunningApplication> frontmostApplication() override;

    std::optional<RunningApplication> frontmostOtherApplication() override;

    /// In the order of their topmost windows.
    std::vector<RunningApplication> runningApplications() override;

    Pid ownPid() override;

    /// Opens nothing: who may move windows is no setting of an X desktop. Whoever wants to lead the
    /// user there says what is in the way instead.
    bool open(std::string_view address) override;

private:
    /// The topmost first.
    std::vector<ListedWindow> listed();

    X11WindowMirror& mirror_;
    DesktopEntries entries_ = DesktopEntries::ofEnvironment();
};

}  // namespace lumatile
