#include "Lumatile/launch/HostWords.h"

#include "Lumatile/ShortcutWords.h"

namespace lumatile {

HostDesktop HostWords::host() { return known().host; }

std::string HostWords::apply(std::string_view text) {
    if (Vocabulary::namesKeys(text)) {
        readLegends();
    }
    return known().vocabulary.apply(text);
}

std::string HostWords::legend(std::string_view usLegend) {
    readLegends();
    const auto& legends = known().vocabulary.legends;
    const auto found = legends.find(usLegend);
    return found != legends.end() ? found->second : std::string(usLegend);
}

std::string HostWords::legend(std::uint32_t keyCode) const {
    const auto legends = keyLegends_ ? keyLegends_() : std::map<std::uint32_t, std::string>();
    const auto found = legends.find(keyCode);
    return found != legends.end() ? found->second : std::string();
}

void HostWords::readLegends() {
    if (keyLegends_) {
        known().vocabulary.legends = ShortcutWords::byFormattedKey(keyLegends_());
    }
}

HostWords::Known& HostWords::known() {
    if (!known_) {
        const HostDesktop host = HostDesktop::find(sessionNames_, windowManagerName_());
        known_ = Known{host, Vocabulary::of(host)};
    }
    return *known_;
}

}  // namespace lumatile
