#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tests/desktop/support/TestWindow.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::benchmark {

/// Moves windows one after the other and waits for each to be there, and does nothing else: what
/// the window manager and the server need by themselves.
class BareMoves : public desktop::XClient {
public:
    BareMoves(const std::string& display,
              const std::vector<std::unique_ptr<desktop::TestWindow>>& windows);

    /// Moves every window by so much.
    /// @return microseconds
    /// @throws DesktopError when one does not move
    double move(int dx, int dy);

protected:
    void handle(const xcb_generic_event_t& event) override;

private:
    struct Place {
        xcb_window_t window = XCB_WINDOW_NONE;
        int x = 0;  ///< Of the outer frame.
        int y = 0;
    };

    std::vector<Place> places_;
    xcb_window_t awaited_ = XCB_WINDOW_NONE;
};

}  // namespace lumatile::benchmark
