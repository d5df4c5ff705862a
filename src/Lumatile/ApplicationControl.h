#pragma once

#include <memory>

#include "ports/Controlled.h"

namespace lumatile {

class AccessibilityPlatform;
class ApplicationConductor;
class RunLoop;

/// Carries out the requests of other programs through the conductor. Once that is gone, lists are
/// empty and nothing runs.
class ApplicationControl final : public Controlled {
public:
    /// @param accessibility and `runLoop` outlive this
    /// @param shortcomings of the session, a sentence each
    ApplicationControl(std::weak_ptr<ApplicationConductor> conductor,
                       AccessibilityPlatform& accessibility, RunLoop& runLoop,
                       std::vector<std::string> shortcomings);

    std::string missing() override;
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
    AccessibilityPlatform& accessibility_;
    RunLoop& runLoop_;
    std::vector<std::string> shortcomings_;
};

}  // namespace lumatile
