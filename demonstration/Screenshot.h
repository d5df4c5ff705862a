#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::demonstration {

/// What the root of a server shows at one moment.
class Screenshot {
public:
    /// @throws desktop::DesktopError when the server does not give its picture
    static Screenshot take(desktop::XClient& client);

    bool operator==(const Screenshot&) const = default;

    /// Saves it as a PNG, transparent where no monitor shows the root.
    /// @throws desktop::DesktopError when the file cannot be written
    void save(const std::filesystem::path& file,
              const std::vector<desktop::PixelRect>& monitors) const;

private:
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint8_t> pixels_;  ///< Four bytes each: blue, green, red, unused.
};

}  // namespace lumatile::demonstration
