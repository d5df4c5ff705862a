#pragma once

#include <optional>
#include <string_view>

namespace lumatile {

/// Where one family of desktops keeps the switches of its own tiling. Keys are those of
/// `SystemTiling`.
class TilingSetting {
public:
    virtual ~TilingSetting() = default;

    /// Whether that desktop is installed, so that there is something to switch.
    virtual bool exists() = 0;

    virtual std::optional<bool> lookup(std::string_view key) = 0;
    virtual bool canSwitchOff() = 0;
    virtual bool switchOff() = 0;
};

}  // namespace lumatile
