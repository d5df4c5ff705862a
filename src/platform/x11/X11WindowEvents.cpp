#include "platform/x11/X11WindowEvents.h"

#include <utility>

#include "platform/x11/X11Event.h"

namespace lumatile {

namespace {

/// The rectangle of a window without its border, relative to its parent.
X11PixelRect insideOf(const xcb_generic_event_t& event) {
    const auto& configured = X11Event::as<xcb_configure_notify_event_t>(event);
    return {configured.x + configured.border_width, configured.y + configured.border_width,
            configured.width, configured.height};
}

/// Whether what is known of the window's place is from before the event, whole: the place is read
/// with two requests, and what happened between them is in the second one only.
bool isSinceReading(const X11Window& client, const xcb_generic_event_t& event) {
    return !client.isPlaceStale && !X11Event::isBefore(event, client.placeReadAt + 1);
}

}  // namespace

X11WindowEvents::X11WindowEvents(X11Connection& connection, const X11WindowProperties& properties,
                                 X11WindowTable& table, X11RootFacts& root,
                                 X11GeometryListening& listening)
    : connection_(connection),
      properties_(properties),
      table_(table),
      root_(root),
      listening_(listening),
      subscription_(connection.observe([this](const xcb_generic_event_t& event) { note(event); })) {
}

void X11WindowEvents::note(const xcb_generic_event_t& event) {
    switch (X11Event::type(event)) {
        case XCB_PROPERTY_NOTIFY:
            noteProperty(X11Event::as<xcb_property_notify_event_t>(event));
            break;
        case XCB_CONFIGURE_NOTIFY:
            noteConfigured(event);
            break;
        case XCB_GRAVITY_NOTIFY:
            noteMoved(X11Event::as<xcb_gravity_notify_event_t>(event).window);
            break;
        case XCB_REPARENT_NOTIFY:
            noteReparented(X11Event::as<xcb_reparent_notify_event_t>(event).window);
            break;
        case XCB_DESTROY_NOTIFY:
            noteDestroyed(X11Event::as<xcb_destroy_notify_event_t>(event).window);
            break;
        default:
            break;
    }
}

void X11WindowEvents::noteProperty(const xcb_property_notify_event_t& event) {
    if (event.window == connection_.root()) {
        root_.noteProperty(event.atom);
        return;
    }
    X11Window* window = table_.find(event.window);
    const X11WindowProperties::Mask mask = properties_.maskOf(event.atom);
    if (window == nullptr || mask == 0) {
        return;
    }
    table_.markStale(*window).staleProperties |= mask;
    if (properties_.isWindowManagers(event.atom)) {
        noteChange(*window);
    }
}

void X11WindowEvents::noteConfigured(const xcb_generic_event_t& event) {
    const auto& configured = X11Event::as<xcb_configure_notify_event_t>(event);
    X11Window* client = table_.find(configured.window);
    if (X11Event::isSent(event)) {
        if (client != nullptr) {
            noteToldPlace(*client, configured);
        }
        return;
    }
    if (client != nullptr && client->topLevel != client->id) {
        noteInParent(*client, event);
    }
    table_.eachIn(configured.window, [&](X11Window& framed) { noteTopLevel(framed, event); });
}

void X11WindowEvents::noteToldPlace(X11Window& client, const xcb_configure_notify_event_t& told) {
    noteGeometry(client);
    ++client.tellings;
    const X11PixelRect place{told.x, told.y, told.width, told.height};
    client.toldPlace = place;
    if (place != client.client) {
        table_.markStale(client).isPlaceStale = true;
    }
}

void X11WindowEvents::noteTopLevel(X11Window& client, const xcb_generic_event_t& event) {
    noteGeometry(client);
    const X11PixelRect rect = insideOf(event);
    const auto before = std::exchange(client.topLevelRect, rect);
    if (X11Event::isBefore(event, client.placeReadAt)) {
        return;
    }
    // A window that is moved takes what is in it along; what else is resized with it says so
    // itself, unless it is a window between the two, of which nothing is heard.
    const bool isItself = client.id == client.topLevel;
    const bool tellsAll =
        before && (before->hasSizeOf(rect) || isItself || client.isChildOfTopLevel());
    if (!tellsAll || !isSinceReading(client, event)) {
        table_.markStale(client).isPlaceStale = true;
        return;
    }
    client.client.x += rect.x - before->x;
    client.client.y += rect.y - before->y;
    if (isItself) {
        client.client.width = rect.width;
        client.client.height = rect.height;
    }
}

void X11WindowEvents::noteInParent(X11Window& client, const xcb_generic_event_t& event) {
    noteGeometry(client);
    const X11PixelRect rect = insideOf(event);
    const auto before = std::exchange(client.rectInParent, rect);
    if (X11Event::isBefore(event, client.placeReadAt)) {
        return;
    }
    if (!before || !client.isChildOfTopLevel() || !isSinceReading(client, event)) {
        table_.markStale(client).isPlaceStale = true;
        return;
    }
    client.client.x += rect.x - before->x;
    client.client.y += rect.y - before->y;
    client.client.width = rect.width;
    client.client.height = rect.height;
}

void X11WindowEvents::noteMoved(xcb_window_t window) {
    if (X11Window* client = table_.find(window)) {
        noteMoved(*client);
    }
    table_.eachIn(window, [&](X11Window& client) {
        if (client.id != window) {
            noteMoved(client);
        }
    });
}

void X11WindowEvents::noteMoved(X11Window& client) {
    client.rectInParent.reset();
    table_.markStale(client).isPlaceStale = true;
    noteChange(client);
}

void X11WindowEvents::noteReparented(xcb_window_t window) {
    if (X11Window* client = table_.find(window)) {
        table_.markStale(*client).isTopLevelStale = true;
        noteMoved(*client);
    }
}

void X11WindowEvents::noteDestroyed(xcb_window_t window) {
    root_.noteDestroyed(window);
    table_.forgetFrame(window);
    table_.forget(window);
}

void X11WindowEvents::noteGeometry(X11Window& client) {
    noteChange(client);
    listening_.noteEvent(client);
}

void X11WindowEvents::noteChange(X11Window& client) {
    client.noteAnswer();
    root_.noteWindowManagerActivity();
}

}  // namespace lumatile
