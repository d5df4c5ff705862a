#include "Lumatile/widgets/ApplicationIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <array>

#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

namespace {

// Drawn on a square of so many units.
constexpr double side = 48;

QPixmap drawn(int pixels) {
    QPixmap picture(pixels, pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(pixels / side, pixels / side);
    painter.setPen(Qt::NoPen);
    painter.setBrush(WidgetColors::card());
    painter.drawRoundedRect(QRectF(2, 2, 44, 44), 11, 11);

    // The screen, and in it the dim grid and the window on its place.
    const QRectF screen(9, 12, 30, 21);
    painter.setBrush(QColor(58, 54, 49));
    painter.drawRoundedRect(screen, 3, 3);
    painter.setBrush(QColor(78, 73, 66));
    for (int column = 0; column < 3; ++column) {
        for (int row = 0; row < 4; ++row) {
            painter.drawRoundedRect(QRectF(11.5 + column * 4.25, 14.5 + row * 4.25, 3, 3), 0.8,
                                    0.8);
        }
    }
    painter.setBrush(WidgetColors::accent());
    painter.drawRoundedRect(QRectF(25, 14.5, 11.5, 16), 1.75, 1.75);
    painter.setBrush(WidgetColors::label());
    painter.drawRoundedRect(QRectF(26.5, 16, 8.5, 2), 1, 1);
    painter.setBrush(QColor(58, 54, 49));
    painter.drawRoundedRect(QRectF(19, 35, 10, 2.5), 1.25, 1.25);
    return picture;
}

}  // namespace

QIcon applicationIcon() {
    QIcon icon;
    for (const int pixels : std::array{16, 24, 32, 48, 64, 96, 128, 192, 256}) {
        icon.addPixmap(drawn(pixels));
    }
    return icon;
}

}  // namespace lumatile
