#pragma once

#include <memory>

#include "ports/Controlled.h"

namespace lumatile {

class ApplicationConductor;
class RunLoop;

/// What other programs ask, done by the conductor. Once that is gone, nothing is there to be listed
/// or run.
class ApplicationControl final : public Controlled {
public:
    /// @param runLoop outlives this
    ApplicationControl(std::weak_ptr<ApplicationConductor> conductor, RunLoop& runLoop);

    std::vector<Command> commands() override;
    bool run(std::string_view idOrKey) override;
    bool openSettings(std::string_view section) override;
    std::vector<std::string> statusLines() override;
    bool isOn(Protection protection) override;
    void setOn(Protection protection, bool isOn) override;
    bool isExaggerated() override;
    void setExaggerated(bool isExaggerated) override;
    void quit() override;

private:
    std::weak_ptr<ApplicationConductor> conductor_;
    RunLoop& runLoop_;
};

}  // namespace lumatile
