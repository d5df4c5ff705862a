#include "tests/desktop/highlight/Picture.h"

#include <QDir>
#include <QString>

namespace lumatile::desktop {

QImage pictureOf(XClient& client, const PixelRect& area) {
    const XReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        client.connection(),
        xcb_get_image(client.connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, client.root(),
                      static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                      static_cast<std::uint16_t>(area.width),
                      static_cast<std::uint16_t>(area.height), ~0U),
        nullptr));
    constexpr int bytesPerPixel = 4;
    if (!reply ||
        xcb_get_image_data_length(reply.get()) < area.width * area.height * bytesPerPixel) {
        return {};
    }
    return QImage(xcb_get_image_data(reply.get()), area.width, area.height,
                  qsizetype{area.width} * bytesPerPixel, QImage::Format_RGB32)
        .copy();
}

void keepPicture(const QImage& picture, const std::string& name) {
    const QString folder = QStringLiteral(LUMATILE_PICTURES);
    QDir().mkpath(folder);
    picture.save(folder + '/' + QString::fromStdString(name) + ".png");
}

}  // namespace lumatile::desktop
