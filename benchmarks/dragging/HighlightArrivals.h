#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::benchmark {

/// Notes when the server has a window that no window manager knows of, as the highlight is one, at
/// a place: mapped there, or moved there while it is mapped. It learns of it from the server's
/// events alone.
class HighlightArrivals : public desktop::XClient {
public:
    using Clock = std::chrono::steady_clock;

    struct Arrival {
        desktop::PixelRect place;
        Clock::time_point at;
    };

    explicit HighlightArrivals(const std::string& display);

    /// In order of time, since the last `forget`.
    const std::vector<Arrival>& arrivals() const { return arrivals_; }
    void forget() { arrivals_.clear(); }

    /// Where it is mapped now; absent when it is not.
    std::optional<desktop::PixelRect> shown() const;

protected:
    void handle(const xcb_generic_event_t& event) override;

private:
    struct TopLevel {
        desktop::PixelRect place;
        bool isOverlay = false;  ///< Mapped, and without the window manager's knowledge.
    };

    std::map<xcb_window_t, TopLevel> topLevels_;
    std::vector<Arrival> arrivals_;
};

}  // namespace lumatile::benchmark
