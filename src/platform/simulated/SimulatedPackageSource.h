#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "ports/PackageSource.h"
#include "ports/RunLoop.h"

namespace lumatile {

/// The system's package service, which answers when the test lets it.
class SimulatedPackageSource final : public PackageSource {
public:
    /// @param runLoop outlives the source
    explicit SimulatedPackageSource(RunLoop& runLoop) : runLoop_(runLoop) {}

    void ask(std::function<void(const PackageAnswer&)> done) override;
    bool canOpenSoftwareCentre() override { return hasSoftwareCentre; }
    bool openSoftwareCentre() override;
    void install(std::function<void(const std::optional<std::string>&)> done) override;

    /// What it answers.
    PackageAnswer known{PackageAnswer::State::upToDate, "", ""};
    bool hasSoftwareCentre = true;
    bool softwareCentreStarts = true;
    std::optional<std::string> installError;

    /// Answers by itself, from the run loop; otherwise only when `answer` is called.
    bool answersAtOnce = true;
    void answer();

    std::size_t asked = 0;
    std::size_t centreOpened = 0;
    std::size_t installs = 0;

private:
    RunLoop& runLoop_;
    std::function<void(const PackageAnswer&)> waiting_;
};

}  // namespace lumatile
