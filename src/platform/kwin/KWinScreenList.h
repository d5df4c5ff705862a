#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "displays/ScreenList.h"
#include "platform/kwin/KWinChannel.h"

namespace lumatile {

/// The screens as KWin's script tells them; logical pixels. The accessibility space of the session
/// begins at the top-left corner of the primary one.
class KWinScreenList final : public ScreenList {
public:
    /// The frame of the primary screen in KWin's space; absent where that is not known.
    using Primary = std::function<std::optional<Rect>()>;

    /// @param channel outlives the list
    /// @param primary which of the screens it is; where it names none, it is the script's first
    KWinScreenList(KWinChannel& channel, Primary primary);

    std::vector<PlatformScreen> screens() override;
    Point origin() override;

private:
    std::vector<KWinScreen> inOrder(const KWinMirror& mirror);

    KWinChannel& channel_;
    Primary primary_;
};

}  // namespace lumatile
