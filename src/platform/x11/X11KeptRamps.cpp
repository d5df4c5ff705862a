#include "platform/x11/X11KeptRamps.h"

#include <utility>

namespace lumatile {

namespace {

constexpr std::uint32_t version = 1;
constexpr unsigned halfWidth = 16;
constexpr std::uint32_t halfMask = 0xffff;
constexpr std::size_t headLength = 2;

bool isKept(std::size_t size) { return size > 0 && size <= X11GammaRamp::largestSize; }

std::vector<std::uint32_t> piece(std::uint32_t controller, const X11GammaRamp& ramp) {
    std::vector<std::uint32_t> items = {controller, static_cast<std::uint32_t>(ramp.size())};
    for (std::size_t i = 0; i < ramp.steps.size(); i += 2) {
        const std::uint32_t upper = i + 1 < ramp.steps.size() ? ramp.steps[i + 1] : 0U;
        items.push_back(ramp.steps[i] | upper << halfWidth);
    }
    return items;
}

/// The ramp in `items`, which hold it and nothing else.
std::optional<X11GammaRamp> rampIn(std::span<const std::uint32_t> items, std::size_t steps) {
    X11GammaRamp ramp;
    ramp.steps.reserve(steps);
    for (const std::uint32_t item : items) {
        ramp.steps.push_back(static_cast<std::uint16_t>(item & halfMask));
        if (ramp.steps.size() < steps) {
            ramp.steps.push_back(static_cast<std::uint16_t>(item >> halfWidth));
        } else if (item >> halfWidth != 0) {
            return std::nullopt;  // Nobody who writes this form leaves anything there.
        }
    }
    return ramp;
}

}  // namespace

std::optional<std::vector<std::vector<std::uint32_t>>> X11KeptRamps::encoded() const {
    if (ramps.size() > mostControllers) {
        return std::nullopt;
    }
    std::vector<std::vector<std::uint32_t>> pieces = {{version}};
    for (const auto& [controller, ramp] : ramps) {
        if (!isKept(ramp.size()) || ramp.steps.size() % X11GammaRamp::channels != 0) {
            return std::nullopt;
        }
        pieces.push_back(piece(controller, ramp));
    }
    return pieces;
}

std::optional<X11KeptRamps> X11KeptRamps::decoded(std::span<const std::uint32_t> items) {
    if (items.empty() || items.front() != version) {
        return std::nullopt;
    }
    X11KeptRamps kept;
    for (auto rest = items.subspan(1); !rest.empty();) {
        if (rest.size() < headLength || kept.ramps.size() == mostControllers || !isKept(rest[1])) {
            return std::nullopt;
        }
        const std::uint32_t controller = rest[0];
        const std::size_t steps = std::size_t{rest[1]} * X11GammaRamp::channels;
        const std::size_t length = (steps + 1) / 2;
        rest = rest.subspan(headLength);
        if (rest.size() < length) {
            return std::nullopt;
        }
        std::optional<X11GammaRamp> ramp = rampIn(rest.first(length), steps);
        if (!ramp || !kept.ramps.emplace(controller, std::move(*ramp)).second) {
            return std::nullopt;
        }
        rest = rest.subspan(length);
    }
    return kept;
}

}  // namespace lumatile
