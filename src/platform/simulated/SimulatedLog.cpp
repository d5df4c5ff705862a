#include "platform/simulated/SimulatedLog.h"

namespace lumatile {

void SimulatedLog::write(std::string_view type, std::string_view message) {
    std::string line(type);
    line += ": ";
    line += message;
    lines_.push_back(std::move(line));
}

}  // namespace lumatile
