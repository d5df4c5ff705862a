#include "tests/desktop/highlight/HighlightDesk.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <limits>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

namespace {

constexpr const char* title = "Lumatile highlight";

std::vector<xcb_window_t> childrenOf(XClient& client, xcb_window_t window) {
    const XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        client.connection(), xcb_query_tree(client.connection(), window), nullptr));
    if (!tree) {
        return {};
    }
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

std::string nameOf(XClient& client, xcb_window_t window) {
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        client.connection(),
        xcb_get_property(client.connection(), 0, window, client.atom("_NET_WM_NAME"),
                         XCB_GET_PROPERTY_TYPE_ANY, 0, 64),
        nullptr));
    if (!reply) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

}  // namespace

HighlightDesk::HighlightDesk(PrivateSession& session, const std::string& display,
                             const Environment& scale)
    : XClient(display) {
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection(), root(), XCB_CW_EVENT_MASK, &mask);
    roundTrip();
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        throw DesktopError("no pipe");
    }
    ChildProcess::Start start;
    start.command = {LUMATILE_HIGHLIGHT_PROGRAM, std::to_string(ends[0])};
    start.environment = session.environment();
    start.environment["QT_QPA_PLATFORM"] = "xcb";
    for (const auto& [name, value] : scale) {
        start.environment[name] = value;
    }
    start.output = session.folder() / "highlight.log";
    start.keptDescriptor = ends[0];
    process_ = ChildProcess(start);
    close(ends[0]);
    input_ = ends[1];
}

HighlightDesk::~HighlightDesk() { close(input_); }

void HighlightDesk::write(const std::string& line) {
    if (::write(input_, line.data(), line.size()) != static_cast<ssize_t>(line.size())) {
        throw DesktopError("the highlight's program does not listen");
    }
}

void HighlightDesk::show(const PixelRect& frame) {
    write("show " + std::to_string(frame.x) + ' ' + std::to_string(frame.y) + ' ' +
          std::to_string(frame.width) + ' ' + std::to_string(frame.height) + '\n');
}

void HighlightDesk::hide() { write("hide\n"); }

bool HighlightDesk::waitUntilShown(const PixelRect& frame, int slack) {
    return waitUntil(
        [&] {
            const auto found = area();
            return found && isMapped() && opacity() == 1 && found->x <= frame.x &&
                   found->y <= frame.y && found->right() >= frame.right() &&
                   found->bottom() >= frame.bottom() && found->width <= frame.width + slack &&
                   found->height <= frame.height + slack;
        },
        Deadline::usual(), {process_.descriptor()});
}

bool HighlightDesk::waitUntilHidden() {
    return waitUntil([&] { return !isMapped(); }, Deadline::usual(), {process_.descriptor()});
}

xcb_window_t HighlightDesk::window() {
    // It is made for each time that something is shown.
    if (!exists(window_)) {
        for (const xcb_window_t child : childrenOf(*this, root())) {
            if (nameOf(*this, child) == title) {
                window_ = child;
            }
        }
    }
    return window_;
}

bool HighlightDesk::isMapped() {
    const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection(), xcb_get_window_attributes(connection(), window()), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

double HighlightDesk::opacity() {
    const auto stated = cardinals(window(), "_NET_WM_WINDOW_OPACITY");
    return stated.empty()
               ? 1
               : static_cast<double>(stated[0]) / std::numeric_limits<std::uint32_t>::max();
}

const std::vector<HighlightDesk::Change>& HighlightDesk::changes() {
    roundTrip();
    return changes_;
}

bool HighlightDesk::isAbove(xcb_window_t other) {
    // The window itself or its frame, whichever is the root's child.
    for (;;) {
        const XReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection(), xcb_query_tree(connection(), other), nullptr));
        if (!tree || tree->parent == XCB_WINDOW_NONE) {
            return false;
        }
        if (tree->parent == root()) {
            break;
        }
        other = tree->parent;
    }
    const auto stacking = childrenOf(*this, root());
    return std::find(stacking.begin(), stacking.end(), window()) >
           std::find(stacking.begin(), stacking.end(), other);
}

std::optional<PixelRect> HighlightDesk::area() {
    const XReply<xcb_get_geometry_reply_t> found(
        xcb_get_geometry_reply(connection(), xcb_get_geometry(connection(), window()), nullptr));
    return found ? std::optional(PixelRect{found->x, found->y, found->width, found->height})
                 : std::nullopt;
}

void HighlightDesk::handle(const xcb_generic_event_t& event) {
    const auto note = [this](xcb_window_t of, Change change) {
        // Every window of the program: the highlight's is a new one each time, and no other is
        // mapped.
        const std::uint32_t client = ~xcb_get_setup(connection())->resource_id_mask;
        if (window_ != XCB_WINDOW_NONE && (of & client) == (window_ & client)) {
            changes_.push_back(change);
        }
    };
    switch (event.response_type & 0x7f) {
        case XCB_MAP_NOTIFY:
            note(reinterpret_cast<const xcb_map_notify_event_t&>(event).window, Change::mapped);
            break;
        case XCB_UNMAP_NOTIFY:
            note(reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window, Change::unmapped);
            break;
        case XCB_CONFIGURE_NOTIFY:
            note(reinterpret_cast<const xcb_configure_notify_event_t&>(event).window,
                 Change::moved);
            break;
        default:
            break;
    }
}

}  // namespace lumatile::desktop
