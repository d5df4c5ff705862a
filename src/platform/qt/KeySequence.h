#pragma once

#include <QKeySequence>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "ports/KeyEquivalent.h"

namespace lumatile {

/// What the present layout has on a key, by what a US keyboard has there: "Z".
using KeyLegend = std::function<std::string(std::string_view)>;

/// How a menu writes the keys of shortcuts. What is empty is as the toolkit has it.
struct KeyTexts {
    std::function<std::string(std::string_view glyphs)> written;  ///< "⌃⌥Z" for this desktop.
    KeyLegend legend;
    std::function<std::string(std::uint32_t keyCode)> namelessLegend;  ///< "F5"; empty: unknown.
};

/// The keys of a hot key, written by `texts.written`, which must not be empty.
std::string writtenKeys(const KeyEquivalent& keys, const KeyTexts& texts);

/// A menu item's keys as this toolkit and its desktops write them. Command is the Super key for
/// what works everywhere, as for the hot keys themselves; in a program's own windows people expect
/// Ctrl in its place.
/// @param texts legends of hot keys, which go by position
/// @return empty when there are no keys, or none that the toolkit knows
QKeySequence keySequenceOf(const KeyEquivalent& keys, const KeyTexts& texts = {});

}  // namespace lumatile
