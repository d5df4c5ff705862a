#pragma once

#include <filesystem>

#include "tests/desktop/support/XClient.h"

namespace lumatile::demonstration {

/// Saves what the whole root shows as a PNG.
/// @throws desktop::DesktopError when it cannot be read or written
void saveScreenshot(desktop::XClient& client, const std::filesystem::path& file);

}  // namespace lumatile::demonstration
