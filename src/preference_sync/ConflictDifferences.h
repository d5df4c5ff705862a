#pragma once

#include <string>

namespace lumatile {

/// What two copies differ in, in words: for each copy what it has in place of the other's. Both are
/// empty where that is not known.
struct ConflictDifferences {
    std::string local;
    std::string remote;

    friend bool operator==(const ConflictDifferences&, const ConflictDifferences&) = default;
};

}  // namespace lumatile
