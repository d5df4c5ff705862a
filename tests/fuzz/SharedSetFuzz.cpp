#include <cstddef>
#include <cstdint>
#include <string>

#include "preference_sync/SharedSetCodec.h"
#include "preference_sync/SharedSetReplica.h"
#include "tests/fuzz/FuzzInput.h"

// The file in a shared folder is one that other computers and their services write.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace lumatile;
    const std::string text = fuzzInput(data, size);
    const auto set = SharedSetCodec::parse(text);
    if (set) {
        fuzzRequire(SharedSetCodec::print(*set) == text, "only what is written is read");
        SharedSetReplica replica;
        fuzzRequire(replica.found(*set), "the first reading is news");
        fuzzRequire(!replica.found(*set), "the second is none");
    }
    // Any bytes can be shared as a value.
    const SharedSet own{{"commands", text}};
    const auto printed = SharedSetCodec::print(own);
    fuzzRequire(printed.has_value() == (text.size() <= SharedSetCodec::largestValue),
                "what is within the bounds is written");
    fuzzRequire(!printed || SharedSetCodec::parse(*printed) == own, "what is written is read");
    return 0;
}
