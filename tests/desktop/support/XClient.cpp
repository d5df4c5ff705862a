#include "tests/desktop/support/XClient.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {
namespace {

// Every client of this process: a wait for one of them must go on serving the others, since the
// windows of a test have to answer while the test waits for the window manager.
std::vector<XClient*>& clients() {
    static std::vector<XClient*> all;
    return all;
}

// Some conditions show themselves by no event of ours (a process ends, a mask changes).
constexpr int longestSilence = 20;  // milliseconds

}  // namespace

XClient::XClient(const std::string& display) {
    int number = 0;
    connection_ = xcb_connect(display.c_str(), &number);
    if (isLost()) {
        xcb_disconnect(connection_);
        throw DesktopError("no X server at " + display);
    }
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    clients().push_back(this);
}

XClient::~XClient() {
    std::erase(clients(), this);
    xcb_disconnect(connection_);
}

void XClient::handle(const xcb_generic_event_t& /*event*/) {}

xcb_atom_t XClient::atom(std::string_view name) {
    if (const auto known = atoms_.find(name); known != atoms_.end()) {
        return known->second;
    }
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    if (!reply) {
        return XCB_ATOM_NONE;
    }
    atoms_.emplace(name, reply->atom);
    return reply->atom;
}

std::string XClient::atomName(xcb_atom_t atom) {
    if (const auto known = atomNames_.find(atom); known != atomNames_.end()) {
        return known->second;
    }
    const XReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(connection_, xcb_get_atom_name(connection_, atom), nullptr));
    if (!reply) {
        return {};
    }
    std::string name(xcb_get_atom_name_name(reply.get()),
                     static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get())));
    atomNames_.emplace(atom, name);
    return name;
}

std::vector<std::uint32_t> XClient::cardinals(xcb_window_t window, std::string_view property) {
    const XReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_,
                               xcb_get_property(connection_, 0, window, atom(property),
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, 65536),
                               nullptr));
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto* items = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {items, items + reply->value_len};
}

std::uint32_t XClient::cardinal(xcb_window_t window, std::string_view property) {
    const std::vector<std::uint32_t> items = cardinals(window, property);
    return items.empty() ? 0 : items.front();
}

void XClient::setCardinals(xcb_window_t window, std::string_view property, xcb_atom_t type,
                           const std::vector<std::uint32_t>& items) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
                        static_cast<std::uint32_t>(items.size()), items.data());
}

void XClient::setText(xcb_window_t window, std::string_view property, xcb_atom_t type,
                      std::string_view text) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property), type, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

bool XClient::exists(xcb_window_t window) {
    const XReply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        connection_, xcb_get_window_attributes(connection_, window), nullptr));
    return reply != nullptr;
}

xcb_window_t XClient::newWindowId() {
    // All clients of a server have ids of the same form: a part of their own, and a number.
    static std::uint32_t nextNumber = 0;
    const std::uint32_t numbers = xcb_get_setup(connection_)->resource_id_mask;
    xcb_window_t id = xcb_generate_id(connection_);
    while (!isLost() && (id & numbers) < nextNumber) {
        id = xcb_generate_id(connection_);
    }
    if (!isLost()) {
        nextNumber = (id & numbers) + 1;
    }
    return id;
}

void XClient::ask(xcb_window_t window, std::string_view type,
                  const std::vector<std::uint32_t>& data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(type);
    std::copy_n(data.begin(), std::min<std::size_t>(data.size(), 5),
                static_cast<std::uint32_t*>(event.data.data32));
    std::array<char, sizeof event> bytes{};
    std::copy_n(reinterpret_cast<const char*>(&event), sizeof event, bytes.begin());
    xcb_send_event(connection_, 0, root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   bytes.data());
    xcb_flush(connection_);
}

void XClient::roundTrip() {
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    handleArrived();
}

bool XClient::handleArrived() {
    bool any = false;
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        handle(*event);
        any = true;
    }
    xcb_flush(connection_);
    return any;
}

bool XClient::handleAllArrived() {
    bool any = false;
    // Over a copy: handling an event may add a client.
    for (XClient* client : std::vector(clients())) {
        any = client->handleArrived() || any;
    }
    return any;
}

bool XClient::waitUntil(const std::function<bool()>& condition, Deadline deadline,
                        const std::vector<int>& alsoWatch) {
    for (;;) {
        handleAllArrived();
        if (condition()) {
            return true;
        }
        if (deadline.isOver()) {
            return false;
        }
        // The condition's own questions may have brought events along.
        if (handleAllArrived()) {
            continue;
        }
        std::vector<pollfd> descriptors;
        for (const XClient* client : clients()) {
            if (!client->isLost()) {
                descriptors.push_back({xcb_get_file_descriptor(client->connection()), POLLIN, 0});
            }
        }
        for (const int descriptor : alsoWatch) {
            descriptors.push_back({descriptor, POLLIN, 0});
        }
        poll(descriptors.data(), descriptors.size(), deadline.milliseconds(longestSilence));
    }
}

}  // namespace lumatile::desktop
