#include "settings_core/RecordedModifiers.h"

#include <array>
#include <utility>

#include "commands/Shortcut.h"

namespace lumatile {

std::uint32_t RecordedModifiers::classic(std::uint32_t flags) {
    static constexpr std::array<std::pair<std::uint32_t, std::uint32_t>, 4> bits{
        {{command, ClassicModifier::command},
         {option, ClassicModifier::option},
         {shift, ClassicModifier::shift},
         {control, ClassicModifier::control}}};
    std::uint32_t mask = 0;
    for (const auto& [flag, bit] : bits) {
        if ((flags & flag) != 0) {
            mask |= bit;
        }
    }
    return mask;
}

}  // namespace lumatile
