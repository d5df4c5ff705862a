#include "platform/keyboard/ShortcutText.h"

#include "commands/Shortcut.h"
#include "platform/keyboard/KeyTable.h"

namespace lumatile {

std::string shortcutText(std::uint32_t keyCode, std::uint32_t modifiers,
                         const std::map<std::uint32_t, std::string>& legends) {
    std::string text;
    const auto add = [&](std::uint32_t bit, const char* name) {
        if ((modifiers & bit) != 0) {
            text += name;
        }
    };
    add(ClassicModifier::control, "Ctrl+");
    add(ClassicModifier::option, "Alt+");
    add(ClassicModifier::shift, "Shift+");
    add(ClassicModifier::command, "Super+");
    if (const auto legend = legends.find(keyCode); legend != legends.end()) {
        return text + legend->second;
    }
    const PhysicalKey* const key = KeyTable::withVirtualKeyCode(keyCode);
    return key != nullptr ? text.append(key->name) : text + "key " + std::to_string(keyCode);
}

}  // namespace lumatile
