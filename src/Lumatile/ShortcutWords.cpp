#include "Lumatile/ShortcutWords.h"

#include <string_view>

#include "menu_model/ShortcutFormatter.h"

namespace lumatile::ShortcutWords {

KeyWords::Legends byFormattedKey(const KeyLegends& legends) {
    KeyWords::Legends result;
    for (const auto& [keyCode, legend] : legends) {
        const std::string_view name = ShortcutFormatter::keyName(keyCode);
        if (name != ShortcutFormatter::unknownKey && !KeyWords::occurIn(name)) {
            result.emplace(name, legend);
        }
    }
    return result;
}

std::string of(const Shortcut& shortcut, const KeyLegends& legends) {
    const std::string glyphs =
        ShortcutFormatter::format(shortcut.carbonKeyCode, shortcut.carbonModifiers);
    const std::string_view key = ShortcutFormatter::keyName(shortcut.carbonKeyCode);
    if (KeyWords::occurIn(key)) {
        return KeyWords::written(glyphs, {});
    }
    // The key is put in as it is, since it may be a glyph of the layout's.
    const std::string held =
        KeyWords::written(std::string_view(glyphs).substr(0, glyphs.size() - key.size()), {});
    const auto legend = legends.find(shortcut.carbonKeyCode);
    return held + (legend != legends.end() ? legend->second : std::string(key));
}

}  // namespace lumatile::ShortcutWords
