#pragma once

#include <string_view>

namespace lumatile {

/// The names that services which mirror folders give to one of two files that were changed at once.
struct CollisionCopyName {
    CollisionCopyName() = delete;

    /// Whether `name` is such a copy's of the file `original`, as in "a.sync-conflict-….json",
    /// "a (1).json", "a (conflicted copy …).json" for "a.json". False for the original itself.
    static bool isCopyOf(std::string_view original, std::string_view name);
};

}  // namespace lumatile
