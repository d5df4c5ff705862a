#include "platform/x11/X11AccessibilityPlatform.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

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

/// Empty for what cannot be written, and for numbers that cannot be asked of a server.
PlacingWish wishFor(std::string_view attribute, const AttributeValue& value) {
    PlacingWish wish;
    const Point* position = std::get_if<Point>(&value);
    if (position != nullptr && attribute == AttributeName::position &&
        X11PixelRect::roundedEdge(position->x) && X11PixelRect::roundedEdge(position->y)) {
        wish.position = *position;
    }
    const Size* size = std::get_if<Size>(&value);
    if (size != nullptr && attribute == AttributeName::size &&
        X11PixelRect::roundedEdge(size->width) && X11PixelRect::roundedEdge(size->height)) {
        wish.size = *size;
    }
    return wish;
}

bool isOrdinary(const X11Window& window) { return window.facts.kind() == X11WindowKind::normal; }

}  // namespace

X11AccessibilityPlatform::X11AccessibilityPlatform(X11Connection& connection, X11Monitors& monitors,
                                                   X11WindowMirror& mirror, double longestTimeout)
    : connection_(connection),
      monitors_(monitors),
      mirror_(mirror),
      writer_(connection, monitors, mirror, longestTimeout) {}

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
    carryOutJoined();
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
    carryOutJoined();
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
    const std::vector<X11Window*> windows = windowsOf(element);
    if (windows.empty()) {
        return std::nullopt;
    }
    const X11Window* active = mirror_.active();
    const bool hasFocus = active != nullptr && belongsTo(*active, element);
    const bool focusOnFurniture = hasFocus && isFurniture(active->facts.kind());
    if (attribute == AttributeName::role) {
        return AttributeValue(std::string("AXApplication"));
    }
    if (attribute == AttributeName::windows) {
        std::vector<Element> elements;
        elements.reserve(windows.size());
        for (const X11Window* window : windows) {
            elements.push_back(elementOf(*window));
        }
        return AttributeValue(std::move(elements));
    }
    if (attribute == AttributeName::focusedWindow && hasFocus && !focusOnFurniture) {
        return AttributeValue(elementOf(*active));
    }
    if (attribute == AttributeName::mainWindow && !focusOnFurniture) {
        const auto isOpen = [this](X11Window* window) {
            return isOrdinary(*window) && !mirror_.isMinimized(*window);
        };
        // The stacking order goes through all virtual desktops; those that are not shown come last.
        auto main = std::find_if(windows.begin(), windows.end(), [&](X11Window* window) {
            return isOpen(window) && !mirror_.isElsewhere(*window);
        });
        if (main == windows.end()) {
            main = std::find_if(windows.begin(), windows.end(), isOpen);
        }
        if (main != windows.end()) {
            return AttributeValue(elementOf(**main));
        }
    }
    return std::nullopt;
}

std::optional<AttributeValue> X11AccessibilityPlatform::readWindow(const X11Window& window,
                                                                   std::string_view attribute) {
    if (attribute == AttributeName::role) {
        return AttributeValue(std::string(AttributeName::windowRole));
    }
    if (attribute == AttributeName::subrole) {
        return AttributeValue(std::string(subroleOf(window.facts.kind())));
    }
    if (attribute == AttributeName::position) {
        return AttributeValue(frameOf(window).origin());
    }
    if (attribute == AttributeName::size) {
        return AttributeValue(frameOf(window).size());
    }
    if (attribute == AttributeName::minimized) {
        return AttributeValue(mirror_.isMinimized(window));
    }
    if (attribute == AttributeName::fullScreen) {
        return AttributeValue(window.facts.isFullScreen);
    }
    return std::nullopt;
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
    const PlacingWish wish = wishFor(attribute, value);
    if (wish.isEmpty()) {
        return false;
    }
    if (joined_ && target->equals(*joined_->element)) {
        joined_->wish = joined_->wish.followedBy(wish);
        return true;
    }
    carryOutJoined();
    return carryOut(*target, wish);
}

void X11AccessibilityPlatform::beginJoinedWrites(const Element& element) {
    endJoinedWrites();
    if (auto target = std::dynamic_pointer_cast<const X11Element>(element)) {
        joined_ = Joined{std::move(target), {}};
    }
}

void X11AccessibilityPlatform::endJoinedWrites() {
    carryOutJoined();
    joined_.reset();
}

void X11AccessibilityPlatform::carryOutJoined() {
    if (joined_ && !joined_->wish.isEmpty()) {
        carryOut(*joined_->element, std::exchange(joined_->wish, {}));
    }
}

bool X11AccessibilityPlatform::carryOut(const X11Element& target, const PlacingWish& wish) {
    mirror_.refresh();
    const X11Window* window = windowOf(target);
    return window != nullptr && writer_.write(window->id, window->serial, wish, timeoutOf(*window));
}

std::optional<bool> X11AccessibilityPlatform::isSettable(const Element& element,
                                                         std::string_view attribute) {
    const X11Element* target = known(element);
    if (target == nullptr) {
        return std::nullopt;
    }
    carryOutJoined();
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
        if (seconds < X11WindowWriter::longestTimeout) {
            timeouts_[target->value()] = seconds;
        } else {
            timeouts_.erase(target->value());
        }
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

double X11AccessibilityPlatform::timeoutOf(const X11Window& window) const {
    double timeout = writer_.longest();
    if (window.timeout && *window.timeout < X11WindowWriter::longestTimeout) {
        timeout = std::min(timeout, *window.timeout);
    }
    if (const std::optional<Pid> owner = window.owner()) {
        const auto found = timeouts_.find(*owner);
        if (found != timeouts_.end()) {
            timeout = std::min(timeout, found->second);
        }
    }
    return timeout;
}

}  // namespace lumatile
