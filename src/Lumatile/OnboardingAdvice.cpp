#include "Lumatile/OnboardingAdvice.h"

#include <algorithm>
#include <array>

#include "menu_model/ShortcutFormatter.h"

namespace lumatile {

namespace {

/// Whether the page names these keys: Control and Option with an arrow.
bool isNamed(const Shortcut& shortcut) {
    constexpr std::array<std::uint32_t, 4> arrows{123, 124, 125, 126};
    return shortcut.carbonModifiers == (ClassicModifier::control | ClassicModifier::option) &&
           std::find(arrows.begin(), arrows.end(), shortcut.carbonKeyCode) != arrows.end();
}

}  // namespace

std::optional<OnboardingModel::Advice> onboardingAdvice(const std::vector<SnapCommand>& bindings,
                                                        const std::vector<UUID>& refused) {
    bool isAnyNamedRefused = false;
    const SnapCommand* working = nullptr;
    for (const SnapCommand& command : bindings) {
        const bool isRefused =
            std::find(refused.begin(), refused.end(), command.id) != refused.end();
        isAnyNamedRefused = isAnyNamedRefused || (isRefused && isNamed(*command.shortcut));
        if (working == nullptr && !isRefused && command.kind == Kind::area) {
            working = &command;
        }
    }
    if (!isAnyNamedRefused) {
        return std::nullopt;
    }
    if (working == nullptr) {
        return OnboardingModel::Advice{};
    }
    return OnboardingModel::Advice{ShortcutFormatter::format(working->shortcut->carbonKeyCode,
                                                             working->shortcut->carbonModifiers),
                                   working->displayName()};
}

}  // namespace lumatile
