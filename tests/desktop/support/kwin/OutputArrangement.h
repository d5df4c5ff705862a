#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace lumatile::desktop {

/// An output of a private compositor as its settings arrange it.
struct ArrangedOutput {
    int x = 0;  ///< Of the upper left corner, logical pixels.
    int y = 0;
    double scale = 1;
    bool upright = false;  ///< Turned by a quarter.
    bool enabled = true;
};

/// Places, turns, scales and switches the outputs; one for each that the compositor has, in its
/// order. Returns when it has been done.
/// @param socket the path of the compositor's socket
/// @param primary index of the one that counts as the first
/// @throws DesktopError when the compositor refuses
void arrangeOutputs(const std::string& socket, const std::vector<ArrangedOutput>& outputs,
                    std::size_t primary);

}  // namespace lumatile::desktop
