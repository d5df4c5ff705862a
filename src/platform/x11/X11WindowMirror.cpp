#include "platform/x11/X11WindowMirror.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <unordered_set>
#include <utility>

#include "platform/x11/X11Event.h"
#include "platform/x11/X11Property.h"
#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

constexpr std::uint32_t longestWindowList = 16384;

// While one reading is under way more may change. What is still stale after so many rounds stays
// so until the next reading, so that a desktop in turmoil cannot hold a reader up.
constexpr int mostRounds = 4;

// A window manager nests its clients one or two levels deep; a bound against endless climbing.
constexpr int mostLevels = 16;

using TreeReply = X11Reply<xcb_query_tree_reply_t>;

std::vector<xcb_window_t> childrenOf(const xcb_query_tree_reply_t& tree) {
    const xcb_window_t* first = xcb_query_tree_children(&tree);
    return {first, first + xcb_query_tree_children_length(&tree)};
}

/// The rectangle of a window without its border, relative to its parent.
X11PixelRect insideOf(const xcb_generic_event_t& event) {
    const auto& configured = X11Event::as<xcb_configure_notify_event_t>(event);
    return {configured.x + configured.border_width, configured.y + configured.border_width,
            configured.width, configured.height};
}

void selectEvents(xcb_connection_t* connection, xcb_window_t window, std::uint32_t mask) {
    xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &mask);
}

}  // namespace

/// The requests that share a round trip, and what they are about.
struct X11WindowMirror::Batch {
    struct PropertyQuestion {
        xcb_window_t window;
        std::size_t row;
        xcb_get_property_cookie_t cookie;
    };
    struct TreeQuestion {
        xcb_window_t window;
        xcb_query_tree_cookie_t cookie;
    };
    struct PlaceQuestion {
        xcb_window_t window;
        xcb_get_geometry_cookie_t size;
        xcb_translate_coordinates_cookie_t position;
    };

    std::vector<xcb_window_t> windows;  ///< Those that something is stale of.

    std::optional<xcb_get_property_cookie_t> windowManager;
    std::vector<PropertyQuestion> properties;
    std::vector<xcb_window_t> withoutProcess;
    X11ProcessIds::Question processes;
    std::vector<TreeQuestion> rootChildren;
    std::vector<TreeQuestion> clients;
    std::vector<PlaceQuestion> places;

    std::unordered_set<xcb_window_t> topLevels;
    std::unordered_map<xcb_window_t, xcb_window_t> parents;       ///< Child to parent.
    std::vector<std::pair<xcb_window_t, xcb_window_t>> climbing;  ///< Client, ancestor so far.
};

X11WindowMirror::X11WindowMirror(X11Connection& connection)
    : connection_(connection),
      properties_(connection.atoms()),
      processIds_(connection),
      subscription_(connection.observe([this](const xcb_generic_event_t& event) { note(event); })) {
    connection_.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE);
}

void X11WindowMirror::refresh() {
    connection_.readEvents();
    for (int round = 0; round < mostRounds && isStale() && !connection_.isLost(); ++round) {
        readStale();
        connection_.readEvents();
    }
}

X11Window* X11WindowMirror::find(xcb_window_t id) {
    const auto found = windows_.find(id);
    return found != windows_.end() ? &found->second : nullptr;
}

X11Window* X11WindowMirror::findManaged(xcb_window_t id, std::uint64_t serial) {
    X11Window* window = find(id);
    return window != nullptr && window->isManaged && window->serial == serial ? window : nullptr;
}

X11Window* X11WindowMirror::active() {
    X11Window* window = find(active_);
    return window != nullptr && window->isManaged ? window : nullptr;
}

X11Window* X11WindowMirror::framedBy(xcb_window_t topLevel) {
    if (!framed_.contains(topLevel)) {
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

bool X11WindowMirror::isMinimized(const X11Window& window) const {
    const X11WindowFacts& facts = window.facts;
    if (facts.isHidden) {
        return true;
    }
    // Some window managers call everything iconic that they have not mapped.
    return facts.isIconic && !facts.isShaded && !isShowingDesktop_ && !isElsewhere(window);
}

bool X11WindowMirror::isElsewhere(const X11Window& window) const {
    const std::optional<std::uint32_t>& desktop = window.facts.desktop;
    return desktop && currentDesktop_ && desktop != X11WindowFacts::everyDesktop &&
           desktop != currentDesktop_;
}

void X11WindowMirror::note(const xcb_generic_event_t& event) {
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

void X11WindowMirror::noteProperty(const xcb_property_notify_event_t& event) {
    if (event.window == connection_.root()) {
        X11Atoms& atoms = connection_.atoms();
        const std::array names{
            atoms["_NET_CLIENT_LIST"],         atoms["_NET_CLIENT_LIST_STACKING"],
            atoms["_NET_ACTIVE_WINDOW"],       atoms["_NET_CURRENT_DESKTOP"],
            atoms["_NET_SUPPORTING_WM_CHECK"], atoms["_NET_SHOWING_DESKTOP"]};
        if (std::find(names.begin(), names.end(), event.atom) != names.end()) {
            isRootStale_ = true;
            ++activity_;
        }
        return;
    }
    X11Window* window = find(event.window);
    const X11WindowProperties::Mask mask = properties_.maskOf(event.atom);
    if (window == nullptr || mask == 0) {
        return;
    }
    markStale(*window).staleProperties |= mask;
    if (properties_.isWindowManagers(event.atom)) {
        window->noteAnswer();
        ++activity_;
    }
}

void X11WindowMirror::noteConfigured(const xcb_generic_event_t& event) {
    const auto& configured = X11Event::as<xcb_configure_notify_event_t>(event);
    X11Window* client = find(configured.window);
    if (X11Event::isSent(event)) {
        if (client != nullptr) {
            noteToldPlace(*client, configured);
        }
        return;
    }
    if (client != nullptr && client->topLevel != client->id) {
        noteInParent(*client, event);
    }
    const auto [first, last] = framed_.equal_range(configured.window);
    for (auto entry = first; entry != last; ++entry) {
        if (X11Window* framed = find(entry->second)) {
            noteTopLevel(*framed, event);
        }
    }
}

void X11WindowMirror::noteToldPlace(X11Window& client, const xcb_configure_notify_event_t& told) {
    noteChange(client);
    ++client.tellings;
    const X11PixelRect place{told.x, told.y, told.width, told.height};
    if (place != client.client) {
        markStale(client).isPlaceStale = true;
    }
}

void X11WindowMirror::noteTopLevel(X11Window& client, const xcb_generic_event_t& event) {
    noteChange(client);
    const X11PixelRect rect = insideOf(event);
    const auto before = std::exchange(client.topLevelRect, rect);
    if (X11Event::isBefore(event, client.placeReadAt)) {
        return;
    }
    // A window that is moved takes what is in it along; what else is resized with it says so
    // itself, unless it is a window between the two, of which nothing is heard.
    const bool isItself = client.id == client.topLevel;
    const bool tellsAll =
        before && (before->hasSizeOf(rect) || isItself || client.isChildOfTopLevel);
    if (!tellsAll || !isSinceReading(client, event)) {
        markStale(client).isPlaceStale = true;
        return;
    }
    client.client.x += rect.x - before->x;
    client.client.y += rect.y - before->y;
    if (isItself) {
        client.client.width = rect.width;
        client.client.height = rect.height;
    }
}

void X11WindowMirror::noteInParent(X11Window& client, const xcb_generic_event_t& event) {
    noteChange(client);
    const X11PixelRect rect = insideOf(event);
    const auto before = std::exchange(client.rectInParent, rect);
    if (X11Event::isBefore(event, client.placeReadAt)) {
        return;
    }
    if (!before || !client.isChildOfTopLevel || !isSinceReading(client, event)) {
        markStale(client).isPlaceStale = true;
        return;
    }
    client.client.x += rect.x - before->x;
    client.client.y += rect.y - before->y;
    client.client.width = rect.width;
    client.client.height = rect.height;
}

/// Whether what is known of the window's place is from before the event, whole: the place is read
/// with two requests, and what happened between them is in the second one only.
bool X11WindowMirror::isSinceReading(const X11Window& client, const xcb_generic_event_t& event) {
    return !client.isPlaceStale && !X11Event::isBefore(event, client.placeReadAt + 1);
}

void X11WindowMirror::noteChange(X11Window& client) {
    client.noteAnswer();
    ++activity_;
}

void X11WindowMirror::noteMoved(xcb_window_t window) {
    const auto moved = [this](X11Window* client) {
        if (client != nullptr) {
            client->rectInParent.reset();
            markStale(*client).isPlaceStale = true;
            noteChange(*client);
        }
    };
    moved(find(window));
    const auto [first, last] = framed_.equal_range(window);
    for (auto entry = first; entry != last; ++entry) {
        if (entry->second != window) {
            moved(find(entry->second));
        }
    }
}

void X11WindowMirror::noteReparented(xcb_window_t window) {
    if (X11Window* client = find(window)) {
        markStale(*client).isTopLevelStale = true;
        client->isPlaceStale = true;
        client->rectInParent.reset();
        noteChange(*client);
    }
}

void X11WindowMirror::noteDestroyed(xcb_window_t window) {
    if (window == windowManager_) {
        windowManager_ = XCB_WINDOW_NONE;
    }
    if (window == claimedWindowManager_) {
        claimedWindowManager_ = XCB_WINDOW_NONE;
    }
    const auto [first, last] = framed_.equal_range(window);
    for (auto entry = first; entry != last; ++entry) {
        if (X11Window* client = find(entry->second)) {
            markStale(*client).isTopLevelStale = true;
            client->isPlaceStale = true;
            client->topLevel = XCB_WINDOW_NONE;
        }
    }
    framed_.erase(window);
    forget(window);
}

X11Window& X11WindowMirror::markStale(X11Window& window) {
    if (!window.isStale()) {
        stale_.push_back(window.id);
    }
    return window;
}

std::vector<xcb_window_t> X11WindowMirror::takeStale() { return std::exchange(stale_, {}); }

void X11WindowMirror::forget(xcb_window_t window) {
    const auto found = windows_.find(window);
    if (found == windows_.end()) {
        return;
    }
    const auto [first, last] = framed_.equal_range(found->second.topLevel);
    for (auto entry = first; entry != last;) {
        entry = entry->second == window ? framed_.erase(entry) : std::next(entry);
    }
    windows_.erase(found);
    std::erase(stacking_, window);
}

void X11WindowMirror::readStale() {
    const bool topLevelsStale = std::any_of(stale_.begin(), stale_.end(), [this](xcb_window_t id) {
        const X11Window* window = find(id);
        return window != nullptr && window->isTopLevelStale;
    });
    std::vector<xcb_window_t> rootChildren;
    if (isRootStale_ || topLevelsStale) {
        rootChildren = readRoot();
    }

    Batch batch;
    batch.windows = takeStale();
    askFacts(batch);
    askTopLevels(batch, rootChildren);
    // The event mask of a new frame comes before the place is read, or a move in between would
    // stay unseen; so places wait for the frames where those are not known yet.
    const bool placesAtOnce = batch.clients.empty();
    if (placesAtOnce) {
        askPlaces(batch);
    }
    takeFacts(batch);
    takeTopLevels(batch);
    climb(batch);
    if (!placesAtOnce) {
        askPlaces(batch);
    }
    takePlaces(batch);
}

std::vector<xcb_window_t> X11WindowMirror::readRoot() {
    isRootStale_ = false;
    xcb_connection_t* connection = connection_.get();
    X11Atoms& atoms = connection_.atoms();
    const auto ask = [&](std::string_view name, xcb_atom_t type, std::uint32_t length) {
        return X11Property::ask(connection, connection_.root(), atoms[name], type, length);
    };
    const auto list = ask("_NET_CLIENT_LIST", XCB_ATOM_WINDOW, longestWindowList);
    const auto stacking = ask("_NET_CLIENT_LIST_STACKING", XCB_ATOM_WINDOW, longestWindowList);
    const auto active = ask("_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, X11Property::singleItem);
    const auto windowManager =
        ask("_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, X11Property::singleItem);
    const auto desktop = ask("_NET_CURRENT_DESKTOP", XCB_ATOM_CARDINAL, X11Property::singleItem);
    const auto showing = ask("_NET_SHOWING_DESKTOP", XCB_ATOM_CARDINAL, X11Property::singleItem);
    const auto treeCookie = xcb_query_tree(connection, connection_.root());

    const X11Property managed(connection, list);
    takeList(managed.items(), X11Property(connection, stacking).items());
    active_ = X11Property(connection, active).first().value_or(XCB_WINDOW_NONE);
    takeWindowManager(X11Property(connection, windowManager).first().value_or(XCB_WINDOW_NONE));
    currentDesktop_ = X11Property(connection, desktop).first();
    isShowingDesktop_ = X11Property(connection, showing).first().value_or(0) != 0;
    const TreeReply tree(xcb_query_tree_reply(connection, treeCookie, nullptr));
    return tree ? childrenOf(*tree) : std::vector<xcb_window_t>();
}

void X11WindowMirror::takeList(std::span<const std::uint32_t> oldestFirst,
                               std::span<const std::uint32_t> bottomFirst) {
    for (auto& [id, window] : windows_) {
        window.isManaged = false;
    }
    const std::unordered_set<xcb_window_t> managed(oldestFirst.begin(), oldestFirst.end());
    const std::unordered_set<xcb_window_t> placed(bottomFirst.begin(), bottomFirst.end());
    stacking_.clear();
    const auto take = [this](xcb_window_t id) {
        if (id == XCB_WINDOW_NONE || id == connection_.root()) {
            return;
        }
        if (find(id) == nullptr) {
            add(id);
        }
        X11Window& window = windows_[id];
        if (!window.isManaged) {
            window.isManaged = true;
            stacking_.push_back(id);
        }
    };
    // xfwm4 states the stacking order late; what is not in it yet is new and so on top.
    for (std::size_t index = oldestFirst.size(); index-- > 0;) {
        if (!placed.contains(oldestFirst[index])) {
            take(oldestFirst[index]);
        }
    }
    for (std::size_t index = bottomFirst.size(); index-- > 0;) {
        if (managed.contains(bottomFirst[index])) {
            take(bottomFirst[index]);
        }
    }
}

void X11WindowMirror::add(xcb_window_t window) {
    selectEvents(connection_.get(), window,
                 XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    X11Window& added = windows_[window];
    added.id = window;
    added.serial = ++lastSerial_;
    markStale(added).staleProperties = properties_.all();
    added.isPlaceStale = true;
    added.isTopLevelStale = true;
    withoutProcess_.push_back(window);
}

void X11WindowMirror::takeWindowManager(xcb_window_t claimed) {
    if (claimed == windowManager_) {
        return;
    }
    windowManager_ = XCB_WINDOW_NONE;
    claimedWindowManager_ = claimed;
}

void X11WindowMirror::askFacts(Batch& batch) {
    xcb_connection_t* connection = connection_.get();
    if (claimedWindowManager_ != XCB_WINDOW_NONE) {
        selectEvents(connection, claimedWindowManager_, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        batch.windowManager =
            X11Property::ask(connection, claimedWindowManager_,
                             connection_.atoms()["_NET_SUPPORTING_WM_CHECK"], XCB_ATOM_WINDOW, 1);
    }
    for (const xcb_window_t id : batch.windows) {
        X11Window* window = find(id);
        if (window == nullptr) {
            continue;
        }
        const X11WindowProperties::Mask mask = std::exchange(window->staleProperties, 0);
        for (std::size_t row = 0; row < properties_.count(); ++row) {
            if ((mask & (X11WindowProperties::Mask{1} << row)) != 0) {
                batch.properties.push_back({id, row, properties_.ask(row, connection, id)});
            }
        }
    }
    batch.withoutProcess = std::exchange(withoutProcess_, {});
    batch.processes = processIds_.ask(batch.withoutProcess);
}

void X11WindowMirror::takeFacts(Batch& batch) {
    xcb_connection_t* connection = connection_.get();
    if (batch.windowManager) {
        // The window names itself; one that does not has taken over a dead one's id.
        const xcb_window_t claimed = std::exchange(claimedWindowManager_, XCB_WINDOW_NONE);
        if (X11Property(connection, *batch.windowManager).first() == claimed) {
            windowManager_ = claimed;
            ++activity_;
        }
    }
    for (const Batch::PropertyQuestion& question : batch.properties) {
        const X11Property property(connection, question.cookie);
        if (X11Window* window = find(question.window)) {
            properties_.tell(question.row, property, window->facts);
        }
    }
    const auto processes = processIds_.answer(batch.processes);
    for (const xcb_window_t id : batch.withoutProcess) {
        const auto found = processes.find(processIds_.clientOf(id));
        if (X11Window* window = find(id); window != nullptr && found != processes.end()) {
            window->pid = found->second;
        }
    }
}

void X11WindowMirror::askTopLevels(Batch& batch, const std::vector<xcb_window_t>& rootChildren) {
    xcb_connection_t* connection = connection_.get();
    for (const xcb_window_t id : batch.windows) {
        X11Window* window = find(id);
        if (window != nullptr && std::exchange(window->isTopLevelStale, false)) {
            batch.clients.push_back({id, xcb_query_tree(connection, id)});
        }
    }
    for (const xcb_window_t child : rootChildren) {
        batch.topLevels.insert(child);
    }
    // Many are asked from both ends: the parents of the clients and the children of the frames
    // meet in the middle, so that two levels of nesting cost no second round trip. For a few it is
    // less work to climb.
    constexpr std::size_t framesPerClient = 8;
    if (batch.clients.size() * framesPerClient < rootChildren.size()) {
        return;
    }
    for (const xcb_window_t child : rootChildren) {
        batch.rootChildren.push_back({child, xcb_query_tree(connection, child)});
    }
}

void X11WindowMirror::takeTopLevels(Batch& batch) {
    xcb_connection_t* connection = connection_.get();
    std::vector<TreeReply> clients;
    clients.reserve(batch.clients.size());
    for (const Batch::TreeQuestion& question : batch.clients) {
        clients.emplace_back(xcb_query_tree_reply(connection, question.cookie, nullptr));
    }
    for (const Batch::TreeQuestion& question : batch.rootChildren) {
        if (const TreeReply tree{xcb_query_tree_reply(connection, question.cookie, nullptr)}) {
            for (const xcb_window_t child : childrenOf(*tree)) {
                batch.parents[child] = question.window;
            }
        }
    }
    for (std::size_t index = 0; index < clients.size(); ++index) {
        const xcb_window_t id = batch.clients[index].window;
        if (!clients[index]) {
            forget(id);
            continue;
        }
        const xcb_window_t parent = clients[index]->parent;
        if (X11Window* client = find(id)) {
            client->isChildOfTopLevel = batch.topLevels.contains(parent);
        }
        const auto grandparent = batch.parents.find(parent);
        if (parent == clients[index]->root) {
            settleTopLevel(id, id);
        } else if (batch.topLevels.contains(parent)) {
            settleTopLevel(id, parent);
        } else if (grandparent != batch.parents.end()) {
            settleTopLevel(id, grandparent->second);
        } else {
            batch.climbing.emplace_back(id, parent);
        }
    }
}

void X11WindowMirror::climb(Batch& batch) {
    xcb_connection_t* connection = connection_.get();
    for (int level = 0; level < mostLevels && !batch.climbing.empty(); ++level) {
        const auto climbing = std::exchange(batch.climbing, {});
        std::vector<xcb_query_tree_cookie_t> cookies;
        cookies.reserve(climbing.size());
        for (const auto& [client, ancestor] : climbing) {
            cookies.push_back(xcb_query_tree(connection, ancestor));
        }
        for (std::size_t index = 0; index < climbing.size(); ++index) {
            const auto [client, ancestor] = climbing[index];
            const TreeReply tree(xcb_query_tree_reply(connection, cookies[index], nullptr));
            if (!tree) {
                continue;  // Taken out of its frame meanwhile; the event of that is on its way.
            }
            if (tree->parent == tree->root) {
                settleTopLevel(client, ancestor);
            } else {
                batch.climbing.emplace_back(client, tree->parent);
            }
        }
    }
}

void X11WindowMirror::settleTopLevel(xcb_window_t window, xcb_window_t topLevel) {
    X11Window* client = find(window);
    if (client == nullptr || client->topLevel == topLevel) {
        return;
    }
    const auto [first, last] = framed_.equal_range(client->topLevel);
    for (auto entry = first; entry != last;) {
        entry = entry->second == window ? framed_.erase(entry) : std::next(entry);
    }
    client->topLevel = topLevel;
    client->topLevelRect.reset();
    // A client without a frame has its events selected already, more of them than a frame has.
    if (!framed_.contains(topLevel) && find(topLevel) == nullptr) {
        selectEvents(connection_.get(), topLevel, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    }
    framed_.emplace(topLevel, window);
}

void X11WindowMirror::askPlaces(Batch& batch) {
    xcb_connection_t* connection = connection_.get();
    for (const xcb_window_t id : batch.windows) {
        X11Window* window = find(id);
        if (window != nullptr && std::exchange(window->isPlaceStale, false)) {
            batch.places.push_back(
                {id, xcb_get_geometry(connection, id),
                 xcb_translate_coordinates(connection, id, connection_.root(), 0, 0)});
        }
    }
}

void X11WindowMirror::takePlaces(Batch& batch) {
    for (const Batch::PlaceQuestion& question : batch.places) {
        const X11Reply<xcb_get_geometry_reply_t> size(
            xcb_get_geometry_reply(connection_.get(), question.size, nullptr));
        const X11Reply<xcb_translate_coordinates_reply_t> position(
            xcb_translate_coordinates_reply(connection_.get(), question.position, nullptr));
        if (!size || !position) {
            forget(question.window);
        } else if (X11Window* window = find(question.window)) {
            window->client = {position->dst_x, position->dst_y, size->width, size->height};
            window->placeReadAt = question.size.sequence;
        }
    }
}

}  // namespace lumatile
