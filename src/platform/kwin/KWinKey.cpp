#include "platform/kwin/KWinKey.h"

#include <algorithm>
#include <array>
#include <utility>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

#include "commands/Shortcut.h"

namespace lumatile {

namespace {

// The toolkit's numbers, which Plasma stores and sends: stable since its fourth generation.
constexpr std::int32_t shiftBit = 0x02000000;
constexpr std::int32_t controlBit = 0x04000000;
constexpr std::int32_t altBit = 0x08000000;
constexpr std::int32_t metaBit = 0x10000000;
constexpr std::int32_t modifierBits = shiftBit | controlBit | altBit | metaBit | 0x60000000;

struct Named {
    std::uint32_t keysym;
    std::int32_t key;
};

constexpr std::array named{
    Named{XKB_KEY_Escape, 0x01000000},    Named{XKB_KEY_Tab, 0x01000001},
    Named{XKB_KEY_BackSpace, 0x01000003}, Named{XKB_KEY_Return, 0x01000004},
    Named{XKB_KEY_KP_Enter, 0x01000005},  Named{XKB_KEY_Insert, 0x01000006},
    Named{XKB_KEY_Delete, 0x01000007},    Named{XKB_KEY_Clear, 0x0100000b},
    Named{XKB_KEY_Home, 0x01000010},      Named{XKB_KEY_End, 0x01000011},
    Named{XKB_KEY_Left, 0x01000012},      Named{XKB_KEY_Up, 0x01000013},
    Named{XKB_KEY_Right, 0x01000014},     Named{XKB_KEY_Down, 0x01000015},
    Named{XKB_KEY_Page_Up, 0x01000016},   Named{XKB_KEY_Page_Down, 0x01000017},
    Named{XKB_KEY_Help, 0x01000058}};

constexpr std::int32_t firstFunctionKey = 0x01000030;
constexpr std::uint32_t lastCharacter = 0x10ffff;

std::int32_t upper(std::uint32_t keysym) {
    const std::uint32_t character = xkb_keysym_to_utf32(xkb_keysym_to_upper(keysym));
    return character <= lastCharacter ? static_cast<std::int32_t>(character) : 0;
}

std::optional<std::int32_t> keyOf(std::uint32_t keysym) {
    const auto* const found = std::find_if(
        named.begin(), named.end(), [keysym](const Named& each) { return each.keysym == keysym; });
    if (found != named.end()) {
        return found->key;
    }
    if (keysym >= XKB_KEY_F1 && keysym <= XKB_KEY_F35) {
        return firstFunctionKey + static_cast<std::int32_t>(keysym - XKB_KEY_F1);
    }
    const std::int32_t character = upper(keysym);
    return character >= ' ' ? std::optional(character) : std::nullopt;
}

constexpr std::array bits{
    std::pair(ClassicModifier::control, controlBit), std::pair(ClassicModifier::option, altBit),
    std::pair(ClassicModifier::shift, shiftBit), std::pair(ClassicModifier::command, metaBit)};

}  // namespace

std::optional<std::int32_t> KWinKey::of(std::uint32_t keysym, std::uint32_t modifiers) {
    const auto key = keyOf(keysym);
    if (!key) {
        return std::nullopt;
    }
    std::int32_t combination = *key;
    for (const auto& [classic, bit] : bits) {
        combination |= (modifiers & classic) != 0 ? bit : 0;
    }
    return combination;
}

std::uint32_t KWinKey::modifiersOf(std::int32_t combination) {
    std::uint32_t modifiers = 0;
    for (const auto& [classic, bit] : bits) {
        modifiers |= (combination & bit) != 0 ? classic : 0;
    }
    return modifiers;
}

bool KWinKey::isIn(std::int32_t combination, std::uint32_t keysym) {
    return keyOf(keysym) == (combination & ~modifierBits);
}

}  // namespace lumatile
