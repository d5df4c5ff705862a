#include "platform/kwin/KWinAccessibilityPlatform.h"

#include <unistd.h>

#include <algorithm>
#include <string>
#include <utility>

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
      writes_(KWinReport::farthest,
              [this](const std::vector<PlacingWrites::Placement>& placements) {
                  return carryOut(placements);
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
    writes_.carryOut(element);
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

bool KWinAccessibilityPlatform::carryOut(const std::vector<PlacingWrites::Placement>& placements) {
    bool areAllThere = true;
    std::vector<Asked> asked;
    double patience = 0;
    channel_.mirror();
    for (const auto& [element, wish] : placements) {
        KWinWindow* window = channel_.mirrorSoFar().find(known(element)->id());
        const auto placing =
            window != nullptr ? KWinPlacing::plan(*window, wish, screens_.origin()) : std::nullopt;
        if (placing && placing->isSo) {
            window->written = placing->outcome(*window);
            continue;
        }
        const std::uint64_t order = placing ? channel_.give(placing->order(*window)) : 0;
        if (order == 0) {
            areAllThere = false;
            continue;
        }
        patience = std::max(patience, timeouts_.of(window->timeout, window->record.pid));
        const bool isInVain =
            placing->withSize &&
            window->unmet == KWinUnmetSize{placing->target.size(), window->frames};
        asked.push_back({window->record.id, *placing, order, window->frames, isInVain});
    }
    if (!asked.empty()) {
        std::size_t answered = 0;
        channel_.waitUntil(
            [&] {
                while (answered < asked.size() && isAnswered(asked[answered])) {
                    ++answered;
                }
                return answered == asked.size();
            },
            patience);
    }
    for (const Asked& one : asked) {
        areAllThere = conclude(one) && areAllThere;
    }
    return areAllThere;
}

/// A program that has been asked for a size answers with the frame that it takes.
bool KWinAccessibilityPlatform::isAnswered(const Asked& asked) {
    const auto result = channel_.resultOf(asked.order);
    const KWinWindow* window = channel_.mirrorSoFar().find(asked.id);
    return window == nullptr || (result && (*result != KWinDone::Result::asked || asked.isInVain ||
                                            window->record.frame == asked.placing.target ||
                                            window->frames != asked.framesBefore));
}

/// @return whether the window is where it was to be
bool KWinAccessibilityPlatform::conclude(const Asked& asked) {
    KWinWindow* window = channel_.mirrorSoFar().find(asked.id);
    const auto result = channel_.resultOf(asked.order);
    if (window == nullptr ||
        (result && (*result == KWinDone::Result::refused || *result == KWinDone::Result::failed))) {
        return false;
    }
    const bool isUnmet = result == KWinDone::Result::asked && window->frames == asked.framesBefore;
    window->unmet = isUnmet
                        ? std::optional(KWinUnmetSize{asked.placing.target.size(), window->frames})
                        : std::nullopt;
    const bool isUnderWay = !result || isUnmet;
    window->written = isUnderWay ? asked.placing.expectation() : asked.placing.outcome(*window);
    return window->record.frame == asked.placing.target;
}

std::optional<bool> KWinAccessibilityPlatform::isSettable(const Element& element,
                                                          std::string_view attribute) {
    writes_.carryOut(element);
    const KWinWindow* window = windowOf(element);
    if (window == nullptr) {
        return std::nullopt;
    }
    const KWinWindowRecord& record = window->record;
    const bool isFree = !record.isMaximized && !record.isFullScreen && !record.isShaded;
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
