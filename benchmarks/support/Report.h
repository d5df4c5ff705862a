#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "benchmarks/support/Figure.h"
#include "benchmarks/support/Statistics.h"

namespace lumatile::benchmark {

/// What a benchmark has found: what was measured, then the figures drawn from it with a verdict on
/// each.
struct Report {
    /// Columns that the names take in a table.
    static constexpr int nameWidth = 52;

    std::string measurements;     ///< For a reader: lines of text.
    nlohmann::ordered_json data;  ///< For a program: an object with the same.
    std::vector<Figure> figures;

    /// For a reader.
    std::string table() const;

    /// For a program: `data`, and the figures under "wanted".
    std::string json() const;

    bool isAsWanted() const;

    /// The heading over rows of times; `title` says the unit.
    static std::string timesHeading(const std::string& title);
    static std::string timesRow(const std::string& name, const Statistics& times);
    static nlohmann::ordered_json timesData(const std::string& name, const Statistics& times);
};

}  // namespace lumatile::benchmark
