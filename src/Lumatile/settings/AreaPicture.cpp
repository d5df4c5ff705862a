#include "Lumatile/settings/AreaPicture.h"

#include <QPainter>
#include <QPixmap>

#include <array>

#include "Lumatile/widgets/WidgetColors.h"
#include "geometry/Grid.h"

namespace lumatile {

namespace {

constexpr int side = 24;  // Logical pixels.
constexpr double longSide = 22;
constexpr double shortSide = 14;
constexpr double screenRadius = 2.5;
constexpr double areaInset = 1.5;

QPixmap drawn(const SnapCommand& command, double scale) {
    QPixmap picture(QSize(side, side) * scale);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
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
    return picture;
}

}  // namespace

QIcon areaPicture(const SnapCommand& command) {
    QIcon icon;
    for (const double scale : std::array{1.0, 2.0}) {
        const QPixmap picture = drawn(command, scale);
        icon.addPixmap(picture);
        icon.addPixmap(picture, QIcon::Selected);
        icon.addPixmap(picture, QIcon::Disabled);
    }
    return icon;
}

}  // namespace lumatile
