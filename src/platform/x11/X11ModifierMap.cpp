#include "platform/x11/X11ModifierMap.h"

#include <algorithm>
#include <array>
#include <initializer_list>

#include "commands/Shortcut.h"

namespace lumatile {

namespace {

using Keysym = std::uint32_t;

// From the protocol's list of keysyms.
constexpr Keysym numLockKey = 0xff7f;
constexpr Keysym scrollLockKey = 0xff14;
constexpr Keysym altLeft = 0xffe9;
constexpr Keysym altRight = 0xffea;
constexpr Keysym metaLeft = 0xffe7;
constexpr Keysym metaRight = 0xffe8;
constexpr Keysym superLeft = 0xffeb;
constexpr Keysym superRight = 0xffec;
constexpr Keysym hyperLeft = 0xffed;
constexpr Keysym hyperRight = 0xffee;

constexpr std::size_t modifierCount = 8;
constexpr std::size_t firstFreeModifier = 3;  // Shift, Lock and Control have their meaning fixed.

std::span<const Keysym> keysymsOf(const X11ModifierMap::Source& source, std::uint8_t keyCode) {
    if (keyCode < source.firstKeyCode) {
        return {};
    }
    const std::size_t start =
        (keyCode - std::size_t{source.firstKeyCode}) * source.keysymsPerKeyCode;
    if (start + source.keysymsPerKeyCode > source.keysyms.size()) {
        return {};
    }
    return source.keysyms.subspan(start, source.keysymsPerKeyCode);
}

/// The first modifier with a key that has one of the keysyms among its first `levels`; 0: none.
std::uint16_t modifierWith(const X11ModifierMap::Source& source,
                           std::initializer_list<Keysym> wanted, std::size_t levels) {
    const std::size_t keysPerModifier = source.modifierKeys.size() / modifierCount;
    for (std::size_t modifier = firstFreeModifier; modifier < modifierCount; ++modifier) {
        for (const std::uint8_t keyCode :
             source.modifierKeys.subspan(modifier * keysPerModifier, keysPerModifier)) {
            if (keyCode == 0) {
                continue;
            }
            const auto keysyms = keysymsOf(source, keyCode);
            const auto considered = keysyms.first(std::min(levels, keysyms.size()));
            if (std::find_first_of(considered.begin(), considered.end(), wanted.begin(),
                                   wanted.end()) != considered.end()) {
                return static_cast<std::uint16_t>(1U << modifier);
            }
        }
    }
    return 0;
}

/// A key's plain meaning goes before what it means with other keys held: on many keyboards the left
/// Alt key is Meta as well.
std::uint16_t modifierWith(const X11ModifierMap::Source& source,
                           std::initializer_list<Keysym> wanted) {
    const std::uint16_t plain = modifierWith(source, wanted, 1);
    return plain != 0 ? plain : modifierWith(source, wanted, source.keysymsPerKeyCode);
}

std::uint16_t firstOf(std::initializer_list<std::uint16_t> masks) {
    const auto* const found =
        std::find_if(masks.begin(), masks.end(), [](std::uint16_t mask) { return mask != 0; });
    return found != masks.end() ? *found : std::uint16_t{0};
}

}  // namespace

X11ModifierMap X11ModifierMap::found(const Source& source) {
    const X11ModifierMap customary;
    X11ModifierMap map;
    map.alt = firstOf({modifierWith(source, {altLeft, altRight}),
                       modifierWith(source, {metaLeft, metaRight}), customary.alt});
    map.super = firstOf({modifierWith(source, {superLeft, superRight}),
                         modifierWith(source, {hyperLeft, hyperRight}), customary.super});
    map.numLock = modifierWith(source, {numLockKey});
    map.scrollLock = modifierWith(source, {scrollLockKey});
    return map;
}

std::uint16_t X11ModifierMap::ofClassic(std::uint32_t modifiers) const {
    std::uint16_t mask = 0;
    const auto add = [&](std::uint32_t bit, std::uint16_t to) {
        if ((modifiers & bit) != 0) {
            mask = static_cast<std::uint16_t>(mask | to);
        }
    };
    add(ClassicModifier::control, control);
    add(ClassicModifier::option, alt);
    add(ClassicModifier::shift, shift);
    add(ClassicModifier::command, super);
    return mask;
}

std::vector<std::uint16_t> X11ModifierMap::lockStates() const {
    std::vector<std::uint16_t> states = {0};
    for (const std::uint16_t lock : {capsLock, numLock, scrollLock}) {
        if (lock == 0 || std::find(states.begin(), states.end(), lock) != states.end()) {
            continue;
        }
        const std::size_t count = states.size();
        for (std::size_t i = 0; i < count; ++i) {
            states.push_back(static_cast<std::uint16_t>(states[i] | lock));
        }
    }
    return states;
}

}  // namespace lumatile
