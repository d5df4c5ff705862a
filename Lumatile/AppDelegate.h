#pragma once

#include <memory>

#include "Lumatile/ApplicationConductor.h"
#include "Lumatile/Platform.h"

namespace lumatile {

/// The two ends of the program's life.
class AppDelegate {
public:
    /// @param platform the adapters behind it outlive the delegate
    explicit AppDelegate(const Platform& platform);

    /// To be called once, when the run loop can deliver events.
    void applicationDidFinishLaunching();

    /// To be called once, before the adapters go.
    void applicationWillTerminate();

    ApplicationConductor& app() { return *app_; }

private:
    std::shared_ptr<ApplicationConductor> app_;
};

}  // namespace lumatile
