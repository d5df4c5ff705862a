#pragma once

#include <gio/gio.h>

#include <string>
#include <string_view>

#include "platform/freedesktop/glib/GLibHandles.h"

namespace lumatile {

/// The running program of a desktop, as another program sees it.
class ControlClient {
public:
    /// What a request came to.
    struct Answer {
        GVariantHandle value;      ///< Null when it was not carried out.
        bool isRunning = true;     ///< False when there is no program to ask.
        std::string refusal = {};  ///< Why it was not carried out, in words.
    };

    /// @param address of the session bus; empty: there is none
    /// @param display the desktop, as in $DISPLAY
    ControlClient(const std::string& address, std::string_view display);

    /// Waits for the answer, some seconds at most.
    /// @param arguments a tuple, or null for none; taken over
    Answer ask(const char* verb, GVariant* arguments = nullptr) const;

private:
    std::string name_;
    GObjectHandle<GDBusConnection> connection_;  ///< Null without a bus.
};

}  // namespace lumatile
