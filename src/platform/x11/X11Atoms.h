#pragma once

#include <string_view>
#include <unordered_map>

#include <xcb/xcb.h>

namespace lumatile {

/// The numbers behind atom names, interned once and remembered. Unknown names cost a round trip;
/// the names that are given at construction share one.
class X11Atoms {
public:
    explicit X11Atoms(xcb_connection_t* connection);

    /// `XCB_ATOM_NONE` when the connection is lost. `name` must be a string literal (it is kept).
    xcb_atom_t operator[](std::string_view name);

private:
    xcb_connection_t* connection_;
    std::unordered_map<std::string_view, xcb_atom_t> atoms_;
};

}  // namespace lumatile
