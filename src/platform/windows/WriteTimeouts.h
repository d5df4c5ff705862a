#pragma once

#include <optional>
#include <unordered_map>

#include "windows/AccessibilityPlatform.h"

namespace lumatile {

/// How long a write waits for a window's answer, seconds: the shortest of what is set for the
/// window, for its application and for all.
class WriteTimeouts {
public:
    /// What nothing that is set can lengthen.
    static constexpr double longest = 0.25;

    /// One that is not shorter than the longest sets nothing.
    void set(Pid application, double seconds);

    /// @param window what is set for the window itself
    /// @param application absent when it is not known
    /// @param most of the answer, unless something shorter is set
    double of(std::optional<double> window, std::optional<Pid> application,
              double most = longest) const;

private:
    std::unordered_map<Pid, double> applications_;
};

}  // namespace lumatile
