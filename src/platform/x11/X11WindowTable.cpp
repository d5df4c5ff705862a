#include "platform/x11/X11WindowTable.h"

#include <algorithm>
#include <iterator>

namespace lumatile {

X11Window* X11WindowTable::find(xcb_window_t id) {
    const auto found = windows_.find(id);
    return found != windows_.end() ? &found->second : nullptr;
}

std::vector<xcb_window_t> X11WindowTable::manage(std::span<const xcb_window_t> topmostFirst) {
    for (auto& [id, window] : windows_) {
        window.isManaged = false;
    }
    stacking_.assign(topmostFirst.begin(), topmostFirst.end());
    std::vector<xcb_window_t> unknown;
    for (const xcb_window_t id : stacking_) {
        if (X11Window* window = find(id)) {
            window->isManaged = true;
        } else {
            unknown.push_back(id);
        }
    }
    return unknown;
}

X11Window& X11WindowTable::add(xcb_window_t id, X11WindowProperties::Mask properties) {
    X11Window& added = windows_[id];
    added.id = id;
    added.serial = ++lastSerial_;
    added.isManaged = true;
    markStale(added).staleProperties = properties;
    added.isPlaceStale = true;
    added.isTopLevelStale = true;
    added.isProcessStale = true;
    return added;
}

void X11WindowTable::forget(xcb_window_t id) {
    const auto found = windows_.find(id);
    if (found == windows_.end()) {
        return;
    }
    takeOut(found->second);
    windows_.erase(found);
    std::erase(stacking_, id);
}

X11Window* X11WindowTable::topmostIn(xcb_window_t topLevel) {
    if (!isFrame(topLevel)) {
        return nullptr;
    }
    for (const xcb_window_t id : stacking_) {
        X11Window* window = find(id);
        if (window != nullptr && window->topLevel == topLevel) {
            return window;
        }
    }
    return nullptr;
}

bool X11WindowTable::frame(X11Window& client, xcb_window_t topLevel) {
    if (client.topLevel == topLevel) {
        return false;
    }
    takeOut(client);
    client.topLevel = topLevel;
    client.topLevelRect.reset();
    const bool isNew = !isFrame(topLevel);
    framed_.emplace(topLevel, client.id);
    return isNew;
}

void X11WindowTable::forgetFrame(xcb_window_t topLevel) {
    eachIn(topLevel, [this](X11Window& client) {
        markStale(client).isTopLevelStale = true;
        client.isPlaceStale = true;
        client.topLevel = XCB_WINDOW_NONE;
    });
    framed_.erase(topLevel);
}

X11Window& X11WindowTable::markStale(X11Window& window) {
    if (!window.isStale()) {
        stale_.push_back(window.id);
    }
    return window;
}

bool X11WindowTable::isAnyTopLevelStale() {
    return std::any_of(stale_.begin(), stale_.end(), [this](xcb_window_t id) {
        const X11Window* window = find(id);
        return window != nullptr && window->isTopLevelStale;
    });
}

void X11WindowTable::takeOut(const X11Window& client) {
    const auto [first, last] = framed_.equal_range(client.topLevel);
    for (auto entry = first; entry != last;) {
        entry = entry->second == client.id ? framed_.erase(entry) : std::next(entry);
    }
}

}  // namespace lumatile
