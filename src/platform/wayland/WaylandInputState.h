#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/wayland/IdleEstimate.h"
#include "platform/wayland/IdleNotice.h"
#include "platform/wayland/WaylandConnection.h"
#include "ports/InputState.h"

namespace lumatile {

/// Idle time from the compositor's notices of pauses. Nothing is asked while a pause lasts.
class WaylandInputState final : public InputState {
public:
    /// @param connection outlives the state
    /// @param isDragButtonDown as the port has it; compositors tell nobody of buttons that are
    ///        pressed elsewhere
    WaylandInputState(WaylandConnection& connection, std::function<bool()> isDragButtonDown);
    WaylandInputState(const WaylandInputState&) = delete;
    WaylandInputState& operator=(const WaylandInputState&) = delete;
    ~WaylandInputState() override;

    /// Whether the compositor tells of pauses at all.
    bool tellsIdleTime();

    /// 0 until a pause has lasted for `IdleEstimate::pauseSeconds`. Absent where the compositor
    /// tells of no pauses, or something that is to be seen undisturbed keeps it from telling.
    std::optional<double> idleSeconds() override;

    /// From shortly before that on the compositor is asked whether something is to be seen, at the
    /// calls of `idleSeconds`.
    void expectDimming(std::optional<double> idleThreshold) override;

    bool isDragButtonDown() override { return isDragButtonDown_(); }

private:
    struct Listeners;

    bool isWatching();
    void awaitPause();
    void ask();
    void noteAnswer();

    WaylandConnection& connection_;
    std::function<bool()> isDragButtonDown_;
    IdleEstimate estimate_;
    IdleNotifier notifier_;
    WaylandHandle<wl_seat> seat_;
    std::unique_ptr<IdleNotice> pause_;
    std::unique_ptr<IdleNotice> question_;     ///< Stays until it is answered.
    WaylandHandle<wl_callback> questionSent_;  ///< Until the compositor has the question.
};

}  // namespace lumatile
