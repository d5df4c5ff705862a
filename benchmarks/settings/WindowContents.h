#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "tests/desktop/support/XClient.h"

namespace lumatile::benchmark {

/// Sees a large window of another program open, up to the moment when there is something in it.
class WindowContents : public desktop::XClient {
public:
    explicit WindowContents(const std::string& display);

    /// Waits for a window to be mapped and drawn.
    /// @throws DesktopError when none is
    void waitForOpened();

    /// Asks the window manager to close the window, and waits until it is unmapped.
    /// @throws DesktopError when it stays
    void close();

protected:
    void handle(const xcb_generic_event_t& event) override;

private:
    bool isDrawn();

    xcb_window_t opened_ = XCB_WINDOW_NONE;
};

}  // namespace lumatile::benchmark
