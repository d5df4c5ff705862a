#pragma once

#include <functional>
#include <string>
#include <utility>

#include "ports/KeyEquivalent.h"

namespace lumatile {

/// A menu item that runs a closure when it is chosen.
struct ClosureMenuItem {
    std::string title;
    KeyEquivalent keyEquivalent;
    std::function<void()> onFire;
    bool isEnabled = true;
    bool isChecked = false;

    ClosureMenuItem(std::string text, KeyEquivalent keys, std::function<void()> closure)
        : title(std::move(text)), keyEquivalent(std::move(keys)), onFire(std::move(closure)) {}

    /// What the menu calls when the item is chosen.
    void fire() const {
        if (onFire) {
            onFire();
        }
    }
};

}  // namespace lumatile
