#pragma once

#include <cstdint>
#include <functional>

#include "base/Lifeline.h"
#include "platform/kwin/KWinChannel.h"
#include "ports/RunLoop.h"

namespace lumatile {

/// Which of the user's keyboard layouts is in force. A Wayland compositor tells that only to the
/// window that has the focus, KWin tells it on the bus as well.
class KWinKeyboardLayout {
public:
    /// All outlive this.
    /// @param changed called from the run loop with the number of the layout, counted from 0, and
    ///        once at the beginning where there are several
    KWinKeyboardLayout(KWinChannel& channel, RunLoop& runLoop,
                       std::function<void(std::uint32_t)> changed);

private:
    void follow();
    void note(GVariant* arguments);

    KWinChannel& channel_;
    RunLoop& runLoop_;
    std::function<void(std::uint32_t)> changed_;
    LoneBusConnection* listening_ = nullptr;  // Compared, never used.
    KWinChannel::StateSubscription states_;
    Lifeline lifeline_;
};

}  // namespace lumatile
