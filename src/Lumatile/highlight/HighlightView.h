#pragma once

#include <QRectF>
#include <QRegion>
#include <QSize>
#include <QWidget>

#include "geometry/Size.h"

class QPainter;

namespace lumatile {

/// The place where a dragged window would land, drawn: a translucent panel with the snap grid, an
/// accent band along its upper edge, and an outline. Lengths are in points.
class HighlightView : public QWidget {
public:
    explicit HighlightView(QWidget* parent = nullptr) : QWidget(parent) {}

    Size cellPitch{40, 40};  ///< Width and height of one grid cell.

    /// What the panel is laid into; empty: the whole view. The window may be a little larger than
    /// the place that it shows, where a point is no whole number of pixels.
    QRectF place;

    /// For screens on which nothing can be translucent: opaque colours, of which `shape` is to be
    /// cut out.
    bool isSolid = false;

    /// All that the picture and the shape depend on, but for which of the two forms it is.
    struct Drawn {
        QSize size;
        QRectF place;
        Size cellPitch{0, 0};

        bool operator==(const Drawn&) const = default;
    };
    Drawn drawn() const { return {size(), place, cellPitch}; }

    /// Draws the translucent form.
    /// @param bounds what the panel is laid into
    /// @param part what is to be drawn of it
    static void draw(QPainter& painter, const QRectF& bounds, const Size& cellPitch,
                     const QRectF& part);

    /// What the solid form shows: the outline, the band, and the borders of the cell marks.
    QRegion shape() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF drawingBounds() const;
};

}  // namespace lumatile
