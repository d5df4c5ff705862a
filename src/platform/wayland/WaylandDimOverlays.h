#pragma once

#include <map>
#include <memory>

#include "platform/wayland/BlackPixels.h"
#include "platform/wayland/LayerSurface.h"
#include "platform/wayland/WaylandLayers.h"
#include "platform/wayland/WaylandOutputs.h"
#include "ports/DimOverlays.h"

namespace lumatile {

/// Overlays as surfaces in the compositor's uppermost layer, each of one pixel that the compositor
/// stretches over the screen. They are there only while they darken something, since even a clear
/// one would keep full-screen programs from having a screen for themselves. A screen that comes
/// meanwhile is darkened with the others.
class WaylandDimOverlays final : public DimOverlays {
public:
    /// All of them outlive the overlays. Where the layers are not available nothing is darkened.
    WaylandDimOverlays(WaylandConnection& connection, WaylandLayers& layers,
                       WaylandOutputs& outputs);
    WaylandDimOverlays(const WaylandDimOverlays&) = delete;
    WaylandDimOverlays& operator=(const WaylandDimOverlays&) = delete;
    ~WaylandDimOverlays() override;

    void rebuild() override;

    /// @param opacity brought into 0 to 1; what is not a number counts as 0. In steps of 1/255.
    void setOpacity(double opacity) override;

private:
    void apply();
    void clear();
    void meetOutputs();

    WaylandLayers& layers_;
    WaylandOutputs& outputs_;
    BlackPixels pixels_;
    double opacity_ = 0;
    std::map<wl_output*, std::unique_ptr<LayerSurface>> surfaces_;
    WaylandOutputs::Observers::Subscription subscription_;
};

}  // namespace lumatile
