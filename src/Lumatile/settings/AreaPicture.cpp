#include "Lumatile/settings/AreaPicture.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>

#include <functional>
#include <utility>

#include "Lumatile/widgets/SymbolIcon.h"
#include "Lumatile/widgets/WidgetColors.h"
#include "geometry/Grid.h"

namespace lumatile {

namespace {

constexpr double side = 24;  // The square that all is drawn on.
constexpr double longSide = 22;
constexpr double shortSide = 14;
constexpr double screenRadius = 2.5;
constexpr double areaInset = 1.5;
constexpr int symbolSide = 14;

/// Drawn anew at each size and scale, in the same colours whatever the row's state is.
class Engine final : public QIconEngine {
public:
    explicit Engine(std::function<void(QPainter&)> draw) : draw_(std::move(draw)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode /*mode*/,
               QIcon::State /*state*/) override {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / side, rect.height() / side);
        draw_(*painter);
        painter->restore();
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override {
        // `size` is in device pixels already.
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        painter.end();
        picture.setDevicePixelRatio(scale);
        return picture;
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return scaledPixmap(size, mode, state, 1);
    }

    QIconEngine* clone() const override { return new Engine(draw_); }

private:
    std::function<void(QPainter&)> draw_;
};

void drawArea(QPainter& painter, const SnapCommand& command) {
    const bool isPortrait = command.axis == Axis::vertical;
    const double width = isPortrait ? shortSide : longSide;
    const double height = isPortrait ? longSide : shortSide;
    const QRectF screen((side - width) / 2, (side - height) / 2, width, height);
    painter.setPen(QPen(WidgetColors::secondaryLabel(), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(screen.adjusted(0.5, 0.5, -0.5, -0.5), screenRadius, screenRadius);
    const QRectF inside = screen.adjusted(areaInset, areaInset, -areaInset, -areaInset);
    const Rect area =
        Grid::rect(command.targetArea(), {inside.x(), inside.y(), inside.width(), inside.height()},
                   command.axis);
    painter.fillRect(QRectF(area.x, area.y, area.width, area.height).intersected(inside),
                     WidgetColors::accent());
}

}  // namespace

QIcon areaPicture(const SnapCommand& command) {
    return QIcon(new Engine([command](QPainter& painter) { drawArea(painter, command); }));
}

QIcon foldPicture(bool isFolded) {
    return QIcon(new Engine([isFolded](QPainter& painter) {
        constexpr double inset = (side - symbolSide) / 2;
        const double scale = painter.transform().m11() * painter.device()->devicePixelRatioF();
        painter.drawPixmap(QPointF(inset, inset),
                           SymbolIcon::pixmap(isFolded ? "chevron.right" : "chevron.down",
                                              WidgetColors::secondaryLabel(), symbolSide, scale));
    }));
}

}  // namespace lumatile
