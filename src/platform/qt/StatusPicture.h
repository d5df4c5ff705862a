#pragma once

#include <QIcon>

#include "ports/StatusItem.h"

namespace lumatile {

/// The toolkit's icon of a status picture. Bars that look pictures up by name get the name of the
/// installed symbolic one and give it their own colour. The others get pixels, whose colour cannot
/// follow the bar: light, with a dark rim, so that they stand out on dark and on light bars.
/// @return null when the program has no such picture
QIcon statusPicture(const StatusImage& image);

}  // namespace lumatile
