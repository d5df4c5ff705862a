#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/desktop/support/OuterFrame.h"
#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// A window of this process, on a connection of its own.
class TestWindow : public XClient {
public:
    enum class Kind {
        decorated,      ///< Framed by the window manager.
        undecorated,    ///< Asks for no frame.
        clientSide,     ///< Draws its own frame and a shadow round it, as GTK programs do.
        sizeIncrement,  ///< Grows in steps of 9 × 17 pixels, as terminals do.
        dialog,
        dock,     ///< A panel along one edge; reserves its room.
        desktop,  ///< The background with the icons.
    };

    struct Options {
        Kind kind = Kind::decorated;
        PixelRect area{200, 150, 640, 400};  ///< Client area asked for, root coordinates.
        std::string title = "test window";
        std::string windowClass = "TestWindow";
        bool statesPid = true;
        /// The window type that it states instead of its kind's: "UTILITY" …
        std::string type{};
        /// _NET_WM_STRUT_PARTIAL of a dock: left, right, top, bottom and their spans.
        std::array<std::uint32_t, 12> strut{};
        std::uint32_t color = 0x3a6ea5;
    };

    /// The steps of a size-increment window and what they are counted from.
    static constexpr int baseWidth = 6;
    static constexpr int baseHeight = 4;
    static constexpr int stepWidth = 9;
    static constexpr int stepHeight = 17;

    /// The shadow of a client-side window where the window manager knows of shadows: left, right,
    /// top, bottom. All different, so that a mix-up shows.
    static constexpr std::array<std::uint32_t, 4> shadow{22, 26, 18, 30};

    TestWindow(const std::string& display, const Options& options);
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    ~TestWindow() override;

    xcb_window_t id() const { return window_; }
    Kind kind() const { return kind_; }

    /// Shows it and waits until the window manager has taken it over.
    /// @throws DesktopError when it does not
    void map();

    /// Shows it.
    /// @return whether the window manager has taken it over by the deadline
    bool tryMap(Deadline deadline);

    /// Makes it the active window and waits until it is.
    void activate();

    void mapActive();

    /// Takes it away and waits until the window manager has forgotten it.
    void close();

    bool isManaged();
    bool isActive();

    /// As the user sees it.
    /// @throws DesktopError when the window is gone
    PixelRect frame();
    PixelRect client();

    /// Whether `frame` is what a size-increment window may make of `wanted`: the same corner, and
    /// the largest whole steps that fit, or the very size where the window manager disregards
    /// steps.
    static bool isStepped(const PixelRect& frame, const PixelRect& wanted);

    /// Asks the window manager for a place of the outer frame, the reliable way, and waits for it.
    void place(const PixelRect& wanted);

    /// The room that a dock reserves: _NET_WM_STRUT_PARTIAL.
    void setStrut(const std::array<std::uint32_t, 12>& strut);

    /// Adds or removes states ("_NET_WM_STATE_MAXIMIZED_VERT" …) and waits until they are so.
    void setState(const std::vector<std::string>& states, bool on);
    bool hasState(const std::string& state);

    /// The geometries of the client window that the server reported, in order; the size always, the
    /// place as its parent sees it or as the window manager told it.
    const std::vector<PixelRect>& configurations() const { return configurations_; }
    /// Forgets those that the server has reported so far.
    void forgetConfigurations();

protected:
    void handle(const xcb_generic_event_t& event) override;

private:
    void describe(const Options& options);
    std::vector<std::uint32_t> shadowNow();
    void castShadow();

    xcb_window_t window_;
    Kind kind_;
    std::vector<PixelRect> configurations_;
};

}  // namespace lumatile::desktop
