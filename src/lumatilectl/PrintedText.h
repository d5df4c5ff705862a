#pragma once

#include <string>
#include <string_view>

namespace lumatile {

/// A name as it may be written to a terminal: names come from settings that other computers share,
/// and a terminal obeys control characters. Each of them becomes U+FFFD, tabs and line breaks too,
/// since they divide the columns and rows of the output.
/// @param name UTF-8
std::string printedText(std::string_view name);

}  // namespace lumatile
