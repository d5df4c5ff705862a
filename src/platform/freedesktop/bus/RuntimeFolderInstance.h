#pragma once

#include <string>
#include <string_view>

#include "platform/freedesktop/bus/InstanceClaim.h"

namespace lumatile {

/// The one program of a desktop, known by a lock in the user's run-time folder, and told by a
/// socket beside it.
class RuntimeFolderInstance {
public:
    /// Takes the folder from the environment's present value ("XDG_RUNTIME_DIR").
    /// @param display the desktop, as in $DISPLAY
    explicit RuntimeFolderInstance(std::string_view display);
    RuntimeFolderInstance(const RuntimeFolderInstance&) = delete;
    RuntimeFolderInstance& operator=(const RuntimeFolderInstance&) = delete;

    /// Gives the lock back.
    ~RuntimeFolderInstance();

    /// @return `first`, `second` (the other one knows nothing of this) or `unavailable`
    InstanceClaim claim();

    /// Asks the other one to open its settings; whether it does so cannot be known.
    /// @return whether somebody is there to be asked; one that is just starting is waited for
    bool ask() const;

    /// Readable when another program asks; -1 where nobody can.
    int fileDescriptor() const { return socket_; }

    /// Takes what has arrived.
    /// @return whether the settings are to be opened
    bool consume() const;

private:
    void listen();
    bool askNow() const;

    std::string stem_;  ///< Path without ending; empty where there is no folder.
    int lock_ = -1;
    int socket_ = -1;
};

}  // namespace lumatile
