#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/simulated/SimulatedPrograms.h"
#include "ports/Workspace.h"

namespace lumatile {

/// The running applications, as the desktop lists them.
class SimulatedWorkspace final : public Workspace {
public:
    /// @param programs outlives it
    explicit SimulatedWorkspace(const SimulatedPrograms& programs) : programs_(programs) {}

    std::optional<RunningApplication> frontmostApplication() override;
    std::optional<RunningApplication> frontmostOtherApplication() override;
    std::vector<RunningApplication> runningApplications() override;
    Pid ownPid() override { return ownPid_; }
    bool open(std::string_view address) override;

    /// The process id that this program has from now on.
    void setOwnPid(Pid pid) { ownPid_ = pid; }

    /// Whether there is a page of settings behind the addresses.
    bool opensAddresses = true;

    /// Every address that was to be opened, in order.
    std::vector<std::string> addresses;

    /// The desktop goes on naming this application as the frontmost one, whichever has the focus.
    void stickTo(ApplicationID id) { stuck_ = id; }
    void unstick() { stuck_.reset(); }

private:
    std::optional<RunningApplication> describe(const SimulatedApplication& application) const;

    const SimulatedPrograms& programs_;
    std::optional<ApplicationID> stuck_;
    Pid ownPid_ = 1;
};

}  // namespace lumatile
