#include "tests/desktop/hotkeys/HotKeyDesk.h"

#include <utility>

#include "hotkeys/HotkeyService.h"
#include "platform/x11/XkbProtocol.h"
#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

HotKeyDesk::HotKeyDesk(const std::string& display) : connection_(X11Connection::open(display)) {
    if (!connection_) {
        throw DesktopError("no server at " + display);
    }
    hotKeys_ = std::make_unique<X11HotKeyPlatform>(*connection_);
    hotKeys_->installHandler([this](std::optional<HotKeyID> id) {
        delivered_.push_back(id ? id->id : 0);
        return 0;
    });
    hotKeys_->installAvailabilityChanged([this] { ++tellings_; });
    const int xkbEvent = xcb_get_extension_data(connection_->get(), &xcb_xkb_id)->first_event;
    subscription_ = connection_->observe([this, xkbEvent](const xcb_generic_event_t& event) {
        const int type = event.response_type & 0x7f;
        pressesSent_ += type == XCB_KEY_PRESS ? 1 : 0;
        keyboardChanged_ = keyboardChanged_ || type == XCB_MAPPING_NOTIFY || type == xkbEvent;
    });
}

std::optional<HotKeyReference> HotKeyDesk::want(std::uint32_t keyCode, std::uint32_t modifiers,
                                                std::uint32_t id) {
    return hotKeys_->registerHotKey(keyCode, modifiers, HotKeyID{HotkeyService::signature, id});
}

std::vector<std::uint32_t> HotKeyDesk::presses() {
    connection_->synchronize();
    connection_->dispatch();
    return delivered_;
}

void HotKeyDesk::forgetPresses() {
    presses();
    delivered_.clear();
}

bool HotKeyDesk::runUntil(const std::function<bool()>& condition) {
    return XClient::waitUntil(
        [&] {
            connection_->dispatch();
            return condition();
        },
        Deadline::usual(), {connection_->fileDescriptor()});
}

bool HotKeyDesk::keyboardChanged() { return std::exchange(keyboardChanged_, false); }

bool OtherProgram::take(std::uint8_t key, unsigned modifiers) {
    const XReply<xcb_generic_error_t> error(xcb_request_check(
        connection(),
        xcb_grab_key_checked(connection(), 0, root(), static_cast<std::uint16_t>(modifiers), key,
                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
    return error == nullptr;
}

void OtherProgram::giveBack(std::uint8_t key, unsigned modifiers) {
    xcb_ungrab_key(connection(), key, root(), static_cast<std::uint16_t>(modifiers));
    roundTrip();
}

}  // namespace lumatile::desktop
