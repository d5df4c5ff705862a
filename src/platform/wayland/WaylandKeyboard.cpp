#include "platform/wayland/WaylandKeyboard.h"

#include <unistd.h>
#include <wayland-client.h>

#include <utility>

#include "platform/keyboard/KeyLegend.h"
#include "platform/keyboard/KeyTable.h"

namespace lumatile {

namespace {

constexpr std::uint32_t seatVersion = 5;

// The largest of the usual maps has about a tenth of this.
constexpr std::uint32_t mostBytes = 1U << 20U;

/// The text in a file of the compositor's, without the zero at its end; nothing where it is shorter
/// than promised. Not mapped: whoever shortens it then would end the program.
std::optional<std::string> textIn(int descriptor, std::uint32_t size) {
    if (size == 0 || size > mostBytes) {
        return std::nullopt;
    }
    std::string text(size, '\0');
    std::size_t done = 0;
    while (done < size) {
        const ssize_t got =
            pread(descriptor, text.data() + done, size - done, static_cast<off_t>(done));
        if (got <= 0) {
            return std::nullopt;
        }
        done += static_cast<std::size_t>(got);
    }
    text.resize(text.find_last_not_of('\0') + 1);
    return text;
}

}  // namespace

struct WaylandKeyboard::Listeners {
    static constexpr wl_seat_listener seat = {
        .capabilities =
            [](void* data, wl_seat* /*seat*/, std::uint32_t capabilities) {
                static_cast<WaylandKeyboard*>(data)->noteCapabilities(capabilities);
            },
        .name = [](void* /*data*/, wl_seat* /*seat*/, const char* /*name*/) {},
    };
    static constexpr wl_keyboard_listener keyboard = {
        .keymap =
            [](void* data, wl_keyboard* /*keyboard*/, std::uint32_t format, int descriptor,
               std::uint32_t size) {
                static_cast<WaylandKeyboard*>(data)->noteMap(format, descriptor, size);
            },
        .enter = [](void* /*data*/, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                    wl_surface* /*surface*/, wl_array* /*keys*/) {},
        .leave = [](void* /*data*/, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                    wl_surface* /*surface*/) {},
        .key = [](void* /*data*/, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                  std::uint32_t /*time*/, std::uint32_t /*key*/, std::uint32_t /*state*/) {},
        .modifiers = [](void* /*data*/, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                        std::uint32_t /*depressed*/, std::uint32_t /*latched*/,
                        std::uint32_t /*locked*/, std::uint32_t /*group*/) {},
        .repeat_info = [](void* /*data*/, wl_keyboard* /*keyboard*/, int /*rate*/,
                          int /*delay*/) {},
    };
};

WaylandKeyboard::WaylandKeyboard(WaylandConnection& connection)
    : connection_(connection),
      appearing_(connection.observeAppearing([this](const WaylandGlobal& global) { add(global); })),
      vanishing_(
          connection.observeVanishing([this](const WaylandGlobal& global) { remove(global); })) {
    for (const WaylandGlobal& global : connection.globals()) {
        add(global);
    }
}

WaylandKeyboard::~WaylandKeyboard() = default;

std::optional<std::uint32_t> WaylandKeyboard::virtualKeyCode(std::uint32_t nativeScanCode) {
    return map_.virtualKeyCodeOf(nativeScanCode);
}

std::map<std::uint32_t, std::string> WaylandKeyboard::legends() {
    std::map<std::uint32_t, std::string> result;
    for (const PhysicalKey& key : KeyTable::keys()) {
        result[key.virtualKeyCode] = keyLegend(key, keysymAt(key.virtualKeyCode));
    }
    return result;
}

std::uint32_t WaylandKeyboard::keysymAt(std::uint32_t virtualKeyCode) const {
    return map_.keysymAt(virtualKeyCode, group_);
}

void WaylandKeyboard::setGroup(std::uint32_t index) {
    if (std::exchange(group_, index) != index) {
        observers_.notify();
    }
}

WaylandKeyboard::Observers::Subscription WaylandKeyboard::observe(Observers::Observer observer) {
    return observers_.add(std::move(observer));
}

void WaylandKeyboard::add(const WaylandGlobal& global) {
    if (global.interface == wl_seat_interface.name && !seat_) {
        seatName_ = global.name;
        seat_ = connection_.bind<wl_seat>(global, wl_seat_interface, seatVersion);
        wl_seat_add_listener(seat_.get(), &Listeners::seat, this);
    }
}

void WaylandKeyboard::remove(const WaylandGlobal& global) {
    if (seat_ && global.name == seatName_) {
        keyboard_.reset();
        seat_.reset();
    }
}

void WaylandKeyboard::noteCapabilities(std::uint32_t capabilities) {
    if ((capabilities & WL_SEAT_CAPABILITY_KEYBOARD) == 0) {
        keyboard_.reset();
    } else if (!keyboard_) {
        keyboard_.reset(wl_seat_get_keyboard(seat_.get()));
        wl_keyboard_add_listener(keyboard_.get(), &Listeners::keyboard, this);
    }
}

void WaylandKeyboard::noteMap(std::uint32_t format, int descriptor, std::uint32_t size) {
    const std::optional<std::string> text =
        format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1 ? textIn(descriptor, size) : std::nullopt;
    close(descriptor);
    std::optional<KeyMap> map = text ? KeyMap::compiled(*text) : std::nullopt;
    if (!map) {
        return;
    }
    isKnown_ = true;
    if (*map != map_) {
        map_ = *std::move(map);
        observers_.notify();
    }
}

}  // namespace lumatile
