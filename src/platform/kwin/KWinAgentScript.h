#pragma once

#include <string_view>

namespace lumatile::KWinAgentScript {

/// What KWin runs for this program: the text of script/agent.js.
extern const std::string_view text;

}  // namespace lumatile::KWinAgentScript
