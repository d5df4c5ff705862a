#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/x11/X11KeptRamps.h"
#include "tests/fuzz/FuzzInput.h"

// What lies in the property of the root window, as 32-bit items.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace lumatile;
    std::vector<std::uint32_t> items(size / sizeof(std::uint32_t));
    if (!items.empty()) {
        std::memcpy(items.data(), data, items.size() * sizeof(std::uint32_t));
    }
    const auto kept = X11KeptRamps::decoded(items);
    if (!kept) {
        return 0;
    }
    for (const auto& [controller, ramp] : kept->ramps) {
        fuzzRequire(ramp.size() > 0 && ramp.size() <= X11GammaRamp::largestSize &&
                        ramp.steps.size() == ramp.size() * X11GammaRamp::channels,
                    "a ramp has all three colours and is within the bounds");
    }
    const auto pieces = kept->encoded();
    fuzzRequire(pieces.has_value(), "what is read can be written");
    std::vector<std::uint32_t> written;
    for (const auto& piece : *pieces) {
        written.insert(written.end(), piece.begin(), piece.end());
    }
    fuzzRequire(X11KeptRamps::decoded(written) == kept, "what is written is read back");
    return 0;
}
