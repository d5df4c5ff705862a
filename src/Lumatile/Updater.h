#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "ports/UpdateController.h"

namespace lumatile {

/// Updates, for menu and settings. There is one in a process, which belongs to the conductor.
class Updater {
public:
    using MakeController = std::function<std::shared_ptr<UpdateController>()>;
    using Activate = std::function<void()>;

    /// Makes nothing yet.
    /// @param activate brings this program in front of the others
    Updater(MakeController make, Activate activate)
        : make_(std::move(make)), activate_(std::move(activate)) {}
    Updater(const Updater&) = delete;
    Updater& operator=(const Updater&) = delete;
    ~Updater() = default;

    /// The one controller: made and started by the first access.
    UpdateController& controller();

    /// Brings the program to the front, where the answer will be, and looks.
    void checkForUpdates();

    bool automaticallyChecksForUpdates() { return controller().automaticallyChecksForUpdates(); }
    void setAutomaticallyChecksForUpdates(bool checks) {
        controller().setAutomaticallyChecksForUpdates(checks);
    }

private:
    MakeController make_;
    Activate activate_;
    std::shared_ptr<UpdateController> controller_;
};

}  // namespace lumatile
