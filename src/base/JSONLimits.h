#pragma once

#include <cstddef>

namespace lumatile {

/// How large a JSON text may be before it is refused unread. Whoever reads a stored value chooses
/// the bounds; beyond them it is damaged or hostile, and reading on would only cost memory.
struct JSONLimits {
    std::size_t bytes = 0;  ///< Length of the whole text.
    std::size_t depth = 0;  ///< Arrays and objects open at once; a lone scalar has depth 0.
    std::size_t stringBytes =
        0;                   ///< Length of one string or object key, in UTF-8 bytes, unescaped.
    std::size_t values = 0;  ///< Values in the whole text, containers counted as well.
};

}  // namespace lumatile
