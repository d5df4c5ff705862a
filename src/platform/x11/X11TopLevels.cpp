#include "platform/x11/X11TopLevels.h"

#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

// A window manager nests its clients one or two levels deep; a bound against endless climbing.
constexpr int mostLevels = 16;

using TreeReply = X11Reply<xcb_query_tree_reply_t>;

}  // namespace

X11TopLevels::X11TopLevels(xcb_connection_t* connection, const std::vector<xcb_window_t>& clients,
                           const std::vector<xcb_window_t>& rootChildren)
    : connection_(connection), topLevels_(rootChildren.begin(), rootChildren.end()) {
    for (const xcb_window_t client : clients) {
        clients_.push_back({client, xcb_query_tree(connection_, client)});
    }
    // Many are asked from both ends: the parents of the clients and the children of the frames
    // meet in the middle, so that two levels of nesting cost no second round trip. For a few it is
    // less work to climb.
    constexpr std::size_t framesPerClient = 8;
    if (clients_.size() * framesPerClient < rootChildren.size()) {
        return;
    }
    for (const xcb_window_t child : rootChildren) {
        frames_.push_back({child, xcb_query_tree(connection_, child)});
    }
}

std::vector<X11TopLevels::Found> X11TopLevels::take() {
    takeClients();
    takeFrames();
    climb();
    return std::move(found_);
}

void X11TopLevels::takeClients() {
    for (const Question& question : clients_) {
        const TreeReply tree(xcb_query_tree_reply(connection_, question.cookie, nullptr));
        Found found{question.window, XCB_WINDOW_NONE, XCB_WINDOW_NONE};
        if (tree) {
            found.parent = tree->parent;
            if (tree->parent == tree->root) {
                found.topLevel = question.window;
            } else if (topLevels_.contains(tree->parent)) {
                found.topLevel = tree->parent;
            } else {
                climbing_.push_back({found_.size(), tree->parent});
            }
        }
        found_.push_back(found);
    }
}

void X11TopLevels::takeFrames() {
    for (const Question& question : frames_) {
        if (const TreeReply tree{xcb_query_tree_reply(connection_, question.cookie, nullptr)}) {
            for (const xcb_window_t child : childrenOf(*tree)) {
                parents_[child] = question.window;
            }
        }
    }
    std::erase_if(climbing_, [this](const Climb& each) {
        const auto frame = parents_.find(each.ancestor);
        if (frame == parents_.end()) {
            return false;
        }
        found_[each.found].topLevel = frame->second;
        return true;
    });
}

void X11TopLevels::climb() {
    for (int level = 0; level < mostLevels && !climbing_.empty(); ++level) {
        const auto climbing = std::exchange(climbing_, {});
        std::vector<xcb_query_tree_cookie_t> cookies;
        cookies.reserve(climbing.size());
        for (const Climb& each : climbing) {
            cookies.push_back(xcb_query_tree(connection_, each.ancestor));
        }
        for (std::size_t index = 0; index < climbing.size(); ++index) {
            const auto [found, ancestor] = climbing[index];
            const TreeReply tree(xcb_query_tree_reply(connection_, cookies[index], nullptr));
            if (!tree) {
                continue;  // Taken out of its frame meanwhile; the event of that is on its way.
            }
            if (tree->parent == tree->root) {
                found_[found].topLevel = ancestor;
            } else {
                climbing_.push_back({found, tree->parent});
            }
        }
    }
}

std::vector<xcb_window_t> X11TopLevels::childrenOf(const xcb_query_tree_reply_t& tree) {
    const xcb_window_t* first = xcb_query_tree_children(&tree);
    return {first, first + xcb_query_tree_children_length(&tree)};
}

}  // namespace lumatile
