#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ports/SystemLog.h"

namespace lumatile {

/// Keeps what is written to it.
class RecordedLog final : public SystemLog {
public:
    void write(std::string_view type, std::string_view message) override {
        lines.push_back(std::string(type) + ": " + std::string(message));
    }

    std::vector<std::string> lines;
};

}  // namespace lumatile
