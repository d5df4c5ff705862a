#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/freedesktop/files/DesktopEntries.h"
#include "platform/kwin/KWinChannel.h"
#include "platform/windows/ListedWindow.h"
#include "ports/Workspace.h"

namespace lumatile {

/// The applications of a KWin session, from the mirror of its windows.
class KWinWorkspace final : public Workspace {
public:
    /// @param channel outlives the workspace
    explicit KWinWorkspace(KWinChannel& channel) : channel_(channel) {}

    std::optional<RunningApplication> frontmostApplication() override;

    /// Whose window had the focus last counts as on top.
    std::optional<RunningApplication> frontmostOtherApplication() override;
    std::vector<RunningApplication> runningApplications() override;
    Pid ownPid() override;

    /// There is no permission and so no page of one.
    bool open(std::string_view address) override;

private:
    /// In the order in which they had the focus, the last one first.
    std::vector<ListedWindow> listed();

    KWinChannel& channel_;
    DesktopEntries entries_ = DesktopEntries::ofEnvironment();
};

}  // namespace lumatile
