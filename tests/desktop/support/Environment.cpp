#include "tests/desktop/support/Environment.h"

#include <array>
#include <cstdlib>

namespace lumatile::desktop {

Environment inheritedEnvironment() {
    static constexpr std::array names{
        "PATH",         "TMPDIR",       "LD_LIBRARY_PATH",  "XDG_DATA_DIRS", "XDG_CONFIG_DIRS",
        "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS",    "TSAN_OPTIONS",  "GCOV_PREFIX",
        "TZ",           "TZDIR",        "LLVM_PROFILE_FILE"};
    Environment environment;
    for (const char* name : names) {
        if (const char* value = std::getenv(name)) {
            environment[name] = value;
        }
    }
    environment["LANG"] = "C.UTF-8";
    return environment;
}

std::vector<std::string> assignments(const Environment& environment) {
    std::vector<std::string> result;
    result.reserve(environment.size());
    for (const auto& [name, value] : environment) {
        result.push_back(name + "=" + value);
    }
    return result;
}

}  // namespace lumatile::desktop
