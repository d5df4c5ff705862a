#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

namespace lumatile {

inline std::string fuzzInput(const std::uint8_t* data, std::size_t size) {
    return {data, data + size};
}

/// Ends the process, which is how the fuzzer learns of a finding, when `holds` is false.
inline void fuzzRequire(bool holds, const char* what) {
    if (!holds) {
        std::cerr << "does not hold: " << what << '\n';
        std::abort();
    }
}

}  // namespace lumatile
