#include "platform/x11/X11AccessibilityPlatform.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "platform/windows/WindowReading.h"
#include "platform/x11/X11PixelRect.h"
#include "platform/x11/X11Property.h"
#include "platform/x11/X11Reply.h"
#include "windows/AttributeName.h"

namespace lumatile {

namespace {

// Deeper than any toolkit nests its windows; a bound on what one look at a point can cost.
constexpr int mostLevels = 32;

const X11Element* known(const Element& element) {
    return dynamic_cast<const X11Element*>(element.get());
}

Element make(X11Element::Kind kind, std::int64_t value, std::uint64_t serial) {
    return std::make_shared<X11Element>(kind, value, serial);
}

Element bareWindow(xcb_window_t window) { return make(X11Element::Kind::window, window, 0); }

xcb_window_t idOf(const X11Element& element) { return static_cast<xcb_window_t>(element.value()); }

bool isOrdinary(const X11Window& window) { return window.facts.kind() == WindowKind::normal; }

}  // namespace

X11AccessibilityPlatform::X11AccessibilityPlatform(X11Connection& connection, X11Monitors& monitors,
                                                   X11WindowMirror& mirror, double longestTimeout)
    : connection_(connection),
      monitors_(monitors),
      mirror_(mirror),
      writer_(connection, monitors, mirror, longestTimeout),
      writes_(X11PixelRect::coordinateLimit,
              [this](const std::vector<PlacingWrites::Placement>& placements) {
                  bool areAllThere = true;
                  for (const auto& [element, wish] : placements) {
                      areAllThere = carryOut(*known(element), wish) && areAllThere;
                  }
                  return areAllThere;
              }) {}

bool X11AccessibilityPlatform::isTrusted(bool /*prompt*/) {
    mirror_.refresh();
    return mirror_.hasWindowManager() && takesMoves() && !connection_.isLost();
}

TrustObstacle X11AccessibilityPlatform::trustObstacle() {
    if (isGuestServer_) {
        return TrustObstacle::otherDisplaySystem;
    }
    mirror_.refresh();
    return mirror_.hasWindowManager() ? TrustObstacle::windowManagerRefuses
                                      : TrustObstacle::noWindowManager;
}

bool X11AccessibilityPlatform::takesMoves() {
    constexpr std::uint32_t longestSupportedList = 1024;
    X11Atoms& atoms = connection_.atoms();
    return X11Property(connection_.get(), X11Property::ask(connection_.get(), connection_.root(),
                                                           atoms["_NET_SUPPORTED"], XCB_ATOM_ATOM,
                                                           longestSupportedList))
        .has(atoms["_NET_MOVERESIZE_WINDOW"]);
}

Element X11AccessibilityPlatform::systemWideElement() {
    return make(X11Element::Kind::systemWide, 0, 0);
}

Element X11AccessibilityPlatform::applicationElement(Pid pid) {
    return make(X11Element::Kind::application, pid, 0);
}

std::optional<Element> X11AccessibilityPlatform::elementAtPoint(const Point& point) {
    writes_.carryOut();
    mirror_.refresh();
    // The pixel that the point lies in. Rounding half a pixel on gives its lower edge.
    const Point root = monitors_.toRoot(point);
    const auto x = X11PixelRect::roundedEdge(root.x - 0.5);
    const auto y = X11PixelRect::roundedEdge(root.y - 0.5);
    if (!x || !y) {
        return std::nullopt;
    }
    if (const X11Window* pressed = mirror_.movedSincePressAt(*x, *y)) {
        return elementOf(*pressed);
    }
    xcb_window_t innermost = connection_.root();
    xcb_window_t topLevel = XCB_WINDOW_NONE;
    for (int level = 0; level < mostLevels; ++level) {
        const X11Reply<xcb_translate_coordinates_reply_t> reply(xcb_translate_coordinates_reply(
            connection_.get(),
            xcb_translate_coordinates(connection_.get(), connection_.root(), innermost,
                                      static_cast<std::int16_t>(*x), static_cast<std::int16_t>(*y)),
            nullptr));
        if (!reply || reply->child == XCB_WINDOW_NONE) {
            break;
        }
        innermost = reply->child;
        topLevel = level == 0 ? innermost : topLevel;
    }
    if (innermost == connection_.root()) {
        return std::nullopt;
    }
    const X11Window* window = mirror_.find(innermost);
    if (window == nullptr && innermost == topLevel && isUnseen(innermost)) {
        return shownAt(*x, *y);
    }
    return window != nullptr ? elementOf(*window) : bareWindow(innermost);
}

bool X11AccessibilityPlatform::isUnseen(xcb_window_t window) {
    const X11Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection_.get(), xcb_get_window_attributes(connection_.get(), window), nullptr));
    return attributes && attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY;
}

std::optional<Element> X11AccessibilityPlatform::shownAt(int x, int y) {
    for (const xcb_window_t id : mirror_.stacking()) {
        const X11Window* window = mirror_.find(id);
        if (window == nullptr || mirror_.isMinimized(*window) || mirror_.isElsewhere(*window)) {
            continue;
        }
        if (window->frame().outer().contains(x, y)) {
            return elementOf(*window);
        }
    }
    return std::nullopt;
}

std::optional<AttributeValue> X11AccessibilityPlatform::read(const Element& element,
                                                             std::string_view attribute) {
    const X11Element* target = known(element);
    if (target == nullptr) {
        return std::nullopt;
    }
    writes_.carryOut();
    mirror_.refresh();
    switch (target->kind()) {
        case X11Element::Kind::systemWide:
            return readSystemWide(attribute);
        case X11Element::Kind::application:
        case X11Element::Kind::client:
            return readApplication(*target, attribute);
        case X11Element::Kind::window:
            break;
    }
    if (attribute == AttributeName::parent) {
        if (std::optional<Element> parent = parentOf(*target)) {
            return AttributeValue(*std::move(parent));
        }
        return std::nullopt;
    }
    const X11Window* window = windowOf(*target);
    return window != nullptr ? readWindow(*window, attribute) : std::nullopt;
}

std::optional<AttributeValue> X11AccessibilityPlatform::readSystemWide(std::string_view attribute) {
    const X11Window* active = mirror_.active();
    if (attribute != AttributeName::focusedApplication || active == nullptr) {
        return std::nullopt;
    }
    return AttributeValue(applicationOf(*active));
}

std::optional<AttributeValue> X11AccessibilityPlatform::readApplication(
    const X11Element& element, std::string_view attribute) {
    ApplicationReading reading;
    for (const X11Window* window : windowsOf(element)) {
        reading.windows.push_back({elementOf(*window),
                                   isOrdinary(*window) && !mirror_.isMinimized(*window),
                                   mirror_.isElsewhere(*window)});
    }
    const X11Window* active = mirror_.active();
    if (active != nullptr && belongsTo(*active, element)) {
        reading.focused = elementOf(*active);
        reading.isFocusOnFurniture = isFurniture(active->facts.kind());
    }
    return reading.read(attribute);
}

std::optional<AttributeValue> X11AccessibilityPlatform::readWindow(const X11Window& window,
                                                                   std::string_view attribute) {
    const WindowReading reading{subroleOf(window.facts.kind()), mirror_.isMinimized(window),
                                window.facts.isFullScreen, [&] { return frameOf(window); }};
    return reading.read(attribute);
}

Rect X11AccessibilityPlatform::frameOf(const X11Window& window) {
    const std::optional<X11PixelRect> pressed = mirror_.outerAtPress(window);
    return pressed ? monitors_.fromRoot(pressed->toRect()) : writer_.frame(window);
}

std::optional<Element> X11AccessibilityPlatform::parentOf(const X11Element& element) {
    const xcb_window_t id = idOf(element);
    if (const X11Window* window = windowOf(element)) {
        return applicationOf(*window);
    }
    if (element.serial() != 0) {
        return std::nullopt;  // Was a window of the mirror and is none now.
    }
    if (const X11Window* framed = mirror_.framedBy(id)) {
        return elementOf(*framed);
    }
    const X11Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection_.get(), xcb_query_tree(connection_.get(), id), nullptr));
    if (!tree || tree->parent == XCB_WINDOW_NONE || tree->parent == tree->root) {
        return std::nullopt;
    }
    const X11Window* window = mirror_.find(tree->parent);
    return window != nullptr ? elementOf(*window) : bareWindow(tree->parent);
}

bool X11AccessibilityPlatform::write(const Element& element, std::string_view attribute,
                                     const AttributeValue& value) {
    const X11Element* target = known(element);
    if (target == nullptr || target->kind() != X11Element::Kind::window) {
        return false;
    }
    return writes_.write(element, attribute, value);
}

bool X11AccessibilityPlatform::carryOut(const X11Element& target, const PlacingWish& wish) {
    mirror_.refresh();
    const X11Window* window = windowOf(target);
    return window != nullptr &&
           writer_.write(window->id, window->serial, wish,
                         timeouts_.of(window->timeout, window->owner(), writer_.longest()));
}

std::optional<bool> X11AccessibilityPlatform::isSettable(const Element& element,
                                                         std::string_view attribute) {
    const X11Element* target = known(element);
    if (target == nullptr) {
        return std::nullopt;
    }
    writes_.carryOut();
    mirror_.refresh();
    const X11Window* window = windowOf(*target);
    if (window == nullptr) {
        return std::nullopt;
    }
    const X11WindowFacts& facts = window->facts;
    const bool isFree = !facts.isMaximized() && !facts.isShaded && !facts.isFullScreen;
    // xfwm4 withdraws both from what is on a desktop that it does not show, and carries them out
    // all the same.
    const bool isWithdrawn =
        !facts.allowsMove && !facts.allowsResize && mirror_.isElsewhere(*window);
    return (attribute == AttributeName::position && (facts.allowsMove || isWithdrawn) && isFree) ||
           (attribute == AttributeName::size && (facts.allowsResize || isWithdrawn) && isFree);
}

std::optional<Pid> X11AccessibilityPlatform::pid(const Element& element) {
    const X11Element* target = known(element);
    if (target == nullptr) {
        return std::nullopt;
    }
    mirror_.refresh();
    if (target->kind() == X11Element::Kind::application) {
        return windowsOf(*target).empty() ? std::nullopt : std::optional<Pid>(target->value());
    }
    const X11Window* window = windowOf(*target);
    return window != nullptr ? window->owner() : std::nullopt;
}

void X11AccessibilityPlatform::setMessagingTimeout(const Element& element, double seconds) {
    const X11Element* target = known(element);
    if (target == nullptr || !(seconds >= 0)) {
        return;
    }
    if (target->kind() == X11Element::Kind::window) {
        if (X11Window* window = windowOf(*target)) {
            window->timeout = seconds;
        }
    } else if (target->kind() == X11Element::Kind::application) {
        timeouts_.set(target->value(), seconds);
    }
}

X11Window* X11AccessibilityPlatform::windowOf(const X11Element& element) {
    return element.kind() == X11Element::Kind::window
               ? mirror_.findManaged(idOf(element), element.serial())
               : nullptr;
}

Element X11AccessibilityPlatform::elementOf(const X11Window& window) const {
    return make(X11Element::Kind::window, window.id, window.serial);
}

Element X11AccessibilityPlatform::applicationOf(const X11Window& window) const {
    const std::optional<Pid> owner = window.owner();
    return owner ? make(X11Element::Kind::application, *owner, 0)
                 : make(X11Element::Kind::client, mirror_.clientOf(window.id), 0);
}

bool X11AccessibilityPlatform::belongsTo(const X11Window& window,
                                         const X11Element& application) const {
    const std::optional<Pid> owner = window.owner();
    return application.kind() == X11Element::Kind::application
               ? owner == application.value()
               : !owner && mirror_.clientOf(window.id) == idOf(application);
}

std::vector<X11Window*> X11AccessibilityPlatform::windowsOf(const X11Element& application) {
    std::vector<X11Window*> result;
    if (application.kind() == X11Element::Kind::systemWide ||
        application.kind() == X11Element::Kind::window) {
        return result;
    }
    for (const xcb_window_t id : mirror_.stacking()) {
        X11Window* window = mirror_.find(id);
        if (window != nullptr && belongsTo(*window, application)) {
            result.push_back(window);
        }
    }
    return result;
}

}  // namespace lumatile
