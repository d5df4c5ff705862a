#pragma once

#include "tests/desktop/support/InputDriver.h"
#include "tests/desktop/support/Pointer.h"

namespace lumatile::desktop {

/// The pointer of a private X server.
class XPointer : public Pointer {
public:
    /// @param input outlives this
    explicit XPointer(InputDriver& input) : input_(input) {}

    void movePointer(int x, int y) override {
        input_.movePointer(x, y);
        input_.roundTrip();
    }
    void buttonDown(std::uint8_t button) override { input_.buttonDown(button); }
    void buttonUp(std::uint8_t button) override { input_.buttonUp(button); }
    bool waitUntil(const std::function<bool()>& condition, Deadline deadline) override {
        return XClient::waitUntil(condition, deadline);
    }

private:
    InputDriver& input_;
};

}  // namespace lumatile::desktop
