#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/kwin/KWinReport.h"

namespace lumatile {

/// The windows and screens of a KWin session as its script told them last: what answers reads.
class KWinMirror {
public:
    void apply(const KWinEvent& event);

    /// Nothing is known any more: KWin is gone, or another one.
    void clear();

    /// Null when there is no such window. Pointers do not outlive the next `apply`.
    KWinWindow* find(std::string_view id);

    /// The windows, those that had the focus last first; of those that never had it, the topmost.
    std::vector<KWinWindow*> windows();

    /// The window that has the focus; null when none has.
    KWinWindow* active();

    /// In KWin's order.
    const std::vector<KWinScreen>& screens() const { return screens_; }

private:
    void take(KWinWindowRecord record);
    void toFront(const std::string& id);

    std::unordered_map<std::string, KWinWindow> windows_;
    std::vector<std::string> order_;
    std::optional<std::string> active_;
    std::vector<KWinScreen> screens_;
};

}  // namespace lumatile
