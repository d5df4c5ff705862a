#pragma once

#include <functional>
#include <string_view>

#include "platform/freedesktop/bus/InstanceClaim.h"
#include "platform/freedesktop/bus/RuntimeFolderInstance.h"
#include "platform/freedesktop/bus/SessionBusInstance.h"

namespace lumatile {

/// Keeps one program of this kind on a desktop: two would fight for shortcuts and windows.
/// Starting it again opens the settings of the one that runs. Each has a lock in the run-time
/// folder and a name on the bus: either may be missing, and the bus may end before the program.
class SingleInstance {
public:
    /// @param session the user's bus; outlives this
    /// @param display the desktop, as in $DISPLAY
    /// @param openSettings runs on the run loop when the program is started again
    SingleInstance(BusConnection& session, std::string_view display,
                   const std::function<void()>& openSettings);

    /// @return `first` also where programs could not find one another; for `second`, the other one
    ///         has been asked to open its settings
    InstanceClaim claim();

    /// To be watched by the run loop; -1 where nothing comes this way.
    int fileDescriptor() const { return folder_.fileDescriptor(); }

    /// To be called when the descriptor is readable.
    void dispatch();

private:
    std::function<void()> openSettings_;
    SessionBusInstance bus_;
    RuntimeFolderInstance folder_;
};

}  // namespace lumatile
