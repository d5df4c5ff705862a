#include "platform/simulated/SimulatedPackageSource.h"

#include <utility>

namespace lumatile {

void SimulatedPackageSource::ask(std::function<void(const PackageAnswer&)> done) {
    ++asked;
    waiting_ = std::move(done);
    if (answersAtOnce) {
        runLoop_.post([this] { answer(); });
    }
}

void SimulatedPackageSource::answer() {
    if (const auto done = std::exchange(waiting_, nullptr)) {
        done(known);
    }
}

bool SimulatedPackageSource::openSoftwareCentre() {
    centreOpened += softwareCentreStarts ? 1 : 0;
    return softwareCentreStarts;
}

void SimulatedPackageSource::install(std::function<void(const std::optional<std::string>&)> done) {
    ++installs;
    runLoop_.post([done = std::move(done), error = installError] { done(error); });
}

}  // namespace lumatile
