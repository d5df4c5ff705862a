#pragma once

#include <optional>
#include <string>
#include <vector>

#include "benchmarks/protection/IdleCost.h"
#include "benchmarks/protection/StepCost.h"
#include "benchmarks/protection/SteppingMemory.h"

namespace lumatile::benchmark {

/// What the panel protection costs, beside what is wanted of it.
class ProtectionReport {
public:
    /// @param steps in ascending order of their windows, at least two
    /// @param idle absent when it was not asked for
    ProtectionReport(std::vector<StepCost> steps, SteppingMemory memory,
                     std::optional<IdleCost> idle);

    /// For a reader.
    std::string table() const;

    /// For a program.
    std::string json() const;

    bool isAsWanted() const;

private:
    struct Row {
        std::string name;
        double value;
        double wantedAtMost;

        bool holds() const { return value <= wantedAtMost; }
    };

    std::vector<StepCost> steps_;
    SteppingMemory memory_;
    std::optional<IdleCost> idle_;
    std::vector<Row> rows_;
};

}  // namespace lumatile::benchmark
