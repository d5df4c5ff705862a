#pragma once

#include <functional>

#include "ports/Notice.h"

namespace lumatile {

/// Port: the desktop's notifications.
class Notifications {
public:
    virtual ~Notifications() = default;

    /// Shows `notice` in place of the one shown before; nothing where the desktop shows none.
    /// `chosen` is called from the run loop when the user chooses the action.
    virtual void show(const Notice& notice, std::function<void()> chosen) = 0;
};

}  // namespace lumatile
