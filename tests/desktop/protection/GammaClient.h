#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// Another program that reads and sets gamma ramps, as a night light does.
class GammaClient : public XClient {
public:
    using XClient::XClient;

    /// The controller that drives the output of this number in the server's order.
    std::uint32_t controller(std::size_t number);

    /// Red, then green, then blue; empty when the server has no such controller.
    std::vector<std::uint16_t> ramp(std::uint32_t controller);
    void set(std::uint32_t controller, const std::vector<std::uint16_t>& ramp);

    /// A ramp of the controller's length: the value of each step by its place, from 0 to 1, and its
    /// channel, from 0 to 2.
    std::vector<std::uint16_t> made(std::uint32_t controller,
                                    const std::function<double(double, int)>& value);

    /// One that no rule gives back: curved, and another curve for each channel.
    std::vector<std::uint16_t> curved(std::uint32_t controller);

    /// One as warm light has it.
    std::vector<std::uint16_t> warm(std::uint32_t controller);

    /// `ramp` behind black of that opacity, each step rounded.
    static std::vector<std::uint16_t> dimmed(const std::vector<std::uint16_t>& ramp,
                                             double opacity);
};

}  // namespace lumatile::desktop
