#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/simulated/SimulatedWindow.h"
#include "windows/AccessibilityPlatform.h"

namespace lumatile {

/// An application as it starts.
struct SimulatedApplicationTraits {
    std::optional<Pid> pid = std::nullopt;  ///< Absent: nobody can find out which process it is.
    std::optional<std::string> applicationId = std::nullopt;
    std::optional<bool> isRegular =
        std::nullopt;  ///< Absent: regular while it has a standard window.
    std::optional<bool> enhancedUserInterface =
        std::nullopt;  ///< Absent: the attribute is not there.
};

/// A running application.
struct SimulatedApplication {
    ApplicationID id{};
    SimulatedApplicationTraits traits;
    std::vector<WindowID> windows;     ///< Open ones, in the order of opening.
    std::vector<WindowID> focusOrder;  ///< Those that have had the focus, the latest last.
    SimulatedFaults faults;
    bool isHidden = false;           ///< By the user, with all its windows.
    bool isHung = false;             ///< Answers nothing until it recovers.
    double messagingTimeout = 0.25;  ///< Longest wait for it, seconds.
};

}  // namespace lumatile
