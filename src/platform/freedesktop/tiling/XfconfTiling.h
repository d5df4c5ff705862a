#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "base/Lifeline.h"
#include "platform/freedesktop/bus/BusConnection.h"
#include "platform/freedesktop/tiling/TilingSetting.h"

namespace lumatile {

/// Xfce's one switch, the property "/general/tile_on_move" of the channel "xfwm4". Its settings are
/// reached over the bus, so a lookup answers the last value known, and asks.
class XfconfTiling final : public TilingSetting {
public:
    /// @param session the user's bus; outlives this
    explicit XfconfTiling(BusConnection& session);
    XfconfTiling(const XfconfTiling&) = delete;
    XfconfTiling& operator=(const XfconfTiling&) = delete;
    ~XfconfTiling() override = default;

    bool exists() override { return true; }

    /// Absent before the first answer, for a property that is not set, and for one that is no
    /// boolean.
    std::optional<bool> lookup(std::string_view key) override;

    /// Where the settings have answered.
    bool canSwitchOff() override { return answers_; }
    bool switchOff() override;

private:
    void ask();
    void take(GVariant* boxed);

    BusConnection& session_;
    std::unique_ptr<BusConnection::Subscription> changes_;
    std::optional<bool> known_;
    bool isAsking_ = false;
    bool answers_ = false;
    Lifeline lifeline_;  // The bus may answer when this is gone.
};

}  // namespace lumatile
