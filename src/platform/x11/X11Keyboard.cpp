#include "platform/x11/X11Keyboard.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "platform/keyboard/KeyTable.h"
#include "platform/x11/X11Event.h"
#include "platform/x11/X11Reply.h"
#include "platform/x11/XkbProtocol.h"

namespace lumatile {

namespace {

constexpr auto coreKeyboard = static_cast<xcb_xkb_device_spec_t>(XCB_XKB_ID_USE_CORE_KBD);
constexpr std::uint32_t namesWanted =
    XCB_XKB_NAME_DETAIL_KEY_NAMES | XCB_XKB_NAME_DETAIL_KEY_ALIASES;
constexpr std::uint16_t changeEvents =
    XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
    XCB_XKB_EVENT_TYPE_NAMES_NOTIFY | XCB_XKB_EVENT_TYPE_CONTROLS_NOTIFY;
constexpr std::uint16_t everyMapPart = 0xff;

// Beyond the server's own delays: a server that is kept busy repeats late.
constexpr X11HeldKeys::Milliseconds lateness = 250;

/// The server fills names up with zeros.
std::string text(const char* name) {
    constexpr std::size_t length = 4;
    const std::string_view padded(name, length);
    return std::string(padded.substr(0, padded.find('\0')));
}

/// The server's key codes by the names of the keys, other names of the same keys included.
std::unordered_map<std::string, X11Keyboard::KeyCode> keysIn(
    const xcb_xkb_get_names_reply_t& reply) {
    xcb_xkb_get_names_value_list_t lists{};
    xcb_xkb_get_names_value_list_unpack(
        xcb_xkb_get_names_value_list(&reply), reply.nTypes, reply.indicators, reply.virtualMods,
        reply.groupNames, reply.nKeys, reply.nKeyAliases, reply.nRadioGroups, reply.which, &lists);
    std::unordered_map<std::string, X11Keyboard::KeyCode> keys;
    if ((reply.which & XCB_XKB_NAME_DETAIL_KEY_NAMES) != 0) {
        const std::span names(lists.keyNames, reply.nKeys);
        for (std::size_t i = 0; i < names.size(); ++i) {
            const std::string name = text(names[i].name);
            const std::size_t keyCode = reply.firstKey + i;
            if (!name.empty() && keyCode <= UINT8_MAX) {
                keys.emplace(name, static_cast<X11Keyboard::KeyCode>(keyCode));
            }
        }
    }
    if ((reply.which & XCB_XKB_NAME_DETAIL_KEY_ALIASES) != 0) {
        for (const xcb_xkb_key_alias_t& alias : std::span(lists.keyAliases, reply.nKeyAliases)) {
            const auto real = keys.find(text(alias.real));
            if (real != keys.end()) {
                keys.emplace(text(alias.alias), real->second);
            }
        }
    }
    return keys;
}

}  // namespace

X11Keyboard::X11Keyboard(X11Connection& connection) : connection_(connection) {
    // Only now: it sets what other members hold.
    hasXkb_ = startXkb();
    read();
}

bool X11Keyboard::startXkb() {
    xcb_connection_t* const server = connection_.get();
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(server, &xcb_xkb_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    firstXkbEvent_ = extension->first_event;
    const X11Reply<xcb_xkb_use_extension_reply_t> use(xcb_xkb_use_extension_reply(
        server, xcb_xkb_use_extension(server, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION),
        nullptr));
    if (!use || use->supported == 0) {
        return false;
    }
    xcb_xkb_select_events(server, coreKeyboard, changeEvents, 0, changeEvents, everyMapPart,
                          everyMapPart, nullptr);
    const X11Reply<xcb_xkb_per_client_flags_reply_t> flags(xcb_xkb_per_client_flags_reply(
        server,
        xcb_xkb_per_client_flags(server, coreKeyboard,
                                 XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
                                 XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0),
        nullptr));
    repeat_.withoutReleases =
        flags && (flags->value & XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT) != 0;
    return true;
}

bool X11Keyboard::isChange(const xcb_generic_event_t& event) const {
    const int type = X11Event::type(event);
    if (type == XCB_MAPPING_NOTIFY) {
        const auto& mapping = X11Event::as<xcb_mapping_notify_event_t>(event);
        return mapping.request != XCB_MAPPING_POINTER;
    }
    if (!hasXkb_ || type != firstXkbEvent_) {
        return false;
    }
    const std::uint8_t kind = event.pad0;  // Every event of the extension tells its kind here.
    return kind == XCB_XKB_NEW_KEYBOARD_NOTIFY || kind == XCB_XKB_MAP_NOTIFY ||
           kind == XCB_XKB_NAMES_NOTIFY || kind == XCB_XKB_CONTROLS_NOTIFY;
}

void X11Keyboard::read() {
    xcb_connection_t* const server = connection_.get();
    const xcb_setup_t& setup = *xcb_get_setup(server);
    const xcb_keycode_t first = setup.min_keycode;
    const auto count = static_cast<std::uint8_t>(setup.max_keycode - first + 1);
    const auto modifierCookie = xcb_get_modifier_mapping(server);
    const auto keysymCookie = xcb_get_keyboard_mapping(server, first, count);
    std::unordered_map<std::string, KeyCode> named;
    if (hasXkb_) {
        const auto namesCookie = xcb_xkb_get_names(server, coreKeyboard, namesWanted);
        const auto controlsCookie = xcb_xkb_get_controls(server, coreKeyboard);
        const X11Reply<xcb_xkb_get_names_reply_t> names(
            xcb_xkb_get_names_reply(server, namesCookie, nullptr));
        const X11Reply<xcb_xkb_get_controls_reply_t> controls(
            xcb_xkb_get_controls_reply(server, controlsCookie, nullptr));
        if (names) {
            named = keysIn(*names);
        }
        if (controls) {
            repeat_.longestGap =
                std::max(controls->repeatDelay, controls->repeatInterval) + lateness;
        }
    }
    const X11Reply<xcb_get_modifier_mapping_reply_t> modifierKeys(
        xcb_get_modifier_mapping_reply(server, modifierCookie, nullptr));
    const X11Reply<xcb_get_keyboard_mapping_reply_t> keysyms(
        xcb_get_keyboard_mapping_reply(server, keysymCookie, nullptr));

    keyCodes_.clear();
    virtualKeyCodes_.clear();
    for (const PhysicalKey& key : KeyTable::keys()) {
        KeyCode keyCode = key.evdevKeyCode;
        if (!named.empty()) {
            const auto found = named.find(std::string(key.position));
            if (found == named.end()) {
                continue;
            }
            keyCode = found->second;
        }
        keyCodes_[key.virtualKeyCode] = keyCode;
        virtualKeyCodes_.emplace(keyCode, key.virtualKeyCode);
    }
    if (modifierKeys && keysyms) {
        modifiers_ = X11ModifierMap::found(
            {{xcb_get_modifier_mapping_keycodes(modifierKeys.get()),
              static_cast<std::size_t>(
                  xcb_get_modifier_mapping_keycodes_length(modifierKeys.get()))},
             {xcb_get_keyboard_mapping_keysyms(keysyms.get()),
              static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(keysyms.get()))},
             first,
             keysyms->keysyms_per_keycode});
    }
}

std::optional<X11Keyboard::KeyCode> X11Keyboard::keyCodeOf(std::uint32_t virtualKeyCode) const {
    const auto found = keyCodes_.find(virtualKeyCode);
    return found != keyCodes_.end() ? std::optional(found->second) : std::nullopt;
}

std::optional<std::uint32_t> X11Keyboard::virtualKeyCodeOf(KeyCode keyCode) const {
    const auto found = virtualKeyCodes_.find(keyCode);
    return found != virtualKeyCodes_.end() ? std::optional(found->second) : std::nullopt;
}

}  // namespace lumatile
