#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "onboarding/HostDesktop.h"
#include "onboarding/Vocabulary.h"

namespace lumatile {

/// Which desktop the program runs on, and the words for it. Looked up when it is first asked.
class HostWords {
public:
    /// @param sessionNames what the session calls itself (XDG_CURRENT_DESKTOP), by colons
    HostWords(std::string sessionNames, std::function<std::string()> windowManagerName)
        : sessionNames_(std::move(sessionNames)),
          windowManagerName_(std::move(windowManagerName)) {}

    HostDesktop host();

    /// `text` of a catalogue in the words of this desktop.
    std::string apply(std::string_view text);

    /// The next question looks anew: a window manager that was not there before may be what names
    /// the desktop.
    void forget() { known_.reset(); }

private:
    struct Known {
        HostDesktop host;
        Vocabulary vocabulary;
    };

    const Known& known();

    std::string sessionNames_;
    std::function<std::string()> windowManagerName_;
    std::optional<Known> known_;
};

}  // namespace lumatile
