#pragma once

#include <xcb/randr.h>

#include <string>
#include <vector>

#include "tests/desktop/support/MonitorLayout.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// Plugs the monitors of a server, as a screen-settings program does.
class ScreenArranger {
public:
    explicit ScreenArranger(const std::string& display);

    /// Makes the server's monitors those of `layout`, each on its own output. The root takes the
    /// size of the layout.
    /// @throws DesktopError when the server refuses
    void arrange(const MonitorLayout& layout);

    /// Makes them monitors without outputs of their own, for servers that have only one.
    void arrangeVirtually(const MonitorLayout& layout);

    /// Switches one output off and leaves the root's size as it is, so that what was on the
    /// monitor stays where no screen shows it.
    void unplug(std::size_t monitor);

private:
    struct Resources {
        xcb_timestamp_t time = 0;
        std::vector<xcb_randr_output_t> outputs;
        std::vector<xcb_randr_crtc_t> controllers;
        std::vector<xcb_randr_mode_info_t> modes;
    };

    Resources resources();
    xcb_randr_mode_t mode(const Resources& resources, int width, int height);
    void configure(const Resources& resources, std::size_t index, int x, int y,
                   xcb_randr_mode_t mode);
    bool isConfigured(const Resources& resources, std::size_t index, const PixelRect& monitor);
    void resizeRoot(const PixelRect& root);

    XClient client_;
};

}  // namespace lumatile::desktop
