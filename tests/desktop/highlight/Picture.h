#pragma once

#include <QImage>

#include <string>

#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// What the root shows in `area` at this moment; empty when the server does not tell.
QImage pictureOf(XClient& client, const PixelRect& area);

/// Keeps a picture under the build folder, for people to look at.
void keepPicture(const QImage& picture, const std::string& name);

}  // namespace lumatile::desktop
