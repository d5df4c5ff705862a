#pragma once

#include <string>
#include <vector>

#include "benchmarks/desktop/SnapLatency.h"
#include "benchmarks/desktop/WindowEnumeration.h"

namespace lumatile::benchmark {

/// The figures, as ratios beside what is wanted of them.
class Report {
public:
    Report(SnapLatency snap, WindowEnumeration enumeration);

    /// For a reader.
    std::string table() const;

    /// For a program.
    std::string json() const;

    /// Whether every ratio is as wanted.
    bool isAsWanted() const;

private:
    struct Row {
        std::string name;
        std::string unit;  ///< Empty for a ratio.
        double value;
        double wanted;
        bool atMost;  ///< Wanted: at most that much, else at least.

        bool holds() const { return atMost ? value <= wanted : value >= wanted; }
    };

    std::vector<SnapMethod> methods() const;

    SnapLatency snap_;
    WindowEnumeration enumeration_;
    std::vector<Row> rows_;
};

}  // namespace lumatile::benchmark
