#include "demonstration/Screenshot.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::demonstration {
namespace {

struct PictureDeleter {
    void operator()(GdkPixbuf* picture) const { g_object_unref(picture); }
};

}  // namespace

void saveScreenshot(desktop::XClient& client, const std::filesystem::path& file) {
    xcb_connection_t* connection = client.connection();
    const desktop::XReply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, client.root()), nullptr));
    if (!size) {
        throw desktop::DesktopError("the server shows nothing");
    }
    const desktop::XReply<xcb_get_image_reply_t> image(
        xcb_get_image_reply(connection,
                            xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, client.root(), 0,
                                          0, size->width, size->height, ~0U),
                            nullptr));
    const std::size_t pixels = std::size_t{size->width} * size->height;
    if (!image || static_cast<std::size_t>(xcb_get_image_data_length(image.get())) < pixels * 4) {
        throw desktop::DesktopError("the server's picture cannot be read");
    }
    // Four bytes a pixel, blue first, as little-endian servers of depth 24 have it.
    const std::uint8_t* source = xcb_get_image_data(image.get());
    std::vector<guchar> colors(pixels * 3);
    for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
        colors[pixel * 3] = source[pixel * 4 + 2];
        colors[pixel * 3 + 1] = source[pixel * 4 + 1];
        colors[pixel * 3 + 2] = source[pixel * 4];
    }
    const std::unique_ptr<GdkPixbuf, PictureDeleter> picture(
        gdk_pixbuf_new_from_data(colors.data(), GDK_COLORSPACE_RGB, FALSE, 8, size->width,
                                 size->height, size->width * 3, nullptr, nullptr));
    GError* error = nullptr;
    if (gdk_pixbuf_save(picture.get(), file.c_str(), "png", &error, nullptr) == FALSE) {
        const std::string reason = error->message;
        g_error_free(error);
        throw desktop::DesktopError("cannot write " + file.string() + ": " + reason);
    }
}

}  // namespace lumatile::demonstration
