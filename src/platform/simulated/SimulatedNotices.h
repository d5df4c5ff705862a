#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "ports/Notice.h"
#include "ports/NoticePanel.h"
#include "ports/Notifications.h"

namespace lumatile {

/// What the user was shown in one place, and the button there.
template <typename Port>
class SimulatedNotices final : public Port {
public:
    void show(const Notice& notice, std::function<void()> chosen) override {
        shown_.push_back(notice);
        chosen_ = std::move(chosen);
    }

    /// Everything that was shown, oldest first; the last is in front of the user.
    const std::vector<Notice>& shown() const { return shown_; }

    /// The user chooses the action of what was shown last; nothing where it has none.
    void choose() {
        if (!shown_.empty() && !shown_.back().action.empty()) {
            chosen_();
        }
    }

private:
    std::vector<Notice> shown_;
    std::function<void()> chosen_;
};

using SimulatedNotifications = SimulatedNotices<Notifications>;
using SimulatedNoticePanel = SimulatedNotices<NoticePanel>;

}  // namespace lumatile
