#pragma once

#include <cstdint>
#include <span>

#include "platform/x11/X11PixelRect.h"

namespace lumatile {

/// A program's rules for the size of its window (`WM_NORMAL_HINTS`), in pixels of the client.
struct X11SizeHints {
    /// A ratio of width to height; without a limit where the denominator is 0.
    struct Aspect {
        int width = 0;
        int height = 0;

        bool operator==(const Aspect&) const = default;
    };

    static constexpr int unlimited = 32767;

    int minimumWidth = 1;
    int minimumHeight = 1;
    int maximumWidth = unlimited;
    int maximumHeight = unlimited;
    int baseWidth = 0;  ///< Steps are counted from here.
    int baseHeight = 0;
    int stepWidth = 1;
    int stepHeight = 1;
    Aspect minimumAspect;
    Aspect maximumAspect;
    bool aspectLessBase = false;  ///< The ratio is that of the size without the base size.

    bool operator==(const X11SizeHints&) const = default;

    /// The largest size not above that of `client` which keeps the rules (the smallest that keeps
    /// them where none is that small), at the same origin.
    X11PixelRect constrained(const X11PixelRect& client) const;

    /// The items of the property; no rules where there are too few of them. Absurd numbers of a
    /// program become harmless ones.
    static X11SizeHints decode(std::span<const std::uint32_t> items);
};

}  // namespace lumatile
