#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/MonitorLayout.h"
#include "tests/desktop/support/ScreenArranger.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile::desktop {

/// An X server of our own without any hardware, on a display number that it chooses itself, so that
/// several run side by side. It ends with its owner.
class PrivateServer {
public:
    enum class Kind {
        dummyDriver,         ///< Xorg: real outputs that can be plugged and unplugged.
        virtualFramebuffer,  ///< Xvfb: one output; further monitors exist by name only.
    };

    /// Ready for clients, with the monitors of `layout`.
    /// @param withoutExtensions names of extensions that the server shall not have; without "RANDR"
    ///        its monitors are whatever it starts with
    /// @throws DesktopError when the server does not start
    explicit PrivateServer(const MonitorLayout& layout, Kind kind = Kind::dummyDriver,
                           const std::vector<std::string>& withoutExtensions = {});

    /// As in $DISPLAY.
    const std::string& display() const { return display_; }
    const MonitorLayout& layout() const { return layout_; }

    /// Changes the monitors while programs run (dummy driver only).
    void arrange(const MonitorLayout& layout);

    /// Takes one monitor away and leaves the root's size as it is.
    void unplug(std::size_t monitor);

    /// Ends the server under its clients.
    void stop();

private:
    void layKeyboard();

    TemporaryFolder folder_;
    ChildProcess process_;
    std::string display_;
    MonitorLayout layout_;
    Kind kind_;
    std::unique_ptr<ScreenArranger> arranger_;  // Empty without RandR.
};

}  // namespace lumatile::desktop
