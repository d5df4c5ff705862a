#pragma once

#include <QIcon>

namespace lumatile {

/// The program's own icon: a screen with a window snapped to its right half.
QIcon applicationIcon();

}  // namespace lumatile
