#pragma once

#include <QString>

#include <functional>
#include <string_view>

namespace lumatile {

/// Turns a text of a catalogue into what is shown on this computer.
using Saying = std::function<QString(std::string_view)>;

}  // namespace lumatile
