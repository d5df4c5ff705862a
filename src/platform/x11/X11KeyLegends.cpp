#include "platform/x11/X11KeyLegends.h"

#include <xkbcommon/xkbcommon.h>

#include <unordered_map>

#include "platform/keyboard/KeyLegend.h"
#include "platform/keyboard/KeyTable.h"
#include "platform/x11/X11Event.h"
#include "platform/x11/X11Reply.h"
#include "platform/x11/XkbProtocol.h"

namespace lumatile {

namespace {

constexpr auto coreKeyboard = static_cast<xcb_xkb_device_spec_t>(XCB_XKB_ID_USE_CORE_KBD);

/// What each of the server's keys has without modifiers in the group that is in force.
std::unordered_map<X11Keyboard::KeyCode, xkb_keysym_t> symbolsNow(X11Connection& connection) {
    std::unordered_map<X11Keyboard::KeyCode, xkb_keysym_t> symbols;
    xcb_connection_t* const server = connection.get();
    const auto stateCookie = xcb_xkb_get_state(server, coreKeyboard);
    const auto mapCookie = xcb_xkb_get_map(server, coreKeyboard, XCB_XKB_MAP_PART_KEY_SYMS, 0, 0, 0,
                                           0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    const X11Reply<xcb_xkb_get_state_reply_t> state(
        xcb_xkb_get_state_reply(server, stateCookie, nullptr));
    const X11Reply<xcb_xkb_get_map_reply_t> map(xcb_xkb_get_map_reply(server, mapCookie, nullptr));
    if (!state || !map || (map->present & XCB_XKB_MAP_PART_KEY_SYMS) == 0) {
        return symbols;
    }
    xcb_xkb_get_map_map_t parts{};
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(map.get()), map->nTypes, map->nKeySyms,
                               map->nKeyActions, map->totalActions, map->totalKeyBehaviors,
                               map->virtualMods, map->totalKeyExplicit, map->totalModMapKeys,
                               map->totalVModMapKeys, map->present, &parts);
    xcb_xkb_key_sym_map_iterator_t each = xcb_xkb_get_map_map_syms_rtrn_iterator(map.get(), &parts);
    for (unsigned keyCode = map->firstKeySym; each.rem > 0;
         ++keyCode, xcb_xkb_key_sym_map_next(&each)) {
        constexpr unsigned groupCount = 0x0f;
        const unsigned groups = each.data->groupInfo & groupCount;
        const unsigned group = groups > 0 ? state->group % groups : 0;
        const unsigned index = group * each.data->width;
        if (groups > 0 && index < each.data->nSyms) {
            symbols[static_cast<X11Keyboard::KeyCode>(keyCode)] =
                xcb_xkb_key_sym_map_syms(each.data)[index];
        }
    }
    return symbols;
}

}  // namespace

X11KeyLegends::X11KeyLegends(X11Connection& connection)
    : connection_(connection),
      keyboard_(connection),
      subscription_(connection.observe([this](const xcb_generic_event_t& event) {
          if (legends_ && (keyboard_.isChange(event) || isOtherGroup(event))) {
              legends_.reset();
          }
      })) {
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(connection.get(), &xcb_xkb_id);
    if (extension == nullptr || extension->present == 0) {
        return;
    }
    firstXkbEvent_ = extension->first_event;
    // Of the many states of a keyboard the layout alone.
    xcb_xkb_select_events_details_t wanted{};
    wanted.affectState = XCB_XKB_STATE_PART_GROUP_STATE;
    wanted.stateDetails = XCB_XKB_STATE_PART_GROUP_STATE;
    xcb_xkb_select_events_aux(connection.get(), coreKeyboard, XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0,
                              0, 0, &wanted);
}

bool X11KeyLegends::isOtherGroup(const xcb_generic_event_t& event) const {
    // Every event of the extension tells its kind here.
    return firstXkbEvent_ != 0 && X11Event::type(event) == firstXkbEvent_ &&
           event.pad0 == XCB_XKB_STATE_NOTIFY;
}

const X11KeyLegends::Legends& X11KeyLegends::now() {
    if (!legends_) {
        keyboard_.read();
        legends_ = read();
    }
    return *legends_;
}

X11KeyLegends::Legends X11KeyLegends::read() const {
    std::unordered_map<X11Keyboard::KeyCode, xkb_keysym_t> symbols;
    if (firstXkbEvent_ != 0) {
        symbols = symbolsNow(connection_);
    }
    Legends legends;
    for (const PhysicalKey& key : KeyTable::keys()) {
        const auto keyCode = keyboard_.keyCodeOf(key.virtualKeyCode);
        const auto symbol = keyCode ? symbols.find(*keyCode) : symbols.end();
        legends[key.virtualKeyCode] =
            keyLegend(key, symbol != symbols.end() ? symbol->second : XKB_KEY_NoSymbol);
    }
    return legends;
}

}  // namespace lumatile
