#pragma once

#include <cstdint>
#include <functional>

#include "tests/desktop/support/Deadline.h"

namespace lumatile::desktop {

/// The pointer of a private desktop. Places are those of the space of its monitors.
class Pointer {
public:
    Pointer() = default;
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;
    virtual ~Pointer() = default;

    /// Returns when the desktop has seen it.
    virtual void movePointer(int x, int y) = 0;

    /// @param button of the device, whatever programs take it for
    virtual void buttonDown(std::uint8_t button) = 0;
    virtual void buttonUp(std::uint8_t button) = 0;

    /// Waits until `condition` holds, which is looked at whenever something happens.
    virtual bool waitUntil(const std::function<bool()>& condition, Deadline deadline) = 0;
};

}  // namespace lumatile::desktop
