#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "ports/KeyCodes.h"

namespace lumatile {

/// A keyboard whose keys have the numbers that shortcuts are stored with, but for one that none can
/// name.
class SimulatedKeyCodes final : public KeyCodes {
public:
    static constexpr std::uint32_t withoutCode = 200;

    std::optional<std::uint32_t> virtualKeyCode(std::uint32_t nativeScanCode) override {
        return nativeScanCode != withoutCode ? std::optional(nativeScanCode) : std::nullopt;
    }

    std::map<std::uint32_t, std::string> legends() override { return legends_; }

    /// The layout has something else on its keys than a US keyboard.
    void print(std::uint32_t virtualKeyCode, std::string legend) {
        legends_[virtualKeyCode] = std::move(legend);
    }

private:
    std::map<std::uint32_t, std::string> legends_;
};

}  // namespace lumatile
