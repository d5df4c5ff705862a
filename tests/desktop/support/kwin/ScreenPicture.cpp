#include "tests/desktop/support/kwin/ScreenPicture.h"

#include <fcntl.h>
#include <gio/gio.h>
#include <gio/gunixfdlist.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <fstream>

#include "platform/freedesktop/glib/GLibHandles.h"
#include "tests/desktop/support/Deadline.h"
#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {
namespace {

struct Descriptor {
    int number = -1;
    Descriptor() = default;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { reset(); }
    void reset() {
        if (number >= 0) {
            close(number);
            number = -1;
        }
    }
};

GObjectHandle<GDBusConnection> connect(const PrivateSession& session) {
    constexpr auto flags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GObjectHandle<GDBusConnection> bus(g_dbus_connection_new_for_address_sync(
        session.environment().at("DBUS_SESSION_BUS_ADDRESS").c_str(), flags, nullptr, nullptr,
        nullptr));
    if (!bus) {
        throw DesktopError("no private bus");
    }
    return bus;
}

guint32 number(GVariant* facts, const char* name) {
    guint32 value = 0;
    g_variant_lookup(facts, name, "u", &value);
    return value;
}

}  // namespace

ScreenPicture::ScreenPicture(const PrivateSession& session, int x, int y, int width, int height) {
    const GObjectHandle<GDBusConnection> bus = connect(session);
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        throw DesktopError("no pipe");
    }
    Descriptor readEnd;
    Descriptor writeEnd;
    readEnd.number = ends[0];
    writeEnd.number = ends[1];
    GObjectHandle<GUnixFDList> descriptors(g_unix_fd_list_new());
    g_unix_fd_list_append(descriptors.get(), writeEnd.number, nullptr);
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE("a{sv}"));
    g_variant_builder_add(&options, "{sv}", "native-resolution", g_variant_new_boolean(TRUE));
    GError* error = nullptr;
    const GVariantHandle reply(g_dbus_connection_call_with_unix_fd_list_sync(
        bus.get(), "org.kde.KWin.ScreenShot2", "/org/kde/KWin/ScreenShot2",
        "org.kde.KWin.ScreenShot2", "CaptureArea",
        g_variant_new("(iiuua{sv}h)", x, y, width, height, &options, 0), nullptr,
        G_DBUS_CALL_FLAGS_NONE, 20000, descriptors.get(), nullptr, nullptr, &error));
    const GErrorHandle owned(error);
    if (!reply) {
        throw DesktopError(std::string("no picture: ") + error->message);
    }
    descriptors.reset();
    writeEnd.reset();
    const GVariantHandle facts(g_variant_get_child_value(reply.get(), 0));
    width_ = static_cast<int>(number(facts.get(), "width"));
    height_ = static_cast<int>(number(facts.get(), "height"));
    stride_ = number(facts.get(), "stride");
    const std::size_t size = stride_ * static_cast<std::size_t>(height_);
    const Deadline deadline = Deadline::usual();
    std::array<std::uint8_t, 65536> part{};
    while (bytes_.size() < size && !deadline.isOver()) {
        pollfd waiting{readEnd.number, POLLIN, 0};
        poll(&waiting, 1, deadline.milliseconds(1000));
        const ssize_t count = read(readEnd.number, part.data(), part.size());
        if (count == 0) {
            break;
        }
        if (count > 0) {
            bytes_.insert(bytes_.end(), part.begin(), part.begin() + count);
        }
    }
    if (bytes_.size() < size || size == 0) {
        throw DesktopError("the picture is cut short");
    }
}

ScreenColor ScreenPicture::at(int x, int y) const {
    constexpr std::size_t bytesPerPixel = 4;  // Blue first, as KWin reads its own screens.
    const std::size_t offset =
        stride_ * static_cast<std::size_t>(y) + bytesPerPixel * static_cast<std::size_t>(x);
    return {bytes_.at(offset + 2), bytes_.at(offset + 1), bytes_.at(offset)};
}

ScreenColor ScreenPicture::colorAt(const PrivateSession& session, int x, int y) {
    return ScreenPicture(session, x, y, 1, 1).at(0, 0);
}

void ScreenPicture::save(const std::string& path) const {
    std::ofstream file(path, std::ios::binary);
    file << "P6\n" << width_ << " " << height_ << "\n255\n";
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_; ++x) {
            const ScreenColor color = at(x, y);
            file << static_cast<char>(color.red) << static_cast<char>(color.green)
                 << static_cast<char>(color.blue);
        }
    }
}

}  // namespace lumatile::desktop
