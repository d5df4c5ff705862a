#pragma once

#include <optional>
#include <vector>

#include "base/UUID.h"
#include "commands/SnapCommand.h"
#include "onboarding/OnboardingModel.h"

namespace lumatile {

/// What the last page of the onboarding adds about the keys that it names.
/// @param bindings the commands whose shortcuts are on
/// @param refused those of them whose shortcuts belong to other programs
/// @return nothing where none of the named keys is refused
std::optional<OnboardingModel::Advice> onboardingAdvice(const std::vector<SnapCommand>& bindings,
                                                        const std::vector<UUID>& refused);

}  // namespace lumatile
