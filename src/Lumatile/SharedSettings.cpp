#include "Lumatile/SharedSettings.h"

#include <utility>

#include "commands/CommandStore.h"
#include "oled_protection/OLEDSettingsCodec.h"

namespace lumatile {

std::optional<SharedSettings> SharedSettings::decode(const SharedSet& set) {
    SharedSettings settings{CommandStore().commands, OLEDSettings::recommended};
    if (const auto stored = set.find(CommandStore::preferenceKey); stored != set.end()) {
        auto commands = CommandStore::decode(stored->second);
        if (!commands) {
            return std::nullopt;
        }
        settings.commands = CommandStore::merged(*std::move(commands));
    }
    if (const auto stored = set.find(OLEDSettings::preferenceKey); stored != set.end()) {
        const auto oled = OLEDSettingsCodec::decode(stored->second);
        if (!oled) {
            return std::nullopt;
        }
        settings.oled = *oled;
    }
    return settings;
}

}  // namespace lumatile
