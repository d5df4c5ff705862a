#include "tests/desktop/support/kwin/FakeInput.h"

#include <fake-input-client-protocol.h>
#include <keystate-client-protocol.h>
#include <linux/input-event-codes.h>
#include <wayland-client.h>

#include <array>
#include <optional>

#include "tests/desktop/support/KeyPosition.h"

namespace lumatile::desktop {
namespace {

constexpr std::uint32_t version = 4;  // The first that presses keys.

// Key codes of the X server are those of the kernel and eight.
constexpr std::uint32_t serverOffset = 8;

constexpr double wheelStep = 15;  // Degrees of an ordinary wheel's click.

std::uint32_t codeOf(std::uint8_t button) {
    constexpr std::array<std::uint32_t, 3> codes{BTN_LEFT, BTN_MIDDLE, BTN_RIGHT};
    return codes.at(button - 1U);
}

std::optional<std::uint32_t> lockOf(std::uint8_t key) {
    switch (key) {
        case KeyPosition::capsLock:
            return ORG_KDE_KWIN_KEYSTATE_KEY_CAPSLOCK;
        case KeyPosition::numLock:
            return ORG_KDE_KWIN_KEYSTATE_KEY_NUMLOCK;
        default:
            return std::nullopt;
    }
}

}  // namespace

struct FakeInput::LockNews {
    static void told(void* self, org_kde_kwin_keystate* /*locks*/, std::uint32_t key,
                     std::uint32_t state) {
        static_cast<FakeInput*>(self)->locked_[key] = state != ORG_KDE_KWIN_KEYSTATE_STATE_UNLOCKED;
    }
    static constexpr org_kde_kwin_keystate_listener listener{told};
};

FakeInput::FakeInput(const std::string& socket)
    : WaylandClient(socket),
      input_(static_cast<org_kde_kwin_fake_input*>(
          bindOnly(org_kde_kwin_fake_input_interface, version))),
      locks_(static_cast<org_kde_kwin_keystate*>(bindOnly(org_kde_kwin_keystate_interface, 1))) {
    org_kde_kwin_keystate_add_listener(locks_, &LockNews::listener, this);
    org_kde_kwin_fake_input_authenticate(input_, "tests", "hands of a user");
    roundTrip();
}

FakeInput::~FakeInput() {
    if (wl_display_get_error(display()) == 0) {
        for (const std::uint8_t key : heldKeys_) {
            org_kde_kwin_fake_input_keyboard_key(input_, key - serverOffset, 0);
        }
        for (const std::uint8_t button : heldButtons_) {
            org_kde_kwin_fake_input_button(input_, codeOf(button), 0);
        }
        wl_display_roundtrip(display());
    }
    // Of a version that knows no farewell.
    wl_proxy_destroy(reinterpret_cast<wl_proxy*>(locks_));
    org_kde_kwin_fake_input_destroy(input_);
}

void FakeInput::sendKey(std::uint8_t key, bool down) {
    org_kde_kwin_fake_input_keyboard_key(input_, key - serverOffset, down ? 1 : 0);
    if (down) {
        heldKeys_.push_back(key);
    } else {
        std::erase(heldKeys_, key);
    }
}

void FakeInput::keyDown(std::uint8_t key) {
    sendKey(key, true);
    roundTrip();
}

void FakeInput::keyUp(std::uint8_t key) {
    sendKey(key, false);
    roundTrip();
}

void FakeInput::press(std::span<const std::uint8_t> modifiers, std::uint8_t key) {
    for (const std::uint8_t modifier : modifiers) {
        sendKey(modifier, true);
    }
    sendKey(key, true);
    sendKey(key, false);
    for (const std::uint8_t modifier : modifiers) {
        sendKey(modifier, false);
    }
    roundTrip();
}

bool FakeInput::setLock(std::uint8_t lockKey, bool on) {
    const std::optional<std::uint32_t> lock = lockOf(lockKey);
    if (!lock) {
        return false;
    }
    const auto isOn = [&] {
        org_kde_kwin_keystate_fetchStates(locks_);
        roundTrip();
        return locked_[*lock];
    };
    if (isOn() != on) {
        press({}, lockKey);
    }
    return isOn() == on;
}

void FakeInput::movePointer(double x, double y) {
    org_kde_kwin_fake_input_pointer_motion_absolute(input_, wl_fixed_from_double(x),
                                                    wl_fixed_from_double(y));
    roundTrip();
}

void FakeInput::sendButton(std::uint8_t button, bool down) {
    org_kde_kwin_fake_input_button(input_, codeOf(button), down ? 1 : 0);
    roundTrip();
}

void FakeInput::buttonDown(std::uint8_t button) {
    sendButton(button, true);
    heldButtons_.push_back(button);
}

void FakeInput::buttonUp(std::uint8_t button) {
    sendButton(button, false);
    std::erase(heldButtons_, button);
}

void FakeInput::turnWheel(double steps) {
    org_kde_kwin_fake_input_axis(input_, WL_POINTER_AXIS_VERTICAL_SCROLL,
                                 wl_fixed_from_double(steps * wheelStep));
    roundTrip();
}

}  // namespace lumatile::desktop
