#include "platform/x11/X11ReservedRoom.h"

#include <optional>
#include <utility>

#include "platform/x11/X11Event.h"
#include "platform/x11/X11Property.h"
#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

constexpr std::uint32_t mostNumbers = 12;

// A window manager nests its clients a few levels deep; a bound against endless climbing.
constexpr int mostLevels = 16;

// The mask of a window belongs to the connection: these are the events for which the mirror of the
// windows asks too.
constexpr std::uint32_t eventsOfWindow =
    XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
constexpr std::uint32_t eventsOfFrame = XCB_EVENT_MASK_STRUCTURE_NOTIFY;

}  // namespace

/// A window, or a frame round one. A window is shown when it and all its frames are mapped, and is
/// told nothing when a frame is not.
struct X11ReservedRoom::Level {
    xcb_get_window_attributes_cookie_t attributes;
    xcb_query_tree_cookie_t tree;

    /// @return the window around it, which may be the root; none where it is gone or not mapped
    xcb_window_t around(xcb_connection_t* server) const {
        const X11Reply<xcb_get_window_attributes_reply_t> state(
            xcb_get_window_attributes_reply(server, attributes, nullptr));
        const X11Reply<xcb_query_tree_reply_t> family(xcb_query_tree_reply(server, tree, nullptr));
        const bool isMapped = state && state->map_state != XCB_MAP_STATE_UNMAPPED;
        return isMapped && family ? family->parent : xcb_window_t{XCB_WINDOW_NONE};
    }
};

struct X11ReservedRoom::WindowQuestion {
    xcb_window_t window;
    Level level;
    xcb_get_property_cookie_t partial;
    xcb_get_property_cookie_t plain;
};

/// A strut, and the innermost window around the one that states it of which it is not known yet
/// whether it is mapped: in the end the root or none.
struct X11ReservedRoom::Statement {
    X11Strut strut;
    xcb_window_t around;
};

X11ReservedRoom::X11ReservedRoom(X11Connection& connection)
    : connection_(connection),
      partial_(connection.atoms()["_NET_WM_STRUT_PARTIAL"]),
      plain_(connection.atoms()["_NET_WM_STRUT"]),
      subscription_(connection.observe([this](const xcb_generic_event_t& event) { note(event); })) {
}

std::vector<X11Strut> X11ReservedRoom::read(std::span<const std::uint32_t> windows) {
    isStale_ = false;
    watched_.clear();
    keepers_.clear();
    std::vector<Statement> stated = statements(windows);
    climb(stated);
    std::vector<X11Strut> struts;
    for (const Statement& statement : stated) {
        if (statement.around == connection_.root()) {
            struts.push_back(statement.strut);
        }
    }
    return struts;
}

std::vector<X11ReservedRoom::Statement> X11ReservedRoom::statements(
    std::span<const std::uint32_t> windows) {
    xcb_connection_t* const server = connection_.get();
    std::vector<WindowQuestion> questions;
    questions.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        if (window == XCB_WINDOW_NONE || window == connection_.root() ||
            !watched_.insert(window).second) {
            continue;
        }
        questions.push_back(
            {window, askLevel(window, eventsOfWindow),
             X11Property::ask(server, window, partial_, XCB_ATOM_CARDINAL, mostNumbers),
             X11Property::ask(server, window, plain_, XCB_ATOM_CARDINAL, mostNumbers)});
    }
    std::vector<Statement> result;
    for (const WindowQuestion& question : questions) {
        const xcb_window_t around = question.level.around(server);
        const X11Property partial(server, question.partial);
        const X11Property plain(server, question.plain);
        const auto strut =
            X11Strut::decoded(partial.items().empty() ? plain.items() : partial.items());
        if (strut) {
            keepers_.insert(question.window);
            result.push_back({*strut, around});
        }
    }
    return result;
}

/// The events are selected before the state is asked for, so that no change falls in between.
X11ReservedRoom::Level X11ReservedRoom::askLevel(xcb_window_t window, std::uint32_t events) {
    xcb_connection_t* const server = connection_.get();
    xcb_change_window_attributes(server, window, XCB_CW_EVENT_MASK, &events);
    return {xcb_get_window_attributes(server, window), xcb_query_tree(server, window)};
}

void X11ReservedRoom::climb(std::vector<Statement>& statements) {
    for (int level = 0; level < mostLevels; ++level) {
        std::vector<std::pair<Statement*, Level>> frames;
        for (Statement& statement : statements) {
            const xcb_window_t frame = statement.around;
            if (frame != XCB_WINDOW_NONE && frame != connection_.root()) {
                keepers_.insert(frame);
                frames.emplace_back(
                    &statement,
                    askLevel(frame, watched_.contains(frame) ? eventsOfWindow : eventsOfFrame));
            }
        }
        if (frames.empty()) {
            return;
        }
        for (auto& [statement, frame] : frames) {
            statement->around = frame.around(connection_.get());
        }
    }
}

void X11ReservedRoom::note(const xcb_generic_event_t& event) {
    switch (X11Event::type(event)) {
        case XCB_PROPERTY_NOTIFY: {
            const auto& changed = X11Event::as<xcb_property_notify_event_t>(event);
            if ((changed.atom == partial_ || changed.atom == plain_) &&
                watched_.contains(changed.window)) {
                isStale_ = true;
            }
            break;
        }
        case XCB_MAP_NOTIFY:
            noteShown(X11Event::as<xcb_map_notify_event_t>(event).window);
            break;
        case XCB_UNMAP_NOTIFY:
            noteShown(X11Event::as<xcb_unmap_notify_event_t>(event).window);
            break;
        case XCB_REPARENT_NOTIFY:
            noteShown(X11Event::as<xcb_reparent_notify_event_t>(event).window);
            break;
        case XCB_DESTROY_NOTIFY:
            // Another window may get its id, whose events have to be asked for anew.
            if (watched_.contains(X11Event::as<xcb_destroy_notify_event_t>(event).window)) {
                isStale_ = true;
            }
            break;
        default:
            break;
    }
}

void X11ReservedRoom::noteShown(xcb_window_t window) {
    if (keepers_.contains(window)) {
        isStale_ = true;
    }
}

}  // namespace lumatile
