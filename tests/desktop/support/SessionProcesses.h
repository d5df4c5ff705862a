#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

namespace lumatile::desktop {

/// The variable by which the programs of a private session are known, whoever started them.
inline constexpr const char* sessionMark = "LUMATILE_PRIVATE_DESKTOP";

/// Ends every program whose environment carries `mark`, politely and then by force, each by its
/// pid.
/// @param executable only programs that run the executable of this name; empty: all
void endProcessesOfSession(const std::string& mark, const std::string& executable = {});

/// Takes note of ended programs that others started and left to this process.
/// @param isOurs whether a pid belongs to someone here who waits for it himself
void reapOrphans(const std::function<bool(pid_t)>& isOurs);

}  // namespace lumatile::desktop
