#include "platform/keyboard/KeyMap.h"

#include <xkbcommon/xkbcommon.h>

#include <memory>
#include <utility>

#include "platform/keyboard/KeyTable.h"

namespace lumatile {

namespace {

struct Unref {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap* map) const { xkb_keymap_unref(map); }
};

std::vector<std::uint32_t> keysymsOf(xkb_keymap* map, xkb_keycode_t keyCode) {
    std::vector<std::uint32_t> keysyms(xkb_keymap_num_layouts_for_key(map, keyCode));
    for (std::size_t group = 0; group < keysyms.size(); ++group) {
        const xkb_keysym_t* symbols = nullptr;
        const int count = xkb_keymap_key_get_syms_by_level(
            map, keyCode, static_cast<xkb_layout_index_t>(group), 0, &symbols);
        keysyms[group] = count == 1 ? *symbols : static_cast<xkb_keysym_t>(XKB_KEY_NoSymbol);
    }
    return keysyms;
}

}  // namespace

KeyMap::KeyMap() {
    for (const PhysicalKey& key : KeyTable::keys()) {
        add(key.virtualKeyCode, {key.evdevKeyCode, {}});
    }
}

std::optional<KeyMap> KeyMap::compiled(const std::string& text) {
    const std::unique_ptr<xkb_context, Unref> context(
        xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
    if (!context) {
        return std::nullopt;
    }
    // A map with flaws in it is not our user's to mend.
    xkb_context_set_log_level(context.get(), XKB_LOG_LEVEL_CRITICAL);
    const std::unique_ptr<xkb_keymap, Unref> map(xkb_keymap_new_from_string(
        context.get(), text.c_str(), XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!map) {
        return std::nullopt;
    }
    KeyMap result;
    result.keys_.clear();
    result.virtualKeyCodes_.clear();
    for (const PhysicalKey& key : KeyTable::keys()) {
        const xkb_keycode_t keyCode =
            xkb_keymap_key_by_name(map.get(), std::string(key.position).c_str());
        if (keyCode != XKB_KEYCODE_INVALID) {
            result.add(key.virtualKeyCode, {keyCode, keysymsOf(map.get(), keyCode)});
        }
    }
    return result;
}

std::optional<std::uint32_t> KeyMap::keyCodeOf(std::uint32_t virtualKeyCode) const {
    const auto found = keys_.find(virtualKeyCode);
    return found != keys_.end() ? std::optional(found->second.keyCode) : std::nullopt;
}

std::optional<std::uint32_t> KeyMap::virtualKeyCodeOf(std::uint32_t keyCode) const {
    const auto found = virtualKeyCodes_.find(keyCode);
    return found != virtualKeyCodes_.end() ? std::optional(found->second) : std::nullopt;
}

std::uint32_t KeyMap::keysymAt(std::uint32_t virtualKeyCode, std::uint32_t group) const {
    const auto found = keys_.find(virtualKeyCode);
    if (found == keys_.end() || found->second.keysyms.empty()) {
        return XKB_KEY_NoSymbol;
    }
    const std::vector<std::uint32_t>& keysyms = found->second.keysyms;
    return keysyms[group % keysyms.size()];
}

void KeyMap::add(std::uint32_t virtualKeyCode, Key key) {
    virtualKeyCodes_.emplace(key.keyCode, virtualKeyCode);
    keys_.emplace(virtualKeyCode, std::move(key));
}

}  // namespace lumatile
