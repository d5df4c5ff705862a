#include "tests/desktop/support/AccessibleTree.h"

#include <algorithm>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

namespace {

constexpr const char* accessible = "org.a11y.atspi.Accessible";
constexpr const char* valueInterface = "org.a11y.atspi.Value";
constexpr const char* actionInterface = "org.a11y.atspi.Action";

// A program under a sanitizer may be slow, but not as slow as that.
constexpr int patienceMilliseconds = 10000;

GObjectHandle<GDBusConnection> connect(const std::string& address) {
    constexpr auto flags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GObjectHandle<GDBusConnection> bus(
        g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr));
    if (!bus) {
        throw DesktopError("no bus at " + address);
    }
    return bus;
}

}  // namespace

AccessibleTree::AccessibleTree(const std::string& sessionBus) {
    const auto session = connect(sessionBus);
    const GVariantHandle reply(g_dbus_connection_call_sync(
        session.get(), "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", nullptr,
        G_VARIANT_TYPE("(s)"), G_DBUS_CALL_FLAGS_NONE, patienceMilliseconds, nullptr, nullptr));
    if (!reply) {
        throw DesktopError("there is no bus for accessibility");
    }
    const char* address = nullptr;
    g_variant_get(reply.get(), "(&s)", &address);
    bus_ = connect(address);
}

bool AccessibleTree::waitForProgram(const std::string& name) {
    const Place registry{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};
    return XClient::waitUntil([&] {
        for (const Place& program : children(registry)) {
            if (textProperty(program, "Name") == name) {
                program_ = program;
                return true;
            }
        }
        return false;
    });
}

std::vector<AccessibleNode> AccessibleTree::showing() const {
    std::vector<AccessibleNode> nodes;
    for (const Place& window : children(program_)) {
        collect(window, nodes);
    }
    return nodes;
}

void AccessibleTree::collect(const Place& place, std::vector<AccessibleNode>& nodes) const {
    const AccessibleNode node = read(place);
    if (!node.isShowing()) {
        return;
    }
    nodes.push_back(node);
    for (const Place& child : children(place)) {
        collect(child, nodes);
    }
}

std::optional<AccessibleNode> AccessibleTree::find(const std::string& role,
                                                   const std::string& name) const {
    const std::vector<AccessibleNode> nodes = showing();
    const auto found = std::find_if(nodes.begin(), nodes.end(), [&](const AccessibleNode& node) {
        return node.role == role && node.name == name;
    });
    return found != nodes.end() ? std::optional(*found) : std::nullopt;
}

std::optional<AccessibleNode> AccessibleTree::waitFor(const std::string& role,
                                                      const std::string& name) const {
    std::optional<AccessibleNode> found;
    XClient::waitUntil([&] {
        found = find(role, name);
        return found.has_value();
    });
    return found;
}

AccessibleNode AccessibleTree::again(const AccessibleNode& node) const {
    return read({node.bus, node.path});
}

AccessibleNode AccessibleTree::read(const Place& place) const {
    AccessibleNode node{
        place.bus, place.path, {}, textProperty(place, "Name"), textProperty(place, "Description")};
    if (const GVariantHandle role = call(place, accessible, "GetRoleName", nullptr)) {
        const char* text = nullptr;
        g_variant_get(role.get(), "(&s)", &text);
        node.role = text;
    }
    if (const GVariantHandle states = call(place, accessible, "GetState", nullptr)) {
        const GVariantHandle words(g_variant_get_child_value(states.get(), 0));
        constexpr unsigned wordBits = 32;
        for (gsize index = 0; index < g_variant_n_children(words.get()) && index < 2; ++index) {
            const GVariantHandle word(g_variant_get_child_value(words.get(), index));
            node.states |= std::uint64_t{g_variant_get_uint32(word.get())} << (index * wordBits);
        }
    }
    return node;
}

PixelRect AccessibleTree::extents(const AccessibleNode& node) const {
    constexpr guint32 onTheScreen = 0;
    PixelRect place;
    if (const GVariantHandle reply = call({node.bus, node.path}, "org.a11y.atspi.Component",
                                          "GetExtents", g_variant_new("(u)", onTheScreen))) {
        g_variant_get(reply.get(), "((iiii))", &place.x, &place.y, &place.width, &place.height);
    }
    return place;
}

std::vector<double> AccessibleTree::value(const AccessibleNode& node) const {
    std::vector<double> values;
    for (const char* name : {"CurrentValue", "MinimumValue", "MaximumValue", "MinimumIncrement"}) {
        const GVariantHandle number = property({node.bus, node.path}, valueInterface, name);
        if (!number || !g_variant_is_of_type(number.get(), G_VARIANT_TYPE_DOUBLE)) {
            return {};
        }
        values.push_back(g_variant_get_double(number.get()));
    }
    return values;
}

bool AccessibleTree::setValue(const AccessibleNode& node, double value) const {
    return call({node.bus, node.path}, "org.freedesktop.DBus.Properties", "Set",
                g_variant_new("(ssv)", valueInterface, "CurrentValue",
                              g_variant_new_double(value))) != nullptr;
}

std::string AccessibleTree::text(const AccessibleNode& node) const {
    constexpr gint32 toTheEnd = -1;
    const GVariantHandle reply = call({node.bus, node.path}, "org.a11y.atspi.Text", "GetText",
                                      g_variant_new("(ii)", 0, toTheEnd));
    const char* text = "";
    if (reply) {
        g_variant_get(reply.get(), "(&s)", &text);
    }
    return text;
}

std::vector<std::string> AccessibleTree::labels(const AccessibleNode& node) const {
    constexpr guint32 labelledBy = 2;
    std::vector<std::string> names;
    const GVariantHandle reply = call({node.bus, node.path}, accessible, "GetRelationSet", nullptr);
    if (!reply || !g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(a(ua(so)))"))) {
        return names;
    }
    const GVariantHandle relations(g_variant_get_child_value(reply.get(), 0));
    for (gsize index = 0; index < g_variant_n_children(relations.get()); ++index) {
        const GVariantHandle relation(g_variant_get_child_value(relations.get(), index));
        guint32 type = 0;
        g_variant_get_child(relation.get(), 0, "u", &type);
        const GVariantHandle others(g_variant_get_child_value(relation.get(), 1));
        for (gsize other = 0; type == labelledBy && other < g_variant_n_children(others.get());
             ++other) {
            const char* bus = nullptr;
            const char* path = nullptr;
            g_variant_get_child(others.get(), other, "(&s&o)", &bus, &path);
            names.push_back(textProperty({bus, path}, "Name"));
        }
    }
    return names;
}

std::vector<std::string> AccessibleTree::actions(const AccessibleNode& node) const {
    std::vector<std::string> names;
    const GVariantHandle reply =
        call({node.bus, node.path}, actionInterface, "GetActions", nullptr);
    if (!reply) {
        return names;
    }
    const GVariantHandle list(g_variant_get_child_value(reply.get(), 0));
    for (gsize index = 0; index < g_variant_n_children(list.get()); ++index) {
        const char* name = nullptr;
        g_variant_get_child(list.get(), index, "(&sss)", &name, nullptr, nullptr);
        names.emplace_back(name);
    }
    return names;
}

bool AccessibleTree::act(const AccessibleNode& node, const std::string& action) const {
    const std::vector<std::string> names = actions(node);
    const auto found = std::find(names.begin(), names.end(), action);
    if (found == names.end()) {
        return false;
    }
    return call({node.bus, node.path}, actionInterface, "DoAction",
                g_variant_new("(i)", static_cast<gint32>(found - names.begin()))) != nullptr;
}

GVariantHandle AccessibleTree::call(const Place& place, const std::string& interface,
                                    const std::string& method, GVariant* arguments) const {
    return GVariantHandle(g_dbus_connection_call_sync(
        bus_.get(), place.bus.c_str(), place.path.c_str(), interface.c_str(), method.c_str(),
        arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, patienceMilliseconds, nullptr, nullptr));
}

GVariantHandle AccessibleTree::property(const Place& place, const std::string& interface,
                                        const std::string& name) const {
    const GVariantHandle reply = call(place, "org.freedesktop.DBus.Properties", "Get",
                                      g_variant_new("(ss)", interface.c_str(), name.c_str()));
    if (!reply) {
        return nullptr;
    }
    GVariant* value = nullptr;
    g_variant_get(reply.get(), "(v)", &value);
    return GVariantHandle(value);
}

std::string AccessibleTree::textProperty(const Place& place, const std::string& name) const {
    const GVariantHandle value = property(place, accessible, name);
    return value && g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING)
               ? g_variant_get_string(value.get(), nullptr)
               : std::string();
}

std::vector<AccessibleTree::Place> AccessibleTree::children(const Place& place) const {
    std::vector<Place> places;
    const GVariantHandle reply = call(place, accessible, "GetChildren", nullptr);
    if (!reply || !g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(a(so))"))) {
        return places;
    }
    const GVariantHandle list(g_variant_get_child_value(reply.get(), 0));
    for (gsize index = 0; index < g_variant_n_children(list.get()); ++index) {
        const char* bus = nullptr;
        const char* path = nullptr;
        g_variant_get_child(list.get(), index, "(&s&o)", &bus, &path);
        places.push_back({bus, path});
    }
    return places;
}

}  // namespace lumatile::desktop
