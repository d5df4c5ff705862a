#pragma once

#include <string_view>

#include "ports/Workspace.h"

namespace lumatile::desktop {

/// The applications of the desktop as a program sees them that runs in another process than this
/// one, so that windows which a test opens itself are some other program's.
class OtherProgramsWorkspace final : public Workspace {
public:
    /// @param workspace outlives this
    explicit OtherProgramsWorkspace(Workspace& workspace) : workspace_(workspace) {}

    std::optional<RunningApplication> frontmostApplication() override {
        return workspace_.frontmostApplication();
    }
    std::optional<RunningApplication> frontmostOtherApplication() override {
        return workspace_.frontmostOtherApplication();
    }

    std::vector<RunningApplication> runningApplications() override {
        return workspace_.runningApplications();
    }

    /// No process has it.
    Pid ownPid() override { return 0; }

    bool open(std::string_view address) override { return workspace_.open(address); }

private:
    Workspace& workspace_;
};

}  // namespace lumatile::desktop
