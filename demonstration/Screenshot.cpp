#include "demonstration/Screenshot.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <cstddef>
#include <memory>
#include <string>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::demonstration {
namespace {

using desktop::DesktopError;
using desktop::XReply;

constexpr std::size_t bytesPerPixel = 4;

struct PictureDeleter {
    void operator()(GdkPixbuf* picture) const { g_object_unref(picture); }
};

}  // namespace

Screenshot Screenshot::take(desktop::XClient& client) {
    xcb_connection_t* connection = client.connection();
    const XReply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, client.root()), nullptr));
    if (!size) {
        throw DesktopError("the server shows nothing");
    }
    const XReply<xcb_get_image_reply_t> image(
        xcb_get_image_reply(connection,
                            xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, client.root(), 0,
                                          0, size->width, size->height, ~0U),
                            nullptr));
    const std::size_t bytes = std::size_t{size->width} * size->height * bytesPerPixel;
    if (!image || static_cast<std::size_t>(xcb_get_image_data_length(image.get())) < bytes) {
        throw DesktopError("the server's picture cannot be read");
    }
    Screenshot shot;
    shot.width_ = size->width;
    shot.height_ = size->height;
    const std::uint8_t* data = xcb_get_image_data(image.get());
    shot.pixels_.assign(data, data + bytes);
    return shot;
}

void Screenshot::save(const std::filesystem::path& file,
                      const std::vector<desktop::PixelRect>& monitors) const {
    std::vector<guchar> colors(pixels_.size());
    for (const desktop::PixelRect& monitor : monitors) {
        for (int y = monitor.y; y < monitor.bottom() && y < height_; ++y) {
            for (int x = monitor.x; x < monitor.right() && x < width_; ++x) {
                const std::size_t pixel =
                    (static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                     static_cast<std::size_t>(x)) *
                    bytesPerPixel;
                colors[pixel] = pixels_[pixel + 2];
                colors[pixel + 1] = pixels_[pixel + 1];
                colors[pixel + 2] = pixels_[pixel];
                colors[pixel + 3] = 0xff;
            }
        }
    }
    const std::unique_ptr<GdkPixbuf, PictureDeleter> picture(
        gdk_pixbuf_new_from_data(colors.data(), GDK_COLORSPACE_RGB, TRUE, 8, width_, height_,
                                 width_ * static_cast<int>(bytesPerPixel), nullptr, nullptr));
    GError* error = nullptr;
    if (gdk_pixbuf_save(picture.get(), file.c_str(), "png", &error, nullptr) == FALSE) {
        const std::string reason = error->message;
        g_error_free(error);
        throw DesktopError("cannot write " + file.string() + ": " + reason);
    }
}

}  // namespace lumatile::demonstration
