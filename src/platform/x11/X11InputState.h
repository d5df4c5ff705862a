#pragma once

#include <optional>

#include "platform/x11/X11Connection.h"
#include "ports/InputState.h"
#include "ports/SystemLog.h"

namespace lumatile {

/// Idle time from the screen-saver extension, which counts every device, and the buttons of the
/// core pointer. One question to the server for each call.
class X11InputState final : public InputState {
public:
    /// @param connection outlives the state
    /// @param log gets one line, now, where the server has no such extension
    X11InputState(X11Connection& connection, SystemLog& log);

    /// Absent where the extension is missing or the server is gone.
    std::optional<double> idleSeconds() override;

    /// True while any of the buttons 1 to 3 is held.
    bool isDragButtonDown() override;

private:
    X11Connection& connection_;
    bool tellsIdleTime_;
};

}  // namespace lumatile
