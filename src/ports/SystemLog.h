#pragma once

#include <string_view>

namespace lumatile {

/// Port: the system log.
class SystemLog {
public:
    virtual ~SystemLog() = default;

    /// Writes one line, "Type: message".
    virtual void write(std::string_view type, std::string_view message) = 0;
};

}  // namespace lumatile
