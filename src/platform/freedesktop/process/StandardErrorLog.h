#pragma once

#include <string>
#include <string_view>

#include "ports/SystemLog.h"

namespace lumatile {

/// The system log as lines on standard error, which a session's journal collects.
class StandardErrorLog final : public SystemLog {
public:
    /// To be made before anything opens a descriptor: where standard error is closed, its number
    /// would go to a file or a connection of this process, and the log would be written into that.
    StandardErrorLog();

    /// A line is handed over whole. Where standard error is closed or full, it is lost.
    void write(std::string_view type, std::string_view message) override;

    /// The line that is written, newline included. Texts may come from other programs, so control
    /// characters, which could forge a second line or command a terminal, become question marks.
    static std::string line(std::string_view type, std::string_view message);
};

}  // namespace lumatile
