#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11HotKeyPlatform.h"
#include "tests/desktop/support/Deadline.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// The hot keys under test on a connection of their own, and the presses that reached them.
class HotKeyDesk {
public:
    explicit HotKeyDesk(const std::string& display);

    X11Connection& connection() { return *connection_; }
    X11HotKeyPlatform& hotKeys() { return *hotKeys_; }

    /// Registers under an id of the caller's choice.
    std::optional<HotKeyReference> want(std::uint32_t keyCode, std::uint32_t modifiers,
                                        std::uint32_t id);

    /// The ids of the presses so far, in order. Everything that the server has sent by now is
    /// counted, since it answers in the order of events.
    std::vector<std::uint32_t> presses();
    void forgetPresses();

    /// Runs the events until `condition` holds.
    bool runUntil(const std::function<bool()>& condition);

    /// Key presses that the server sent to the connection, repeats included.
    std::size_t pressesSent() const { return pressesSent_; }

    /// How often it was told that combinations may be had or have been lost.
    int tellings() const { return tellings_; }

    /// True when the keyboard was read anew since the last call.
    bool keyboardChanged();

    /// Ends the hot keys, as the end of the program does.
    void closeHotKeys() { hotKeys_.reset(); }

    const std::vector<std::uint32_t>& delivered() const { return delivered_; }

private:
    std::unique_ptr<X11Connection> connection_;
    std::unique_ptr<X11HotKeyPlatform> hotKeys_;
    std::vector<std::uint32_t> delivered_;
    std::size_t pressesSent_ = 0;
    int tellings_ = 0;
    bool keyboardChanged_ = false;
    X11Connection::Subscription subscription_;
};

/// Another program that takes keys.
class OtherProgram : public XClient {
public:
    using XClient::XClient;

    /// @return false when somebody else has it
    bool take(std::uint8_t key, unsigned modifiers);
    void giveBack(std::uint8_t key, unsigned modifiers);
};

}  // namespace lumatile::desktop
