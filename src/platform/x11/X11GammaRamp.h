#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lumatile {

/// How bright a screen shows each step of each primary colour.
struct X11GammaRamp {
    static constexpr std::size_t channels = 3;

    /// 64 KiB. The longest ramp of today's hardware has 4096 steps; one that is longer than this
    /// is left alone, so that what is kept and sent stays bounded.
    static constexpr std::size_t largestSize = 65536 / (channels * sizeof(std::uint16_t));

    /// Red, then green, then blue, the same number of steps each; 0 is black, 65535 full.
    std::vector<std::uint16_t> steps;

    bool operator==(const X11GammaRamp&) const = default;

    /// Steps of one colour.
    std::size_t size() const { return steps.size() / channels; }

    /// This ramp behind black of that opacity, from 0 (the ramp itself) to 1 (all black).
    X11GammaRamp dimmed(double opacity) const;

    /// Whether this is `original` behind black of some opacity, which is how one's own work is
    /// recognised by somebody who does not know the opacity.
    bool isDimmed(const X11GammaRamp& original) const;
};

}  // namespace lumatile
