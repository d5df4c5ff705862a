#include "platform/x11/X11ModifierMap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "commands/Shortcut.h"

namespace lumatile {
namespace {

using testing::ElementsAre;
using testing::SizeIs;
using testing::UnorderedElementsAre;

constexpr std::uint32_t altLeft = 0xffe9;
constexpr std::uint32_t metaLeft = 0xffe7;
constexpr std::uint32_t superLeft = 0xffeb;
constexpr std::uint32_t hyperLeft = 0xffed;
constexpr std::uint32_t numLock = 0xff7f;
constexpr std::uint32_t scrollLock = 0xff14;

constexpr std::uint16_t mod1 = 8;
constexpr std::uint16_t mod2 = 16;
constexpr std::uint16_t mod3 = 32;
constexpr std::uint16_t mod4 = 64;
constexpr std::uint16_t mod5 = 128;

/// A keyboard described key by key: the modifier that a key gives and its keysyms.
class Keyboard {
public:
    Keyboard& key(std::uint16_t modifier, std::uint32_t plain, std::uint32_t shifted = 0) {
        const auto place = static_cast<std::size_t>(count_++);
        const auto keyCode = static_cast<std::uint8_t>(firstKeyCode + place);
        keysyms_[place * levels] = plain;
        keysyms_[place * levels + 1] = shifted;
        for (std::size_t bit = 0; bit < 8; ++bit) {
            if (modifier == 1U << bit) {
                auto slot = modifierKeys_.begin() + static_cast<std::ptrdiff_t>(bit * perModifier);
                *std::find(slot, slot + perModifier, 0) = keyCode;
            }
        }
        return *this;
    }

    X11ModifierMap map() const {
        return X11ModifierMap::found({modifierKeys_, keysyms_, firstKeyCode, levels});
    }

private:
    static constexpr std::uint8_t firstKeyCode = 8;
    static constexpr std::size_t levels = 2;
    static constexpr std::ptrdiff_t perModifier = 4;

    std::vector<std::uint8_t> modifierKeys_ = std::vector<std::uint8_t>(8 * perModifier);
    std::vector<std::uint32_t> keysyms_ = std::vector<std::uint32_t>(levels * 248);
    int count_ = 0;
};

TEST(X11ModifierMap, findsTheUsualPlaces) {
    const X11ModifierMap map = Keyboard()
                                   .key(mod1, altLeft, metaLeft)
                                   .key(mod2, numLock)
                                   .key(mod4, superLeft)
                                   .key(mod4, 0, hyperLeft)
                                   .map();
    EXPECT_EQ(map.alt, mod1);
    EXPECT_EQ(map.super, mod4);
    EXPECT_EQ(map.numLock, mod2);
    EXPECT_EQ(map.scrollLock, 0);
}

TEST(X11ModifierMap, followsModifiersThatWereMoved) {
    const X11ModifierMap map = Keyboard()
                                   .key(mod3, altLeft)
                                   .key(mod1, superLeft)
                                   .key(mod5, numLock)
                                   .key(mod2, scrollLock)
                                   .map();
    EXPECT_EQ(map.alt, mod3);
    EXPECT_EQ(map.super, mod1);
    EXPECT_EQ(map.numLock, mod5);
    EXPECT_EQ(map.scrollLock, mod2);
}

TEST(X11ModifierMap, aKeysPlainMeaningGoesFirst) {
    // The Super key is Alt with Shift held.
    const X11ModifierMap map =
        Keyboard().key(mod1, superLeft, altLeft).key(mod4, altLeft, superLeft).map();
    EXPECT_EQ(map.super, mod1);
    EXPECT_EQ(map.alt, mod4);
}

TEST(X11ModifierMap, metaAndHyperServeWhereThereIsNoAltOrSuper) {
    const X11ModifierMap map = Keyboard().key(mod3, metaLeft).key(mod5, hyperLeft).map();
    EXPECT_EQ(map.alt, mod3);
    EXPECT_EQ(map.super, mod5);
}

TEST(X11ModifierMap, aKeyboardWithoutAltAndSuperHasTheCustomaryOnes) {
    const X11ModifierMap map = Keyboard().map();
    EXPECT_EQ(map, X11ModifierMap());
    EXPECT_EQ(map.alt, mod1);
    EXPECT_EQ(map.super, mod4);
}

TEST(X11ModifierMap, answersThatAreTooShortAreHarmless) {
    const std::vector<std::uint8_t> modifierKeys = {0, 0, 0, 255, 7, 8, 9, 10};
    const std::vector<std::uint32_t> keysyms = {altLeft, superLeft, numLock};
    EXPECT_EQ(X11ModifierMap::found({{}, {}, 8, 0}), X11ModifierMap());
    const X11ModifierMap map = X11ModifierMap::found({modifierKeys, keysyms, 8, 1});
    EXPECT_EQ(map.alt, mod3);  // Key code 8, the first that has keysyms at all.
    EXPECT_EQ(map.super, mod4);
    EXPECT_EQ(map.numLock, mod5);
}

TEST(X11ModifierMap, translatesClassicModifiersAndIgnoresOthers) {
    X11ModifierMap map;
    map.alt = mod3;
    map.super = mod5;
    EXPECT_EQ(map.ofClassic(0), 0);
    EXPECT_EQ(map.ofClassic(ClassicModifier::control), X11ModifierMap::control);
    EXPECT_EQ(map.ofClassic(ClassicModifier::option), mod3);
    EXPECT_EQ(map.ofClassic(ClassicModifier::shift), X11ModifierMap::shift);
    EXPECT_EQ(map.ofClassic(ClassicModifier::command), mod5);
    EXPECT_EQ(map.ofClassic(0xffffffff),
              X11ModifierMap::control | mod3 | X11ModifierMap::shift | mod5);
    EXPECT_EQ(map.ofClassic(0xffffffff & ~(256U | 512U | 2048U | 4096U)), 0);
}

TEST(X11ModifierMap, lockStatesAreAllCombinationsOfTheLocksThereAre) {
    X11ModifierMap map;
    EXPECT_THAT(map.lockStates(), ElementsAre(0, 2));
    map.numLock = mod2;
    EXPECT_THAT(map.lockStates(), UnorderedElementsAre(0, 2, 16, 18));
    map.scrollLock = mod5;
    EXPECT_THAT(map.lockStates(), SizeIs(8));
    EXPECT_EQ(map.lockStates().front(), 0);
    map.scrollLock = mod2;  // One modifier for both: no state twice.
    EXPECT_THAT(map.lockStates(), UnorderedElementsAre(0, 2, 16, 18));
}

}  // namespace
}  // namespace lumatile
