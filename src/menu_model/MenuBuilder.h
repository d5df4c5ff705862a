#pragma once

#include <vector>

#include "commands/Axis.h"
#include "commands/SnapCommand.h"
#include "menu_model/MenuEntry.h"

namespace lumatile::MenuBuilder {

/// The entries of the status menu: the commands of `axis` that are visible in the menu bar, then
/// the fixed actions. The order given is kept, except that custom areas come after all built-in
/// commands, under a title of their own; a separator marks every change of group.
/// @param commands in the order of the store
std::vector<MenuEntry> build(const std::vector<SnapCommand>& commands, Axis axis);

}  // namespace lumatile::MenuBuilder
