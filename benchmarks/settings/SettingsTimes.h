#pragma once

#include "benchmarks/support/Statistics.h"

namespace lumatile::benchmark {

/// How long the user waits for a program that lives in the bar. Microseconds.
struct SettingsTimes {
    Statistics start;       ///< From the start to the status item being shown.
    Statistics firstOpen;   ///< From the request to the window with its contents.
    Statistics secondOpen;  ///< The same when it was open once before.

    /// One after the other, so that both meet the same machine.
    struct Pair;
    static Pair measure(int rounds);
};

struct SettingsTimes::Pair {
    SettingsTimes ours;
    SettingsTimes bare;  ///< A program of the same toolkit that does nothing else.
};

}  // namespace lumatile::benchmark
