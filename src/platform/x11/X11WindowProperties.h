#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <xcb/xcb.h>

#include "platform/x11/X11Atoms.h"
#include "platform/x11/X11Property.h"
#include "platform/x11/X11WindowFacts.h"

namespace lumatile {

/// The window properties that are read, each with its type, its bound and what it tells, in one
/// table. A set of them is a mask with a bit for each row.
class X11WindowProperties {
public:
    using Mask = std::uint32_t;

    explicit X11WindowProperties(X11Atoms& atoms);

    std::size_t count() const { return rows_.size(); }
    Mask all() const { return (Mask{1} << rows_.size()) - 1; }

    /// The set of the one property with this name; empty when it is not read.
    Mask maskOf(xcb_atom_t name) const;

    /// Whether window managers alone write the property, so that a change is a sign of life.
    bool isWindowManagers(xcb_atom_t name) const;

    xcb_get_property_cookie_t ask(std::size_t row, xcb_connection_t* connection,
                                  xcb_window_t window) const;

    /// Replaces what the property tells in `facts`; what is absent or malformed tells nothing.
    void tell(std::size_t row, const X11Property& property, X11WindowFacts& facts) const;

private:
    using Tell = void (*)(const X11WindowProperties&, const X11Property&, X11WindowFacts&);

    struct Row {
        xcb_atom_t name;
        xcb_atom_t type;
        std::uint32_t longLength;
        bool isWindowManagers;
        Tell tell;
    };

    struct Kind {
        xcb_atom_t name;
        WindowKind kind;
    };

    static void tellState(const X11WindowProperties&, const X11Property&, X11WindowFacts&);
    static void tellKind(const X11WindowProperties&, const X11Property&, X11WindowFacts&);
    static void tellActions(const X11WindowProperties&, const X11Property&, X11WindowFacts&);

    std::vector<Row> rows_;
    std::vector<Kind> kinds_;
    xcb_atom_t hidden_;
    xcb_atom_t fullScreen_;
    xcb_atom_t maximizedHorizontally_;
    xcb_atom_t maximizedVertically_;
    xcb_atom_t shaded_;
    xcb_atom_t actionMove_;
    xcb_atom_t actionResize_;
};

}  // namespace lumatile
