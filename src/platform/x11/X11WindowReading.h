#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11GeometryListening.h"
#include "platform/x11/X11ProcessIds.h"
#include "platform/x11/X11RootFacts.h"
#include "platform/x11/X11TopLevels.h"
#include "platform/x11/X11WindowProperties.h"
#include "platform/x11/X11WindowTable.h"

namespace lumatile {

/// One reading of what is stale, all of it in as few round trips as there can be: the questions
/// about all windows go out before the first answer is waited for.
class X11WindowReading {
public:
    /// Where it reads from and to. All outlive the reading.
    struct Parts {
        X11Connection& connection;
        const X11WindowProperties& properties;
        const X11ProcessIds& processIds;
        X11WindowTable& table;
        X11RootFacts& root;
        X11GeometryListening& listening;
    };

    explicit X11WindowReading(const Parts& parts) : parts_(parts) {}
    X11WindowReading(const X11WindowReading&) = delete;
    X11WindowReading& operator=(const X11WindowReading&) = delete;
    ~X11WindowReading() = default;

    /// Once.
    void run();

private:
    struct PropertyQuestion {
        xcb_window_t window = XCB_WINDOW_NONE;
        std::size_t row = 0;
        xcb_get_property_cookie_t cookie{};
    };
    struct PlaceQuestion {
        xcb_window_t window = XCB_WINDOW_NONE;
        xcb_get_geometry_cookie_t size{};
        xcb_translate_coordinates_cookie_t position{};
        std::optional<xcb_get_geometry_cookie_t> topLevel;
    };

    struct UnheardQuestion {
        xcb_window_t window = XCB_WINDOW_NONE;
        xcb_get_window_attributes_cookie_t attributes{};
        xcb_query_tree_cookie_t tree{};
    };

    std::vector<xcb_window_t> readRoot();
    void add(xcb_window_t window);

    void listenAgain();
    void askWindowManager();
    void askProperties();
    void askProcesses();
    std::vector<xcb_window_t> takeStaleTopLevels();
    void askPlaces();

    void takeUnheard();
    void takeFacts();
    void takeProcesses();
    void takeTopLevels(X11TopLevels& search);
    void takePlaces();

    X11WindowTable& table() { return parts_.table; }
    xcb_connection_t* server() { return parts_.connection.get(); }

    Parts parts_;
    std::vector<xcb_window_t> windows_;  // Those that something is stale of.
    std::vector<UnheardQuestion> unheard_;
    std::optional<xcb_get_property_cookie_t> windowManager_;
    std::vector<PropertyQuestion> properties_;
    std::vector<xcb_window_t> withoutProcess_;
    X11ProcessIds::Question processes_;
    std::vector<PlaceQuestion> places_;
};

}  // namespace lumatile
