#include "Lumatile/highlight/HighlightView.h"

#include <QBitmap>
#include <QColor>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <vector>

#include "Lumatile/widgets/Palette.h"

namespace lumatile {

namespace {

constexpr double panelInset = 3;
constexpr double panelRadius = 8;
constexpr double panelAlpha = 0.45;
constexpr double panelTintAlpha = 0.07;
constexpr double markAlpha = 0.14;
constexpr double markRadius = 4;
constexpr double markStart = 0.5;
constexpr double bandHeight = 6;
constexpr double outlineAlpha = 0.9;
constexpr double outlineWidth = 2;

// A mark takes the middle half of its cell: the grid can be counted, and what lies below it can
// still be read. It is a square, by the shorter side of the cell.
constexpr double markShare = 0.5;

// Nine screens side by side have a quarter of this; more marks than that come from a screen that
// is all panels but for a few pixels, and are too small to be seen.
constexpr double mostMarks = 10'000;

// The solid form has only the marks' borders: whole ones would hide a quarter of what lies below.
constexpr double markBorder = 2;

// Round the solid form's outline, so that it is seen on light windows too.
constexpr double contrastWidth = 2;

QColor withAlpha(const PaletteColor& color, double alpha) {
    QColor result(color.red, color.green, color.blue);
    result.setAlphaF(static_cast<float>(alpha));
    return result;
}

QRectF panelIn(const QRectF& bounds) {
    return bounds.adjusted(panelInset, panelInset, -panelInset, -panelInset);
}

QRectF bandIn(const QRectF& panel) {
    return {panel.left(), panel.top(), panel.width(), bandHeight};
}

QPainterPath roundedPath(const QRectF& rect, double radius) {
    const double fitting = std::min({radius, rect.width() / 2, rect.height() / 2});
    QPainterPath path;
    path.addRoundedRect(rect, fitting, fitting);
    return path;
}

/// The stroke along the panel's border, as the shape that it covers: the toolkit's own strokes are
/// a quarter of a pixel off in round corners, which shows on fine screens.
QPainterPath outlineOf(const QRectF& panel, double width) {
    const double half = width / 2;
    QPainterPath ring = roundedPath(panel.adjusted(-half, -half, half, half), panelRadius + half);
    const QRectF inner = panel.adjusted(half, half, -half, -half);
    if (!inner.isEmpty()) {
        ring.addPath(roundedPath(inner, panelRadius - half));
    }
    return ring;  // Filled where it is one path deep.
}

/// One square for each step of the grid over the panel. The walk starts beside the panel's corner,
/// which is inset itself; the squares are put back by both, so that they lie in the middle of the
/// cells that the window would take.
std::vector<QRectF> marksIn(const QRectF& panel, const Size& pitch) {
    const double side = markShare * std::min(pitch.width, pitch.height);
    const double across = std::ceil((panel.width() - markStart) / pitch.width);
    const double down = std::ceil((panel.height() - markStart) / pitch.height);
    // What is not a number fails the comparisons.
    if (!(side > 0 && across > 0 && down > 0 && across * down <= mostMarks)) {
        return {};
    }
    const double left = panel.left() - panelInset + (pitch.width - side) / 2;
    const double top = panel.top() - panelInset + (pitch.height - side) / 2;
    std::vector<QRectF> marks;
    marks.reserve(static_cast<std::size_t>(across * down));
    for (int row = 0; row < static_cast<int>(down); ++row) {
        for (int column = 0; column < static_cast<int>(across); ++column) {
            marks.emplace_back(left + column * pitch.width, top + row * pitch.height, side, side);
        }
    }
    return marks;
}

/// `color` as it would look at this alpha over `below`.
QColor mixed(const QColor& color, double alpha, const QColor& below) {
    const auto channel = [alpha](int upper, int lower) {
        return static_cast<int>(std::lround(upper * alpha + lower * (1 - alpha)));
    };
    return {channel(color.red(), below.red()), channel(color.green(), below.green()),
            channel(color.blue(), below.blue())};
}

/// By edges, so that neighbours meet.
QRect rounded(const QRectF& rect) {
    const int left = qRound(rect.left());
    const int top = qRound(rect.top());
    return {left, top, qRound(rect.right()) - left, qRound(rect.bottom()) - top};
}

/// Adds to a band, whose rectangles come from left to right.
void addToBand(std::vector<QRect>& rects, const QRect& rect) {
    if (rect.isEmpty()) {
        return;
    }
    if (!rects.empty() && rects.back().top() == rect.top() &&
        rects.back().right() + 1 >= rect.left()) {
        rects.back().setRight(rect.right());
        return;
    }
    rects.push_back(rect);
}

/// The borders of the marks, laid out row by row as a region wants its rectangles: to join them one
/// by one would look at all of them each time.
QRegion markBorders(const QRectF& panel, const Size& pitch) {
    const int border = static_cast<int>(markBorder);
    const std::vector<QRectF> marks = marksIn(panel, pitch);
    std::vector<QRect> rects;
    for (auto row = marks.begin(); row != marks.end();) {
        const auto next = std::find_if(
            row, marks.end(), [row](const QRectF& mark) { return mark.top() != row->top(); });
        const QRect first = rounded(*row);
        const bool isOpen = first.height() > 2 * border && first.width() > 2 * border;
        const int upper = isOpen ? first.top() + border : first.bottom() + 1;
        const int lower = isOpen ? first.bottom() + 1 - border : first.bottom() + 1;
        std::for_each(row, next, [&](const QRectF& mark) {
            const QRect whole = rounded(mark);
            addToBand(rects, {whole.left(), first.top(), whole.width(), upper - first.top()});
        });
        std::for_each(row, next, [&](const QRectF& mark) {
            const QRect whole = rounded(mark);
            addToBand(rects, {whole.left(), upper, border, lower - upper});
            addToBand(rects, {whole.right() + 1 - border, upper, border, lower - upper});
        });
        std::for_each(row, next, [&](const QRectF& mark) {
            const QRect whole = rounded(mark);
            addToBand(rects, {whole.left(), lower, whole.width(), first.bottom() + 1 - lower});
        });
        row = next;
    }
    QRegion region;
    region.setRects(rects.data(), static_cast<int>(rects.size()));
    return region;
}

/// The pixels of the outline and the band within a small rectangle.
QRegion frameWithin(const QRect& tile, const QRectF& panel) {
    QBitmap bitmap(tile.size());
    bitmap.clear();
    QPainter painter(&bitmap);
    painter.translate(-tile.topLeft());
    painter.setClipPath(roundedPath(panel, panelRadius));
    painter.fillRect(bandIn(panel), Qt::color1);
    painter.setClipping(false);
    painter.fillPath(outlineOf(panel, outlineWidth + 2 * contrastWidth), Qt::color1);
    painter.end();
    return QRegion(bitmap).translated(tile.topLeft());
}

/// The outline with what lies round it, and the band. Only the corners have to be drawn to be
/// known.
QRegion frameRegion(const QRectF& panel) {
    constexpr double half = outlineWidth / 2 + contrastWidth;
    const QRect outer = rounded(panel.adjusted(-half, -half, half, half));
    const QRect inner = rounded(panel.adjusted(half, half, -half, -half));
    constexpr int corner = static_cast<int>(panelRadius + half) + 2;
    const QRect straight = outer.adjusted(corner, corner, -corner, -corner);
    if (straight.isEmpty()) {
        return frameWithin(outer, panel);
    }
    QRegion region = QRegion(outer) - inner;
    region |= rounded(bandIn(panel));
    for (const int x : {outer.left(), straight.right() + 1}) {
        for (const int y : {outer.top(), straight.bottom() + 1}) {
            const QRect tile(x, y, corner, corner);
            region = (region - tile) | frameWithin(tile, panel);
        }
    }
    return region;
}

/// @param part what is to be drawn of it
void drawSolid(QPainter& painter, const QRectF& bounds, const Size& pitch, const QRectF& part) {
    // Nothing is known of what lies below, so it counts as medium grey.
    const QColor tint = withAlpha(Palette::lightTint, 1);
    const QColor panelColor =
        mixed(tint, panelTintAlpha, mixed(Qt::black, panelAlpha, QColor(Qt::gray)));
    const QColor markColor = mixed(tint, markAlpha, panelColor);
    const QRectF panel = panelIn(bounds);
    painter.fillRect(bounds, panelColor);
    if (panel.isEmpty()) {
        return;
    }
    for (const QRectF& mark : marksIn(panel, pitch)) {
        if (mark.intersects(part)) {
            painter.fillRect(mark, markColor);
        }
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipPath(roundedPath(panel, panelRadius));
    painter.fillRect(bandIn(panel), withAlpha(Palette::accent, 1));
    painter.setClipping(false);
    painter.fillPath(outlineOf(panel, outlineWidth), tint);
}

}  // namespace

void HighlightView::draw(QPainter& painter, const QRectF& bounds, const Size& cellPitch,
                         const QRectF& part) {
    const QRectF panel = panelIn(bounds);
    if (panel.isEmpty()) {
        return;  // Too small a place for any panel.
    }
    const QPainterPath path = roundedPath(panel, panelRadius);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, withAlpha({}, panelAlpha));
    painter.save();
    painter.setClipPath(path);
    painter.fillPath(path, withAlpha(Palette::lightTint, panelTintAlpha));
    const QColor markColor = withAlpha(Palette::lightTint, markAlpha);
    for (const QRectF& mark : marksIn(panel, cellPitch)) {
        if (mark.intersects(part)) {
            painter.fillPath(roundedPath(mark, markRadius), markColor);
        }
    }
    painter.fillRect(bandIn(panel), withAlpha(Palette::accent, 1));
    painter.restore();
    painter.fillPath(outlineOf(panel, outlineWidth), withAlpha(Palette::lightTint, outlineAlpha));
}

QRectF HighlightView::drawingBounds() const { return place.isEmpty() ? QRectF(rect()) : place; }

/// The corners of the marks' borders are square: round ones would double the rectangles that make
/// up the shape, and the server tells of each one that comes into sight.
QRegion HighlightView::shape() const {
    const QRectF panel = panelIn(drawingBounds());
    if (panel.isEmpty()) {
        return drawingBounds().toAlignedRect();
    }
    return frameRegion(panel) | (markBorders(panel, cellPitch) & rounded(panel));
}

/// A step of a fade has a single pixel drawn, which costs as much as all of them unless the marks
/// are left out.
void HighlightView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    (isSolid ? drawSolid : draw)(painter, drawingBounds(), cellPitch, QRectF(event->rect()));
}

}  // namespace lumatile
