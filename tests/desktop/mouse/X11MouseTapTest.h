#pragma once

#include <gtest/gtest.h>
#include <poll.h>

#include <memory>
#include <ostream>
#include <utility>
#include <vector>

#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/x11/X11MouseEventSource.h"
#include "platform/x11/X11RefreshRate.h"
#include "tests/desktop/support/InputDriver.h"
#include "tests/desktop/support/PrivateServer.h"

namespace lumatile {

inline void PrintTo(const MouseEvent& event, std::ostream* stream) {
    *stream << static_cast<int>(event.type) << " at " << event.location.x << ","
            << event.location.y;
}

inline bool operator==(const MouseEvent& one, const MouseEvent& other) {
    return one.type == other.type && one.location == other.location;
}

namespace desktop {

inline constexpr auto down = MouseEventType::leftMouseDown;
inline constexpr auto up = MouseEventType::leftMouseUp;
inline constexpr auto dragged = MouseEventType::leftMouseDragged;

inline constexpr MouseEventSource::Mask everything =
    MouseEventSource::bit(down) | MouseEventSource::bit(up) | MouseEventSource::bit(dragged);

/// A tap of an X server of its own, a pointer that the test moves, and what the tap has told.
class X11MouseTapTest : public testing::Test {
protected:
    X11MouseTapTest() {
        tap_ = taps_.createTap(everything,
                               [this](const MouseEvent& event) { told_.push_back(event); });
        enable();
        input_.movePointer(100, 100);
        told();
    }

    /// The mouse speaks through another connection, so the server has to know of the tap first.
    void enable() {
        tap_->enable();
        connection_->synchronize();
    }

    /// What has been told since the last call. The server answers in the order of events, so
    /// everything that has happened by now is in it.
    std::vector<MouseEvent> told() {
        input_.roundTrip();
        // A press makes the tap ask for movements; what happens next is told from then on.
        connection_->synchronize();
        connection_->dispatch();
        connection_->synchronize();
        connection_->dispatch();
        rest();
        return std::exchange(told_, {});
    }

    /// What has happened by now, without any time that passes.
    void deliver() {
        input_.roundTrip();
        connection_->synchronize();
        connection_->dispatch();
        // What the tap has asked of the server meanwhile holds from now on.
        connection_->synchronize();
    }

    /// Whether the server has sent anything that would wake the program up.
    bool isAnythingToRead() const {
        pollfd descriptor{connection_->fileDescriptor(), POLLIN, 0};
        return poll(&descriptor, 1, 0) > 0;
    }

    /// Lets the time pass until the tap has seen that the pointer rests: a look that finds it
    /// elsewhere, one that finds it there, and one more.
    void rest() {
        for (int looks = 0; looks < 4; ++looks) {
            look();
        }
    }

    /// The next time that the tap looks at the pointer, if it does.
    void look() {
        runLoop_.advance(frame_);
        connection_->synchronize();
        connection_->dispatch();
        connection_->synchronize();
    }

    PrivateServer server_{MonitorLayout::landscape(), PrivateServer::Kind::virtualFramebuffer};
    InputDriver input_{server_.display()};
    std::unique_ptr<X11Connection> connection_ = X11Connection::open(server_.display());
    X11Monitors monitors_{*connection_};
    SimulatedClock clock_;
    SimulatedRunLoop runLoop_{clock_};
    const double frame_ = X11RefreshRate(*connection_, monitors_.randr()).frame();
    X11MouseEventSource taps_{*connection_, monitors_, runLoop_};
    std::unique_ptr<MouseTap> tap_;
    std::vector<MouseEvent> told_;
};

}  // namespace desktop
}  // namespace lumatile
