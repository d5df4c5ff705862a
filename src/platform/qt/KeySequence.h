#pragma once

#include <QKeySequence>

#include "ports/KeyEquivalent.h"

namespace lumatile {

/// A menu item's keys as this toolkit and its desktops write them. Command is the Super key for
/// what works everywhere, as for the hot keys themselves; in a program's own windows people expect
/// Ctrl in its place.
/// @return empty when there are no keys, or none that the toolkit knows
QKeySequence keySequenceOf(const KeyEquivalent& keys);

}  // namespace lumatile
