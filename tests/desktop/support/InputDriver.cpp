#include "tests/desktop/support/InputDriver.h"

#include <xcb/xtest.h>

#include <array>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

InputDriver::InputDriver(const std::string& display) : XClient(display) {
    const XReply<xcb_test_get_version_reply_t> version(xcb_test_get_version_reply(
        connection(), xcb_test_get_version(connection(), 2, 2), nullptr));
    if (!version) {
        throw DesktopError("the server takes no synthetic input");
    }
}

InputDriver::~InputDriver() {
    if (isLost()) {
        return;
    }
    for (const std::uint8_t button : std::vector(heldButtons_)) {
        buttonUp(button);
    }
    for (const std::uint8_t key : std::vector(heldKeys_)) {
        keyUp(key);
    }
    for (const std::uint8_t lock :
         {KeyPosition::capsLock, KeyPosition::numLock, KeyPosition::scrollLock}) {
        setLock(lock, false);
    }
}

void InputDriver::send(std::uint8_t type, std::uint8_t detail, int x, int y) {
    xcb_test_fake_input(connection(), type, detail, XCB_CURRENT_TIME, root(),
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    roundTrip();
}

void InputDriver::keyDown(std::uint8_t key) {
    heldKeys_.push_back(key);
    send(XCB_KEY_PRESS, key);
}

void InputDriver::keyUp(std::uint8_t key) {
    std::erase(heldKeys_, key);
    send(XCB_KEY_RELEASE, key);
}

void InputDriver::press(std::span<const std::uint8_t> modifiers, std::uint8_t key) {
    for (const std::uint8_t modifier : modifiers) {
        keyDown(modifier);
    }
    keyDown(key);
    keyUp(key);
    for (auto modifier = modifiers.rbegin(); modifier != modifiers.rend(); ++modifier) {
        keyUp(*modifier);
    }
}

std::uint16_t InputDriver::modifierOf(std::uint8_t key) {
    const XReply<xcb_get_modifier_mapping_reply_t> mapping(xcb_get_modifier_mapping_reply(
        connection(), xcb_get_modifier_mapping(connection()), nullptr));
    if (!mapping) {
        return 0;
    }
    const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(mapping.get());
    for (int modifier = 0; modifier < 8; ++modifier) {
        for (int place = 0; place < mapping->keycodes_per_modifier; ++place) {
            if (codes[modifier * mapping->keycodes_per_modifier + place] == key) {
                return static_cast<std::uint16_t>(1U << static_cast<unsigned>(modifier));
            }
        }
    }
    return 0;
}

std::uint16_t InputDriver::modifiersNow() {
    const XReply<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(connection(), xcb_query_pointer(connection(), root()), nullptr));
    return pointer ? pointer->mask : std::uint16_t{0};
}

bool InputDriver::setLock(std::uint8_t lockKey, bool on) {
    const std::uint16_t modifier = modifierOf(lockKey);
    if (modifier == 0) {
        return false;
    }
    if (((modifiersNow() & modifier) != 0) != on) {
        press({}, lockKey);
    }
    return ((modifiersNow() & modifier) != 0) == on;
}

void InputDriver::movePointer(int x, int y) { send(XCB_MOTION_NOTIFY, 0, x, y); }

void InputDriver::buttonDown(std::uint8_t button) {
    heldButtons_.push_back(button);
    send(XCB_BUTTON_PRESS, button);
}

void InputDriver::buttonUp(std::uint8_t button) {
    std::erase(heldButtons_, button);
    send(XCB_BUTTON_RELEASE, button);
}

}  // namespace lumatile::desktop
