#pragma once

#include <QIcon>

#include "commands/SnapCommand.h"

namespace lumatile {

/// The small picture of an area in the list: a screen of its orientation with the area on it.
QIcon areaPicture(const SnapCommand& command);

/// As large, for the row that folds areas away.
QIcon foldPicture(bool isFolded);

}  // namespace lumatile
