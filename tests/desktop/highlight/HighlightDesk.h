#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// The highlight in a program of its own, and what another program sees of it.
class HighlightDesk : public XClient {
public:
    /// Something that happened to the highlight's window.
    enum class Change { mapped, unmapped, moved };

    /// @param scale the toolkit's variables: "QT_SCALE_FACTOR" …
    HighlightDesk(PrivateSession& session, const std::string& display, const Environment& scale);
    HighlightDesk(const HighlightDesk&) = delete;
    HighlightDesk& operator=(const HighlightDesk&) = delete;
    ~HighlightDesk() override;

    /// @param frame accessibility space
    void show(const PixelRect& frame);
    void hide();

    /// Waits until it is there, opaque as far as it gets, and has a window round `frame` (root
    /// coordinates) that is at most `slack` pixels larger.
    bool waitUntilShown(const PixelRect& frame, int slack = 0);
    bool waitUntilHidden();

    /// The window that is shown, or was last.
    xcb_window_t window();
    bool isMapped();

    /// 0 to 1, as compositors are told.
    double opacity();

    /// What happened since the last `forget`.
    const std::vector<Change>& changes();
    void forget() { changes_.clear(); }

    /// Whether it lies above `other`, or above the frame that holds it.
    bool isAbove(xcb_window_t other);

protected:
    void handle(const xcb_generic_event_t& event) override;

private:
    void write(const std::string& line);
    std::optional<PixelRect> area();

    int input_ = -1;
    ChildProcess process_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    std::vector<Change> changes_;
};

}  // namespace lumatile::desktop
