#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "platform/kwin/KWinChannel.h"

namespace lumatile {

/// KWin's own snapping of windows that are dragged to an edge, which is held back while this
/// program does that. What the user had set is noted in a file before it is touched, so that it is
/// given back also by the run after one that died.
class KWinEdgeTiling {
public:
    /// @param channel outlives this
    /// @param note file that goes with the user's session
    KWinEdgeTiling(KWinChannel& channel, std::filesystem::path note);
    KWinEdgeTiling(const KWinEdgeTiling&) = delete;
    KWinEdgeTiling& operator=(const KWinEdgeTiling&) = delete;

    /// Gives it back, and waits for that no longer than a write takes.
    ~KWinEdgeTiling();

    void hold(bool isHeld);

private:
    void note(const KWinEvent& event);
    std::optional<KWinBorders> readNote() const;
    void order();
    void forgetNote();

    KWinChannel& channel_;
    std::filesystem::path file_;
    std::optional<KWinBorders> own_;  // What the user has set; absent before KWin has told.
    bool isHeld_ = false;
    std::uint64_t givingBack_ = 0;  // The order that does, until it has been carried out; 0: none.
    KWinChannel::EventSubscription events_;
};

}  // namespace lumatile
