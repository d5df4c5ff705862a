#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/simulated/SimulatedRunLoop.h"
#include "ports/StatusItem.h"

namespace lumatile {

/// The status item in the bar, as the user sees and clicks it.
class SimulatedStatusItem final : public StatusItem {
public:
    /// @param runLoop outlives the item; clicks arrive on it
    explicit SimulatedStatusItem(SimulatedRunLoop& runLoop) : runLoop_(runLoop) {}

    void setImage(const StatusImage& image) override;
    void setMenu(StatusMenu menu, std::function<void()> menuWillOpen) override;
    void setStatusLine(std::size_t index, const StatusLine& line) override;
    void setChecked(std::size_t index, bool checked) override;

    // What the user does.

    /// Opens the menu; a click on the item.
    void open();

    /// Opens the menu and chooses the first item of that title.
    /// @return false when there is none that can be chosen
    bool choose(std::string_view title);

    // What the user sees.

    /// Absent while the item is not in the bar.
    const std::optional<StatusImage>& image() const { return image_; }

    /// As it stands; only `open` refreshes it.
    const StatusMenu& menu() const { return menu_; }

    /// The menu, one line an item: titles, "[title]" for headers, "-" for separators.
    std::vector<std::string> lines() const;

    /// The first item of that title; null when there is none.
    const ClosureMenuItem* find(std::string_view title) const;

    /// Every picture that was set, in order.
    const std::vector<StatusImage>& images() const { return images_; }

    /// Menus installed so far.
    std::size_t rebuilds() const { return rebuilds_; }

private:
    SimulatedRunLoop& runLoop_;
    std::optional<StatusImage> image_;
    std::vector<StatusImage> images_;
    StatusMenu menu_;
    std::function<void()> menuWillOpen_;
    std::size_t rebuilds_ = 0;
};

}  // namespace lumatile
