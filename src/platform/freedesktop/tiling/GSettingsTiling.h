#pragma once

#include <gio/gio.h>

#include <optional>
#include <string>
#include <string_view>

#include "platform/freedesktop/glib/GLibHandles.h"
#include "platform/freedesktop/tiling/TilingSetting.h"

namespace lumatile {

/// The switches of a desktop that keeps them in GSettings.
class GSettingsTiling final : public TilingSetting {
public:
    /// @param schema its name; where it is not installed there is no such desktop
    /// @param edgeKey switches all of it
    /// @param topKey switches the top while the other is on; empty or not in the schema: there is
    ///   only the one
    GSettingsTiling(const std::string& schema, std::string edgeKey, std::string topKey);

    bool exists() override { return settings_ != nullptr; }
    std::optional<bool> lookup(std::string_view key) override;

    /// Not where the administrator has locked it.
    bool canSwitchOff() override;
    bool switchOff() override;

private:
    bool value(const std::string& key) const;

    GObjectHandle<GSettings> settings_;
    std::string edgeKey_;
    std::string topKey_;
};

}  // namespace lumatile
