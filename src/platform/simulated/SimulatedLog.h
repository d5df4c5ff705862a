#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ports/SystemLog.h"

namespace lumatile {

/// The system log, kept as the lines that a reader would see.
class SimulatedLog final : public SystemLog {
public:
    void write(std::string_view type, std::string_view message) override;

    /// Every line so far, oldest first.
    const std::vector<std::string>& lines() const { return lines_; }

private:
    std::vector<std::string> lines_;
};

}  // namespace lumatile
