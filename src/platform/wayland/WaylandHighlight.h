#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "geometry/Point.h"
#include "platform/wayland/LayerPlace.h"
#include "platform/wayland/LayerSurface.h"
#include "platform/wayland/WaylandLayers.h"
#include "platform/wayland/WaylandOutputs.h"
#include "platform/wayland/WaylandPictures.h"
#include "ports/HighlightSurface.h"

namespace lumatile {

/// The highlight as a surface in the compositor's uppermost layer, as large as the frame that it
/// shows. What is less than opaque is drawn so: compositors fade nobody's surfaces.
class WaylandHighlight final : public HighlightSurface {
public:
    /// @param connection and `layers` and `outputs` outlive the highlight
    /// @param origin where the accessibility space begins in the compositor's
    WaylandHighlight(WaylandConnection& connection, WaylandLayers& layers, WaylandOutputs& outputs,
                     std::function<Point()> origin);
    WaylandHighlight(const WaylandHighlight&) = delete;
    WaylandHighlight& operator=(const WaylandHighlight&) = delete;
    ~WaylandHighlight() override;

    bool isAvailable() override { return layers_.isAvailable(); }
    bool show(const Rect& frame, const Draw& draw) override;
    void setOpacity(double opacity) override;
    void hide() override;
    void release() override;

private:
    void drawWanted();
    void present();
    std::shared_ptr<WaylandPicture> faded();

    WaylandLayers& layers_;
    WaylandOutputs& outputs_;
    std::function<Point()> origin_;
    WaylandPictures pictures_;
    double opacity_ = 0;
    struct Wanted {
        LayerPlace place;
        Draw draw;
    };
    std::optional<Wanted> wanted_;     ///< Not drawn yet, since the compositor reads all pictures.
    std::optional<LayerPlace> place_;  ///< Of what is drawn.
    std::shared_ptr<WaylandPicture> drawn_;  ///< As it is at full opacity.
    bool hasPicture_ = false;                ///< The surface.
    std::unique_ptr<LayerSurface> surface_;
    WaylandOutputs::Observers::Subscription subscription_;
};

}  // namespace lumatile
