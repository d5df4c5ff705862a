#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "windows/AccessibilityPlatform.h"

namespace lumatile {

/// An application with at least one window on the desktop.
struct RunningApplication {
    Pid pid = 0;
    /// The id of its desktop file, else its window class in small letters: the same in every
    /// session.
    std::optional<std::string> applicationId;
    bool isRegular = false;  ///< Has at least one ordinary window, as opposed to panels and tools.
    bool isHidden = false;   ///< None of its windows can be seen.
};

/// Port: the running applications, and what the desktop opens for a program.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// The application that owns the active window; absent when none is active or its process is
    /// not known.
    virtual std::optional<RunningApplication> frontmostApplication() = 0;

    /// The application, this program left out, whose ordinary window lies on top of what can be
    /// seen: where the user worked before a window of this program came in front. Absent when no
    /// such window can be seen.
    virtual std::optional<RunningApplication> frontmostOtherApplication() = 0;

    /// All applications whose process is known, each once.
    virtual std::vector<RunningApplication> runningApplications() = 0;

    /// The process id of this program itself.
    virtual Pid ownPid() = 0;

    /// Opens what an address names: a page of the desktop's settings.
    /// @return false when this desktop has nothing of the kind
    virtual bool open(std::string_view address) = 0;
};

}  // namespace lumatile
