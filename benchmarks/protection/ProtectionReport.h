#pragma once

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
    /// @param idleCosts empty when it was not asked for
    ProtectionReport(std::vector<StepCost> steps, SteppingMemory memory,
                     std::vector<IdleCost> idleCosts);

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
    std::vector<IdleCost> idle_;
    std::vector<Row> rows_;
};

}  // namespace lumatile::benchmark
