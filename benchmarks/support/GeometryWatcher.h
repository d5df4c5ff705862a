#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::benchmark {

/// Presses a key, or lets go of the button, and notes when the server has a window in its new
/// place. It learns of it from the server's events alone and asks nothing meanwhile, so that it
/// costs every contestant the same.
class GeometryWatcher : public desktop::XClient {
public:
    using Clock = std::chrono::steady_clock;

    /// Where a window is: its top-level frame on the root and the client's size in it.
    struct Place {
        desktop::PixelRect frame;
        int clientWidth = 0;
        int clientHeight = 0;

        bool operator==(const Place&) const = default;
    };

    /// @param window managed, with a frame of the window manager's round it
    GeometryWatcher(const std::string& display, xcb_window_t window);

    /// As the server has it now.
    Place place();

    /// The time from pressing `key` to the window being at `target`, microseconds. The key stays
    /// down.
    /// @return absent when the window is not there within five seconds
    std::optional<double> press(std::uint8_t key, const Place& target);

    /// The same from letting go of the left button, which somebody else has pressed.
    std::optional<double> release(const Place& target);

protected:
    void handle(const xcb_generic_event_t& event) override;

private:
    std::optional<double> arrivalAfter(std::uint8_t type, std::uint8_t detail, const Place& target);

    xcb_window_t window_;
    xcb_window_t frame_;
    Place place_;
    std::optional<Place> target_;
    std::optional<Clock::time_point> arrival_;
};

}  // namespace lumatile::benchmark
