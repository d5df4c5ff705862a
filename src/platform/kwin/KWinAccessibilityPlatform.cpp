#include "platform/kwin/KWinAccessibilityPlatform.h"

#include <unistd.h>

#include <algorithm>
#include <string>
#include <utility>

#include "platform/kwin/KWinPlacing.h"
#include "windows/AttributeName.h"

namespace lumatile {

namespace {

const KWinElement* known(const Element& element) {
    return dynamic_cast<const KWinElement*>(element.get());
}

PlacingWish wishFor(std::string_view attribute, const AttributeValue& value) {
    PlacingWish wish;
    const Point* position = std::get_if<Point>(&value);
    if (position != nullptr && attribute == AttributeName::position) {
        wish.position = *position;
    }
    const Size* size = std::get_if<Size>(&value);
    if (size != nullptr && attribute == AttributeName::size) {
        wish.size = *size;
    }
    return wish;
}

std::string_view subroleOf(KWinWindowKind kind) {
    switch (kind) {
        case KWinWindowKind::normal:
            return AttributeName::standardWindowSubrole;
        case KWinWindowKind::dialog:
            return AttributeName::dialogSubrole;
        case KWinWindowKind::utility:
            return AttributeName::floatingWindowSubrole;
        case KWinWindowKind::toolbar:
            return "AXToolbar";
        case KWinWindowKind::menu:
            return "AXMenu";
        case KWinWindowKind::splash:
            return "AXSplash";
        case KWinWindowKind::dock:
            return "AXDock";
        case KWinWindowKind::desktop:
            return "AXDesktop";
        case KWinWindowKind::notification:
            return "AXNotification";
        case KWinWindowKind::popup:
            return "AXPopup";
        case KWinWindowKind::other:
            break;
    }
    return "AXUnknown";
}

/// Not a program's window, although a program shows it: where the user works is elsewhere.
bool isFurniture(const KWinWindow& window) {
    return window.record.kind == KWinWindowKind::dock ||
           window.record.kind == KWinWindowKind::desktop ||
           window.record.kind == KWinWindowKind::other;
}

bool isOpen(const KWinWindow& window) {
    return window.record.kind == KWinWindowKind::normal && !window.record.isMinimized;
}

bool contains(const Rect& rect, const Point& point) {
    return point.x >= rect.minX() && point.x < rect.maxX() && point.y >= rect.minY() &&
           point.y < rect.maxY();
}

Element elementOf(const KWinWindow& window) { return KWinElement::window(window.record.id); }

}  // namespace

KWinAccessibilityPlatform::KWinAccessibilityPlatform(KWinChannel& channel, KWinScreenList& screens,
                                                     const KWinMouseEventSource& mouse)
    : channel_(channel), screens_(screens), mouse_(mouse), ownPid_(getpid()) {}

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
    carryOutJoined();
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
            !(isOwn(*window) && window->record.kind == KWinWindowKind::other)) {
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
    carryOutJoined();
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
    const std::vector<KWinWindow*> windows = windowsOf(pid);
    if (windows.empty()) {
        return std::nullopt;
    }
    if (attribute == AttributeName::role) {
        return AttributeValue(std::string("AXApplication"));
    }
    if (attribute == AttributeName::windows) {
        std::vector<Element> elements;
        elements.reserve(windows.size());
        for (const KWinWindow* window : windows) {
            elements.push_back(elementOf(*window));
        }
        return AttributeValue(std::move(elements));
    }
    const KWinWindow* active = channel_.mirrorSoFar().active();
    const bool hasFocus = active != nullptr && active->record.pid == pid;
    if (hasFocus && isFurniture(*active)) {
        return std::nullopt;
    }
    if (attribute == AttributeName::focusedWindow && hasFocus) {
        return AttributeValue(elementOf(*active));
    }
    if (attribute == AttributeName::mainWindow) {
        const auto here = std::find_if(windows.begin(), windows.end(), [](KWinWindow* window) {
            return isOpen(*window) && !window->record.isElsewhere;
        });
        const auto main = here != windows.end()
                              ? here
                              : std::find_if(windows.begin(), windows.end(),
                                             [](KWinWindow* window) { return isOpen(*window); });
        if (main != windows.end()) {
            return AttributeValue(elementOf(**main));
        }
    }
    return std::nullopt;
}

std::optional<AttributeValue> KWinAccessibilityPlatform::readWindow(const KWinWindow& window,
                                                                    std::string_view attribute) {
    if (attribute == AttributeName::role) {
        return AttributeValue(std::string(AttributeName::windowRole));
    }
    if (attribute == AttributeName::subrole) {
        const bool isStandard = window.record.kind == KWinWindowKind::normal;
        return AttributeValue(std::string(isStandard && isOwn(window)
                                              ? AttributeName::dialogSubrole
                                              : subroleOf(window.record.kind)));
    }
    const auto frame = [&] {
        const Point origin = screens_.origin();
        return frameOf(window).offsetBy(-origin.x, -origin.y);
    };
    if (attribute == AttributeName::position) {
        return AttributeValue(frame().origin());
    }
    if (attribute == AttributeName::size) {
        return AttributeValue(frame().size());
    }
    if (attribute == AttributeName::minimized) {
        return AttributeValue(window.record.isMinimized);
    }
    if (attribute == AttributeName::fullScreen) {
        return AttributeValue(window.record.isFullScreen);
    }
    if (attribute == AttributeName::parent) {
        return AttributeValue(KWinElement::application(window.record.pid));
    }
    return std::nullopt;
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
    const PlacingWish wish = wishFor(attribute, value);
    if (wish.isEmpty()) {
        return false;
    }
    if (joined_ && target->equals(*joined_->element)) {
        joined_->wish = joined_->wish.followedBy(wish);
        return true;
    }
    carryOutJoined();
    return carryOut(element, wish);
}

void KWinAccessibilityPlatform::beginJoinedWrites(const Element& element) {
    endJoinedWrites();
    if (known(element) != nullptr) {
        joined_ = Joined{element, {}};
    }
}

void KWinAccessibilityPlatform::endJoinedWrites() {
    carryOutJoined();
    joined_.reset();
}

void KWinAccessibilityPlatform::carryOutJoined() {
    if (joined_ && !joined_->wish.isEmpty()) {
        carryOut(joined_->element, std::exchange(joined_->wish, {}));
    }
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
    channel_.waitUntil(isAnswered, timeoutOf(*window));
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
    carryOutJoined();
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
    return window != nullptr && window->record.pid > 0 ? std::optional(window->record.pid)
                                                       : std::nullopt;
}

void KWinAccessibilityPlatform::setMessagingTimeout(const Element& element, double seconds) {
    const KWinElement* target = known(element);
    if (target == nullptr || !(seconds >= 0)) {
        return;
    }
    if (KWinWindow* window = windowOf(element)) {
        window->timeout = seconds;
    } else if (target->kind() == KWinElement::Kind::application) {
        if (seconds < longestTimeout) {
            timeouts_[target->pid()] = seconds;
        } else {
            timeouts_.erase(target->pid());
        }
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

double KWinAccessibilityPlatform::timeoutOf(const KWinWindow& window) const {
    double timeout = std::min(longestTimeout, window.timeout.value_or(longestTimeout));
    const auto found = timeouts_.find(window.record.pid);
    return found != timeouts_.end() ? std::min(timeout, found->second) : timeout;
}

}  // namespace lumatile
