#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <vector>

#include "tests/desktop/support/kwin/WaylandClient.h"

struct org_kde_kwin_fake_input;
struct org_kde_kwin_keystate;

namespace lumatile::desktop {

/// The hands of the user: keys and pointer of a private KWin session. What was done has reached the
/// compositor when a function returns.
class FakeInput : public WaylandClient {
public:
    explicit FakeInput(const std::string& socket);
    FakeInput(const FakeInput&) = delete;
    FakeInput& operator=(const FakeInput&) = delete;

    /// Lets go of everything it holds.
    ~FakeInput() override;

    /// @param key position, `KeyPosition`
    void keyDown(std::uint8_t key);
    void keyUp(std::uint8_t key);

    /// Holds the modifiers, presses and releases the key, lets go of the modifiers.
    void press(std::span<const std::uint8_t> modifiers, std::uint8_t key);

    /// Turns a lock on or off by pressing its key, where it is not so already.
    /// @return false for a key that locks nothing
    bool setLock(std::uint8_t lockKey, bool on);

    /// To a place of the compositor's space, logical pixels.
    void movePointer(double x, double y);

    /// @param button 1 left, 2 middle, 3 right, as X numbers them
    void buttonDown(std::uint8_t button = 1);
    void buttonUp(std::uint8_t button = 1);

    /// Turns the wheel; positive: down.
    void turnWheel(double steps);

private:
    void sendKey(std::uint8_t key, bool down);
    void sendButton(std::uint8_t button, bool down);

    struct LockNews;

    org_kde_kwin_fake_input* input_;
    org_kde_kwin_keystate* locks_;
    std::map<std::uint32_t, bool> locked_;  // As the compositor told it last.
    std::vector<std::uint8_t> heldKeys_;
    std::vector<std::uint8_t> heldButtons_;
};

}  // namespace lumatile::desktop
