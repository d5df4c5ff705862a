#pragma once

#include <functional>

#include "ports/Notice.h"

namespace lumatile {

/// Port: a small window of this program's own, in front of the others, that answers what the user
/// has just asked.
class NoticePanel {
public:
    virtual ~NoticePanel() = default;

    /// Shows `notice` in place of the one shown before, and returns at once. `chosen` is called
    /// from the run loop when the user chooses the action.
    virtual void show(const Notice& notice, std::function<void()> chosen) = 0;
};

}  // namespace lumatile
