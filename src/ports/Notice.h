#pragma once

#include <string>

namespace lumatile {

/// A short text for the user, with something to do about it.
struct Notice {
    std::string title;
    std::string text;
    std::string action;  ///< The button; empty for none.

    bool operator==(const Notice&) const = default;
};

}  // namespace lumatile
