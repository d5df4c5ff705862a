#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/kwin/KWinReport.h"

namespace lumatile {

/// Moves a window's outer frame, resizes it, or both; whole logical pixels of KWin's space. One
/// that is maximized or tiled is taken out of that first.
struct KWinPlaceOrder {
    std::string id;
    std::optional<double> x, y, width, height;  ///< What is absent stays.
};

/// Holds KWin's own snapping at the edges back, or gives it back.
struct KWinBordersOrder {
    bool isTaken = false;
    KWinBorders own;  ///< What it is set to when it is not held back.
};

/// Gives a window of a program the focus and brings it in front; one that is not there yet, as soon
/// as it is, within a few seconds.
struct KWinFrontOrder {
    std::int64_t pid = 0;
    std::string title;
};

/// Gives everything back; the script is silent from then on.
struct KWinEndOrder {};

using KWinOrder = std::variant<KWinPlaceOrder, KWinBordersOrder, KWinFrontOrder, KWinEndOrder>;

/// An order with the number under which its result is told.
struct KWinNumberedOrder {
    std::uint64_t number = 0;
    KWinOrder order;
};

/// As the script reads them.
std::string kwinOrdersText(const std::vector<KWinNumberedOrder>& orders);

}  // namespace lumatile
