#pragma once

#include "windows/AccessibilityPlatform.h"

namespace lumatile {

/// Joins the writes to one element while it lives: they are one change of it.
class JoinedWrites {
public:
    /// @param platform outlives this
    JoinedWrites(AccessibilityPlatform& platform, const Element& element) : platform_(platform) {
        platform_.beginJoinedWrites(element);
    }
    JoinedWrites(const JoinedWrites&) = delete;
    JoinedWrites& operator=(const JoinedWrites&) = delete;
    ~JoinedWrites() { platform_.endJoinedWrites(); }

private:
    AccessibilityPlatform& platform_;
};

}  // namespace lumatile
