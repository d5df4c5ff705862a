#include "platform/x11/X11PlacingWait.h"

#include <algorithm>
#include <array>
#include <chrono>

#include "platform/x11/X11WindowWriter.h"

namespace lumatile {

namespace {

using std::chrono::milliseconds;

// A program that draws its own decoration learns that it is no longer maximized, and then redraws
// itself with a shadow, which takes a frame or two, and longer on a busy machine.
constexpr milliseconds redrawTime{200};

// A decoration may change when a state is left, and then once more when the program redraws.
constexpr int mostRepeats = 3;

bool hasSideWithoutShadow(const X11Extents& shadow) {
    return shadow.left == 0 || shadow.right == 0 || shadow.top == 0 || shadow.bottom == 0;
}

}  // namespace

X11PlacingWait::Patience X11PlacingWait::Patience::of(double longest) {
    // Whoever can wait for longer than a user is as patient with each of the steps.
    const double factor = longest / X11WindowWriter::longestTimeout;
    const auto scaled = [factor](milliseconds time) {
        return std::chrono::duration_cast<Clock::duration>(time * factor);
    };
    return {scaled(milliseconds{40}), scaled(milliseconds{60})};
}

X11PlacingWait::X11PlacingWait(const Services& services, const Patience& patience,
                               const X11Window& window, const X11PlacingOrder& order,
                               Clock::duration timeout)
    : services_(services),
      patience_(patience),
      id_(window.id),
      serial_(window.serial),
      order_(order),
      start_(Clock::now()),
      deadline_(start_ + timeout),
      answersBefore_(window.answers),
      tellingsBefore_(window.tellings),
      outerBefore_(window.frame().outer()),
      shadowBefore_(window.facts.shadow),
      now_(start_),
      until_(deadline_),
      sent_(order.request(window)) {}

void X11PlacingWait::probe() {
    services_.probe.ask();
    probedAt_ = now_;
}

bool X11PlacingWait::await() {
    while (true) {
        services_.mirror.refresh();
        X11Window* window = services_.mirror.findManaged(id_, serial_);
        if (window == nullptr || services_.connection.isLost()) {
            return false;
        }
        if (!services_.mirror.hasWindowManager()) {
            window->written.reset();  // Nobody is left who could still carry it out.
            return false;
        }
        now_ = Clock::now();
        until_ = deadline_;
        if (order_.leavesState) {
            repeatWhereNeeded(*window);
        }
        if (order_.isMetBy(*window)) {
            if (!order_.leavesState || isConfirmed(*window)) {
                window->written = order_.outcome(*window);
                return true;
            }
        } else if (isGivenUp(*window)) {
            return false;
        }
        services_.connection.waitForEvents(until_);
    }
}

bool X11PlacingWait::isConfirmed(const X11Window& window) {
    if (now_ >= deadline_) {
        return true;
    }
    const Clock::time_point redrawn = start_ + redrawTime;
    if (window.facts.statesShadow && window.facts.shadow == shadowBefore_ &&
        hasSideWithoutShadow(shadowBefore_) && now_ < redrawn) {
        until_ = std::min(until_, redrawn);
        return false;
    }
    // The decoration of a window that leaves a state changes beside its geometry; what has been
    // read of the two belongs together once the window manager is through with it all.
    if (!probedAt_) {
        probe();
    }
    const Clock::time_point ignored = *probedAt_ + patience_.probe;
    until_ = std::min(until_, ignored);
    return services_.probe.isAnswered() || now_ >= ignored;
}

bool X11PlacingWait::isGivenUp(X11Window& window) {
    const bool answered = window.answers != answersBefore_;
    const bool dealtWith = probedAt_ && services_.probe.isAnswered();
    const bool isOver =
        now_ >= deadline_ || (answered && probedAt_ && now_ >= *probedAt_ + patience_.probe);
    if (dealtWith || isOver) {
        if (answered || dealtWith) {
            window.written = order_.outcome(window);
        } else {
            services_.probe.noteSilence();
        }
        window.refusedAt = window.answers;
        return true;
    }
    if (!probedAt_) {
        const bool movedElsewhere = !order_.withSize && window.tellings != tellingsBefore_ &&
                                    window.frame().outer() != outerBefore_;
        const Clock::time_point probeAt = movedElsewhere ? now_
                                          : answered     ? window.answeredAt + patience_.settling
                                                         : start_ + (deadline_ - start_) / 2;
        if (now_ >= probeAt) {
            probe();
        } else {
            until_ = std::min(until_, probeAt);
        }
    }
    if (probedAt_ && answered) {
        until_ = std::min(until_, *probedAt_ + patience_.probe);
    }
    return false;
}

void X11PlacingWait::repeatWhereNeeded(const X11Window& window) {
    const X11PlaceRequest request = order_.request(window);
    if (repeats_ < mostRepeats && request != sent_) {
        ++repeats_;
        sent_ = request;
        probedAt_.reset();
        services_.requests.send(id_, std::array<X11WindowRequest, 1>{request});
    }
}

}  // namespace lumatile
