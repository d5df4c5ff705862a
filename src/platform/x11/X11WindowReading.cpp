#include "platform/x11/X11WindowReading.h"

#include <utility>

#include "platform/x11/X11Property.h"
#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

/// The rectangle of a window without its border, relative to its parent.
X11PixelRect insideOf(const xcb_get_geometry_reply_t& geometry) {
    return {geometry.x + geometry.border_width, geometry.y + geometry.border_width, geometry.width,
            geometry.height};
}

}  // namespace

void X11WindowReading::run() {
    listenAgain();
    std::vector<xcb_window_t> rootChildren;
    if (parts_.root.isStale() || table().isAnyTopLevelStale()) {
        rootChildren = readRoot();
    }
    windows_ = table().takeStale();
    askWindowManager();
    askProperties();
    askProcesses();
    X11TopLevels topLevels(server(), takeStaleTopLevels(), rootChildren);
    // The event mask of a new frame comes before the place is read, or a move in between would
    // stay unseen; so places wait for the frames where those are not known yet.
    const bool placesAtOnce = topLevels.isEmpty();
    if (placesAtOnce) {
        askPlaces();
    }
    takeUnheard();
    takeFacts();
    takeProcesses();
    takeTopLevels(topLevels);
    if (!placesAtOnce) {
        askPlaces();
    }
    takePlaces();
}

std::vector<xcb_window_t> X11WindowReading::readRoot() {
    X11RootFacts::Reading reading = parts_.root.read();
    for (const xcb_window_t id : table().manage(reading.managed)) {
        add(id);
    }
    return std::move(reading.children);
}

/// The events are selected before anything is read, and whose they are is asked before that.
void X11WindowReading::listenAgain() {
    for (const xcb_window_t id : parts_.listening.takeUnheard()) {
        X11Window* client = table().find(id);
        if (client == nullptr) {
            continue;
        }
        const auto attributes = xcb_get_window_attributes(server(), id);
        parts_.listening.listenToClient(id);
        if (client->topLevel != XCB_WINDOW_NONE) {
            parts_.listening.listenToFrame(client->topLevel);
        }
        unheard_.push_back({id, attributes, xcb_query_tree(server(), id)});
        client->isUnheard = false;
        table().markStale(*client).isPlaceStale = true;
        client->rectInParent.reset();
        client->topLevelRect.reset();
        client->noteAnswer();
    }
}

void X11WindowReading::takeUnheard() {
    for (const UnheardQuestion& question : unheard_) {
        const X11Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(server(), question.attributes, nullptr));
        const X11Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(server(), question.tree, nullptr));
        X11Window* client = table().find(question.window);
        if (client == nullptr) {
            continue;
        }
        if (!attributes || !tree || !X11GeometryListening::isSame(*attributes)) {
            // Where another window has the id now, the list of windows tells of it.
            table().forget(question.window);
            parts_.root.markStale();
        } else if (tree->parent != client->parent) {
            table().markStale(*client).isTopLevelStale = true;
            client->isPlaceStale = true;
        }
    }
}

void X11WindowReading::add(xcb_window_t window) {
    parts_.listening.listenToClient(window);
    table().add(window, parts_.properties.all());
}

void X11WindowReading::askWindowManager() { windowManager_ = parts_.root.askWindowManager(); }

void X11WindowReading::askProperties() {
    const X11WindowProperties& properties = parts_.properties;
    for (const xcb_window_t id : windows_) {
        X11Window* window = table().find(id);
        if (window == nullptr) {
            continue;
        }
        const X11WindowProperties::Mask mask = std::exchange(window->staleProperties, 0);
        for (std::size_t row = 0; row < properties.count(); ++row) {
            if ((mask & (X11WindowProperties::Mask{1} << row)) != 0) {
                properties_.push_back({id, row, properties.ask(row, server(), id)});
            }
        }
    }
}

void X11WindowReading::askProcesses() {
    for (const xcb_window_t id : windows_) {
        X11Window* window = table().find(id);
        if (window != nullptr && std::exchange(window->isProcessStale, false)) {
            withoutProcess_.push_back(id);
        }
    }
    processes_ = parts_.processIds.ask(withoutProcess_);
}

std::vector<xcb_window_t> X11WindowReading::takeStaleTopLevels() {
    std::vector<xcb_window_t> clients;
    for (const xcb_window_t id : windows_) {
        X11Window* window = table().find(id);
        if (window != nullptr && std::exchange(window->isTopLevelStale, false)) {
            clients.push_back(id);
        }
    }
    return clients;
}

void X11WindowReading::askPlaces() {
    for (const xcb_window_t id : windows_) {
        X11Window* window = table().find(id);
        if (window != nullptr && std::exchange(window->isPlaceStale, false)) {
            const xcb_window_t topLevel = window->topLevel;
            const bool isFramed = topLevel != XCB_WINDOW_NONE && topLevel != id;
            // From the outermost to the innermost, as the events are that follow.
            const auto frame =
                isFramed ? std::optional(xcb_get_geometry(server(), topLevel)) : std::nullopt;
            places_.push_back(
                {id, xcb_get_geometry(server(), id),
                 xcb_translate_coordinates(server(), id, parts_.connection.root(), 0, 0), frame});
        }
    }
}

void X11WindowReading::takeFacts() {
    if (windowManager_) {
        parts_.root.takeWindowManager(*windowManager_);
    }
    for (const PropertyQuestion& question : properties_) {
        const X11Property property(server(), question.cookie);
        if (X11Window* window = table().find(question.window)) {
            parts_.properties.tell(question.row, property, window->facts);
        }
    }
}

void X11WindowReading::takeProcesses() {
    const auto processes = parts_.processIds.answer(processes_);
    for (const xcb_window_t id : withoutProcess_) {
        const auto found = processes.find(parts_.processIds.clientOf(id));
        if (X11Window* window = table().find(id); window != nullptr && found != processes.end()) {
            window->pid = found->second;
        }
    }
}

void X11WindowReading::takeTopLevels(X11TopLevels& search) {
    for (const X11TopLevels::Found& found : search.take()) {
        X11Window* client = table().find(found.client);
        if (found.parent == XCB_WINDOW_NONE) {
            table().forget(found.client);
        } else if (client != nullptr) {
            client->parent = found.parent;
            if (found.topLevel != XCB_WINDOW_NONE && table().frame(*client, found.topLevel)) {
                parts_.listening.listenToFrame(found.topLevel);
                client->isPlaceStale = true;
            }
        }
    }
}

void X11WindowReading::takePlaces() {
    for (const PlaceQuestion& question : places_) {
        const X11Reply<xcb_get_geometry_reply_t> size(
            xcb_get_geometry_reply(server(), question.size, nullptr));
        const X11Reply<xcb_translate_coordinates_reply_t> position(
            xcb_translate_coordinates_reply(server(), question.position, nullptr));
        const X11Reply<xcb_get_geometry_reply_t> topLevel(
            question.topLevel ? xcb_get_geometry_reply(server(), *question.topLevel, nullptr)
                              : nullptr);
        if (!size || !position) {
            table().forget(question.window);
        } else if (X11Window* window = table().find(question.window)) {
            window->client = {position->dst_x, position->dst_y, size->width, size->height};
            window->toldPlace.reset();
            window->placeReadAt = question.size.sequence;
            if (topLevel) {
                window->topLevelRect = insideOf(*topLevel);
                window->rectInParent = insideOf(*size);
            } else if (window->topLevel == window->id) {
                window->topLevelRect = insideOf(*size);
            }
        }
    }
}

}  // namespace lumatile
