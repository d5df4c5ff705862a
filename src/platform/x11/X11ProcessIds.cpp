#include "platform/x11/X11ProcessIds.h"

#include <algorithm>
#include <limits>

#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

bool knowsClientIds(xcb_connection_t* connection) {
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_res_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    const X11Reply<xcb_res_query_version_reply_t> version(
        xcb_res_query_version_reply(connection, xcb_res_query_version(connection, 1, 2), nullptr));
    return version && (version->server_major > 1 ||
                       (version->server_major == 1 && version->server_minor >= 2));
}

}  // namespace

X11ProcessIds::X11ProcessIds(X11Connection& connection)
    : connection_(connection),
      resourceMask_(xcb_get_setup(connection.get())->resource_id_mask),
      isAvailable_(knowsClientIds(connection.get())) {}

X11ProcessIds::Question X11ProcessIds::ask(const std::vector<xcb_window_t>& windows) const {
    if (!isAvailable_ || windows.empty()) {
        return {};
    }
    std::vector<xcb_window_t> clients;
    clients.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        // Zero, the server itself, would stand for all clients.
        if (const xcb_window_t client = clientOf(window); client != 0) {
            clients.push_back(client);
        }
    }
    std::sort(clients.begin(), clients.end());
    clients.erase(std::unique(clients.begin(), clients.end()), clients.end());

    std::vector<xcb_res_client_id_spec_t> specs;
    specs.reserve(clients.size());
    for (const xcb_window_t client : clients) {
        specs.push_back({client, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID});
    }
    return {xcb_res_query_client_ids(connection_.get(), static_cast<std::uint32_t>(specs.size()),
                                     specs.data())};
}

std::unordered_map<xcb_window_t, Pid> X11ProcessIds::answer(const Question& question) const {
    std::unordered_map<xcb_window_t, Pid> result;
    if (!question.cookie) {
        return result;
    }
    const X11Reply<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(connection_.get(), *question.cookie, nullptr));
    if (!reply) {
        return result;
    }
    for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem > 0;
         xcb_res_client_id_value_next(&ids)) {
        if (xcb_res_client_id_value_value_length(ids.data) < 1) {
            continue;
        }
        const std::uint32_t pid = *xcb_res_client_id_value_value(ids.data);
        if (pid > 0 && pid <= std::uint32_t{std::numeric_limits<std::int32_t>::max()}) {
            result[clientOf(ids.data->spec.client)] = Pid{pid};
        }
    }
    return result;
}

}  // namespace lumatile
