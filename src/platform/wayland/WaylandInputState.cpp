#include "platform/wayland/WaylandInputState.h"

#include <wayland-client.h>

#include <chrono>
#include <cstdint>
#include <limits>
#include <utility>

namespace lumatile {

namespace {

constexpr std::uint32_t seatVersion = 1;

double now() {
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(time).count();
}

}  // namespace

struct WaylandInputState::Listeners {
    static constexpr wl_callback_listener questionSent = {
        .done =
            [](void* data, wl_callback* /*callback*/, std::uint32_t /*serial*/) {
                auto& state = *static_cast<WaylandInputState*>(data);
                state.questionSent_.reset();
                state.estimate_.noteArrived(now());
            },
    };
};

WaylandInputState::WaylandInputState(WaylandConnection& connection,
                                     std::function<bool()> isDragButtonDown)
    : connection_(connection), isDragButtonDown_(std::move(isDragButtonDown)) {}

WaylandInputState::~WaylandInputState() = default;

bool WaylandInputState::tellsIdleTime() { return isWatching(); }

std::optional<double> WaylandInputState::idleSeconds() {
    if (!isWatching()) {
        return std::nullopt;
    }
    if (estimate_.wantsToAsk(now())) {
        ask();
    }
    return estimate_.seconds(now());
}

void WaylandInputState::expectDimming(std::optional<double> idleThreshold) {
    estimate_.darkensAfter = idleThreshold.value_or(std::numeric_limits<double>::infinity());
}

/// From the first time on that somebody wants to know and the compositor can tell.
bool WaylandInputState::isWatching() {
    if (pause_) {
        return true;
    }
    notifier_ = IdleNotifier::of(connection_);
    seat_ = connection_.bindFirst<wl_seat>(wl_seat_interface, seatVersion);
    if (!notifier_.isAvailable() || !seat_) {
        return false;
    }
    awaitPause();
    return true;
}

void WaylandInputState::awaitPause() {
    constexpr auto length = std::chrono::ceil<std::chrono::milliseconds>(
        std::chrono::duration<double>(IdleEstimate::pauseSeconds));
    pause_ = std::make_unique<IdleNotice>(
        notifier_, seat_.get(), length,
        [this] {
            question_.reset();
            questionSent_.reset();
            estimate_.noteIdled(now());
        },
        [this] { estimate_.noteResumed(); });
}

void WaylandInputState::ask() {
    estimate_.noteAsked();
    question_ = std::make_unique<IdleNotice>(
        notifier_, seat_.get(), std::chrono::milliseconds::zero(), [this] { noteAnswer(); }, [] {});
    questionSent_.reset(wl_display_sync(connection_.get()));
    wl_callback_add_listener(questionSent_.get(), &Listeners::questionSent, this);
}

void WaylandInputState::noteAnswer() {
    const bool wasKeptBack = estimate_.isKeptBack(now());
    question_.reset();
    questionSent_.reset();
    estimate_.noteAnswered(now());
    if (wasKeptBack) {
        // What the user did meanwhile was not told, so the pause begins now.
        estimate_.noteResumed();
        awaitPause();
    }
}

}  // namespace lumatile
