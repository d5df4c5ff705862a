#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <vector>

#include "tests/desktop/support/KeyPosition.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// The hands of the user: keys and pointer of a private server.
class InputDriver : public XClient {
public:
    explicit InputDriver(const std::string& display);
    InputDriver(const InputDriver&) = delete;
    InputDriver& operator=(const InputDriver&) = delete;

    /// Lets go of everything it holds and of the locks.
    ~InputDriver() override;

    void keyDown(std::uint8_t key);
    void keyUp(std::uint8_t key);

    /// Holds the modifiers, presses and releases the key, lets go of the modifiers.
    void press(std::span<const std::uint8_t> modifiers, std::uint8_t key);

    void press(std::initializer_list<std::uint8_t> modifiers, std::uint8_t key) {
        press(std::span(modifiers.begin(), modifiers.size()), key);
    }

    /// Turns a lock on or off by pressing its key, where it is not so already.
    /// @return false for a key that locks nothing on this server
    bool setLock(std::uint8_t lockKey, bool on);

    void movePointer(int x, int y);
    void buttonDown(std::uint8_t button = 1);
    void buttonUp(std::uint8_t button = 1);

private:
    void send(std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0);
    std::uint16_t modifierOf(std::uint8_t key);
    std::uint16_t modifiersNow();

    std::vector<std::uint8_t> heldKeys_;
    std::vector<std::uint8_t> heldButtons_;
};

}  // namespace lumatile::desktop
