#include "platform/kwin/KWinAccessibilityPlatform.h"

#include <unistd.h>

#include <string>
#include <utility>

#include "platform/kwin/KWinPlacing.h"
#include "platform/kwin/KWinReport.h"
#include "platform/windows/WindowReading.h"
#include "windows/AttributeName.h"

namespace lumatile {

namespace {

const KWinElement* known(const Element& element) {
    return dynamic_cast<const KWinElement*>(element.get());
}

bool isOpen(const KWinWindow& window) {
    return window.record.kind == WindowKind::normal && !window.record.isMinimized;
}

bool contains(const Rect& rect, const Point& point) {
    return point.x >= rect.minX() && point.x < rect.maxX() && point.y >= rect.minY() &&
           point.y < rect.maxY();
}

Element elementOf(const KWinWindow& window) { return KWinElement::window(window.record.id); }

}  // namespace

KWinAccessibilityPlatform::KWinAccessibilityPlatform(KWinChannel& channel, KWinScreenList& screens,
                                                     const KWinMouseEventSource& mouse)
    : channel_(channel),
      screens_(screens),
      mouse_(mouse),
      ownPid_(getpid()),
      writes_(KWinReport::farthest, [this](const Element& element, const PlacingWish& wish) {
          return carryOut(element, wish);
      }) {}

bool KWinAccessibilityPlatform::isTrusted(bool /*prompt*/) {
    channel_.mirror();
    return channel_.isAnswering();
}

TrustObstacle KWinAccessibilityPlatform::trustObstacle() {
    return channel_.state() == KWinChannel::State::refused ? TrustObstacle::windowManagerRefuses
                                                           : TrustObstacle::noWindowManager;
}

Element KWinAccessibilityPlatform::systemWideElement() { return KWinElement::systemWide(); }

Element KWinAccessibilityPlatform::applicationElement(Pid pid) {
    return KWinElement::application(pid);
}

std::optional<Element> KWinAccessibilityPlatform::elementAtPoint(const Point& point) {
    writes_.carryOut();
    KWinMirror& mirror = channel_.mirror();
    if (const auto* pressed = mouse_.pressed()) {
        const KWinWindow* window = mirror.find(pressed->id);
        return window != nullptr ? std::optional(elementOf(*window)) : std::nullopt;
    }
    const Point origin = screens_.origin();
    const Point place{point.x + origin.x, point.y + origin.y};
    for (const KWinWindow* window : mirror.windows()) {
        if (!window->record.isMinimized && !window->record.isElsewhere &&
            contains(window->record.frame, place) &&
            !(isOwn(*window) && window->record.kind == WindowKind::other)) {
            return elementOf(*window);
        }
    }
    return std::nullopt;
}

std::optional<AttributeValue> KWinAccessibilityPlatform::read(const Element& element,
                                                              std::string_view attribute) {
    const KWinElement* target = known(element);
    if (target == nullptr) {
        return std::nullopt;
    }
    writes_.carryOut();
    KWinMirror& mirror = channel_.mirror();
    switch (target->kind()) {
        case KWinElement::Kind::systemWide: {
            const KWinWindow* active = mirror.active();
            if (attribute != AttributeName::focusedApplication || active == nullptr) {
                return std::nullopt;
            }
            return AttributeValue(KWinElement::application(active->record.pid));
        }
        case KWinElement::Kind::application:
            return readApplication(target->pid(), attribute);
        case KWinElement::Kind::window:
            break;
    }
    const KWinWindow* window = mirror.find(target->id());
    return window != nullptr ? readWindow(*window, attribute) : std::nullopt;
}

std::optional<AttributeValue> KWinAccessibilityPlatform::readApplication(
    Pid pid, std::string_view attribute) {
    ApplicationReading reading;
    for (const KWinWindow* window : windowsOf(pid)) {
        reading.windows.push_back(
            {elementOf(*window), isOpen(*window), window->record.isElsewhere});
    }
    const KWinWindow* active = channel_.mirrorSoFar().active();
    if (active != nullptr && active->record.pid == pid) {
        reading.focused = elementOf(*active);
        reading.isFocusOnFurniture = isFurniture(active->record.kind);
    }
    return reading.read(attribute);
}

std::optional<AttributeValue> KWinAccessibilityPlatform::readWindow(const KWinWindow& window,
                                                                    std::string_view attribute) {
    if (attribute == AttributeName::parent) {
        return AttributeValue(KWinElement::application(window.record.pid));
    }
    const bool isOwnNormal = isOwn(window) && window.record.kind == WindowKind::normal;
    const WindowReading reading{
        isOwnNormal ? AttributeName::dialogSubrole : subroleOf(window.record.kind),
        window.record.isMinimized, window.record.isFullScreen, [&] {
            const Point origin = screens_.origin();
            return frameOf(window).offsetBy(-origin.x, -origin.y);
        }};
    return reading.read(attribute);
}

Rect KWinAccessibilityPlatform::frameOf(const KWinWindow& window) const {
    const auto* pressed = mouse_.pressed();
    return pressed != nullptr && pressed->id == window.record.id ? pressed->frame
                                                                 : KWinPlacing::frameOf(window);
}

bool KWinAccessibilityPlatform::write(const Element& element, std::string_view attribute,
                                      const AttributeValue& value) {
    const KWinElement* target = known(element);
    if (target == nullptr || target->kind() != KWinElement::Kind::window) {
        return false;
    }
    return writes_.write(element, attribute, value);
}

bool KWinAccessibilityPlatform::carryOut(const Element& element, const PlacingWish& wish) {
    const KWinWindow* window = windowOf(element);
    return window != nullptr && place(window->record.id, wish);
}

// The id is a copy: the window that it was taken from may go while it is waited for.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
bool KWinAccessibilityPlatform::place(std::string id, const PlacingWish& wish) {
    KWinWindow* window = channel_.mirror().find(id);
    if (window == nullptr) {
        return false;
    }
    const std::optional<KWinPlacing> placing = KWinPlacing::plan(*window, wish, screens_.origin());
    if (!placing) {
        return false;
    }
    if (placing->isSo) {
        window->written = placing->outcome(*window);
        return true;
    }
    const std::uint64_t framesBefore = window->frames;
    const std::uint64_t order = channel_.give(placing->order(*window));
    if (order == 0) {
        return false;
    }
    std::optional<KWinDone::Result> result;
    // A program that has been asked for a size answers with the frame that it takes.
    const auto isAnswered = [&] {
        result = channel_.resultOf(order);
        const KWinWindow* now = channel_.mirrorSoFar().find(id);
        return now == nullptr ||
               (result && (*result != KWinDone::Result::asked ||
                           now->record.frame == placing->target || now->frames != framesBefore));
    };
    channel_.waitUntil(isAnswered, timeouts_.of(window->timeout, window->record.pid));
    window = channel_.mirrorSoFar().find(id);
    if (window == nullptr ||
        (result && (*result == KWinDone::Result::refused || *result == KWinDone::Result::failed))) {
        return false;
    }
    const bool isUnderWay =
        !result || (*result == KWinDone::Result::asked && window->frames == framesBefore);
    window->written = isUnderWay ? placing->expectation() : placing->outcome(*window);
    return window->record.frame == placing->target;
}

std::optional<bool> KWinAccessibilityPlatform::isSettable(const Element& element,
                                                          std::string_view attribute) {
    writes_.carryOut();
    const KWinWindow* window = windowOf(element);
    if (window == nullptr) {
        return std::nullopt;
    }
    const KWinWindowRecord& record = window->record;
    const bool isFree = !record.isMaximized && !record.isFullScreen;
    return (attribute == AttributeName::position && record.isMovable && isFree) ||
           (attribute == AttributeName::size && record.isResizable && isFree);
}

std::optional<Pid> KWinAccessibilityPlatform::pid(const Element& element) {
    const KWinElement* target = known(element);
    if (target == nullptr) {
        return std::nullopt;
    }
    if (target->kind() == KWinElement::Kind::application) {
        return windowsOf(target->pid()).empty() ? std::nullopt : std::optional(target->pid());
    }
    const KWinWindow* window = windowOf(element);
    return window != nullptr ? std::optional(window->record.pid) : std::nullopt;
}

void KWinAccessibilityPlatform::setMessagingTimeout(const Element& element, double seconds) {
    const KWinElement* target = known(element);
    if (target == nullptr || !(seconds >= 0)) {
        return;
    }
    if (KWinWindow* window = windowOf(element)) {
        window->timeout = seconds;
    } else if (target->kind() == KWinElement::Kind::application) {
        timeouts_.set(target->pid(), seconds);
    }
}

KWinWindow* KWinAccessibilityPlatform::windowOf(const Element& element) {
    const KWinElement* target = known(element);
    return target != nullptr && target->kind() == KWinElement::Kind::window
               ? channel_.mirror().find(target->id())
               : nullptr;
}

std::vector<KWinWindow*> KWinAccessibilityPlatform::windowsOf(Pid pid) {
    std::vector<KWinWindow*> windows = channel_.mirror().windows();
    std::erase_if(windows, [pid](const KWinWindow* window) { return window->record.pid != pid; });
    return windows;
}

}  // namespace lumatile
