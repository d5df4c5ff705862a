#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/freedesktop/glib/GLibHandles.h"
#include "tests/desktop/support/PixelRect.h"

namespace lumatile::desktop {

/// What a screen reader is told about one thing on the screen.
struct AccessibleNode {
    std::string bus;
    std::string path;
    std::string role;  ///< "push button", "check box", "label" …
    std::string name;
    std::string description;
    std::uint64_t states = 0;

    bool isEnabled() const { return has(24); }
    bool isFocused() const { return has(12); }
    bool isChecked() const { return has(4); }
    bool isShowing() const { return has(25); }

private:
    bool has(unsigned state) const { return (states >> state & 1U) != 0; }
};

/// Reads a program as a screen reader does: over the bus for accessibility of its session.
class AccessibleTree {
public:
    /// @param sessionBus its address; the other bus is asked for there
    /// @throws DesktopError when there is none
    explicit AccessibleTree(const std::string& sessionBus);

    /// Waits until a program of that name is there.
    bool waitForProgram(const std::string& name);

    /// Everything of the program that shows, depth first.
    std::vector<AccessibleNode> showing() const;

    /// The first with that role and name that shows.
    std::optional<AccessibleNode> find(const std::string& role, const std::string& name) const;

    /// Waits for it.
    std::optional<AccessibleNode> waitFor(const std::string& role, const std::string& name) const;

    /// Its state as it is now.
    AccessibleNode again(const AccessibleNode& node) const;

    /// Where it lies on the root window.
    PixelRect extents(const AccessibleNode& node) const;

    /// The value of a slider, its least, its greatest and its step; empty for what has none.
    std::vector<double> value(const AccessibleNode& node) const;
    bool setValue(const AccessibleNode& node, double value) const;

    /// What stands in a text field.
    std::string text(const AccessibleNode& node) const;

    /// The names of what labels it.
    std::vector<std::string> labels(const AccessibleNode& node) const;

    /// The names of what can be done with it; "Press" is one.
    std::vector<std::string> actions(const AccessibleNode& node) const;
    bool act(const AccessibleNode& node, const std::string& action) const;

private:
    struct Place {
        std::string bus;
        std::string path;
    };

    GVariantHandle call(const Place& place, const std::string& interface, const std::string& method,
                        GVariant* arguments) const;
    GVariantHandle property(const Place& place, const std::string& interface,
                            const std::string& name) const;
    std::string textProperty(const Place& place, const std::string& name) const;
    std::vector<Place> children(const Place& place) const;
    AccessibleNode read(const Place& place) const;
    void collect(const Place& place, std::vector<AccessibleNode>& nodes) const;

    GObjectHandle<GDBusConnection> bus_;
    Place program_;
};

}  // namespace lumatile::desktop
