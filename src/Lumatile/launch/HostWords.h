#pragma once

#include <cstdint>
#include <functional>
#include <map>
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
    /// @param keyLegends what is on the keys, by virtual key code; asked whenever a text names
    /// keys, since the layout may have become another; empty: as on a US keyboard
    HostWords(std::string sessionNames, std::function<std::string()> windowManagerName,
              std::function<std::map<std::uint32_t, std::string>()> keyLegends = {})
        : sessionNames_(std::move(sessionNames)),
          windowManagerName_(std::move(windowManagerName)),
          keyLegends_(std::move(keyLegends)) {}

    HostDesktop host();

    /// `text` of a catalogue in the words of this desktop.
    std::string apply(std::string_view text);

    /// What the present layout has on a key, by what a US keyboard has there.
    std::string legend(std::string_view usLegend);

    /// What it has on the key of that virtual key code; empty: not known.
    std::string legend(std::uint32_t keyCode) const;

    /// The next question looks anew: a window manager that was not there before may be what names
    /// the desktop.
    void forget() { known_.reset(); }

private:
    struct Known {
        HostDesktop host;
        Vocabulary vocabulary;
    };

    Known& known();
    void readLegends();

    std::string sessionNames_;
    std::function<std::string()> windowManagerName_;
    std::function<std::map<std::uint32_t, std::string>()> keyLegends_;
    std::optional<Known> known_;
};

}  // namespace lumatile
