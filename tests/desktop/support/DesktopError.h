#pragma once

#include <stdexcept>

namespace lumatile::desktop {

/// A private desktop that could not be set up, or something on it that did not happen in time.
/// Tests let it end the case.
struct DesktopError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace lumatile::desktop
