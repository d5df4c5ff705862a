#pragma once

#include <map>
#include <string>
#include <vector>

namespace lumatile::desktop {

/// The environment variables of a program.
using Environment = std::map<std::string, std::string>;

/// The variables of this process that a private desktop may inherit: where programs are found, and
/// what sanitizers and profilers read. Nothing that leads to the user's own session or settings.
Environment inheritedEnvironment();

/// "NAME=value" each.
std::vector<std::string> assignments(const Environment& environment);

}  // namespace lumatile::desktop
