#include "Lumatile/widgets/SymbolIcon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>

#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

namespace {

// All drawings are made on a square of so many units, with lines of this width.
constexpr double side = 20;
constexpr double line = 1.5;

using Draw = void (*)(QPainter& painter, const QColor& color);

void stroke(QPainter& painter, const QColor& color, double width = line) {
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
}

void fill(QPainter& painter, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
}

/// Cuts out of what is drawn already.
void cutWith(QPainter& painter, const std::function<void()>& draw) {
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    draw();
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void gear(QPainter& painter, const QColor& color) {
    constexpr int teeth = 8;
    constexpr double inner = 5.6;
    constexpr double outer = 8;
    QPainterPath path;
    for (int i = 0; i < teeth * 4; ++i) {
        // A quarter each: up the flank, along the tip, down, along the root.
        const double angle = (i + 0.5) * 2 * std::numbers::pi / (teeth * 4);
        const double radius = i % 4 < 2 ? outer : inner;
        const QPointF point(side / 2 + radius * std::cos(angle),
                            side / 2 + radius * std::sin(angle));
        if (i == 0) {
            path.moveTo(point);
        } else {
            path.lineTo(point);
        }
    }
    path.closeSubpath();
    stroke(painter, color);
    painter.drawPath(path);
    painter.drawEllipse(QPointF(side / 2, side / 2), 2.4, 2.4);
}

void splitRectangle(QPainter& painter, const QColor& color) {
    stroke(painter, color);
    painter.drawRoundedRect(QRectF(2.25, 3.75, 15.5, 12.5), 2.5, 2.5);
    painter.drawLine(QPointF(10, 4), QPointF(10, 16));
    painter.drawLine(QPointF(2.5, 10), QPointF(17.5, 10));
}

void display(QPainter& painter, const QColor& color) {
    stroke(painter, color);
    painter.drawRoundedRect(QRectF(2.25, 3.25, 15.5, 10.5), 2, 2);
    painter.drawLine(QPointF(10, 14), QPointF(10, 17));
    painter.drawLine(QPointF(6.5, 17), QPointF(13.5, 17));
}

void info(QPainter& painter, const QColor& color) {
    stroke(painter, color);
    painter.drawEllipse(QPointF(10, 10), 7.75, 7.75);
    painter.drawLine(QPointF(10, 9.25), QPointF(10, 13.75));
    fill(painter, color);
    painter.drawEllipse(QPointF(10, 6.25), 1, 1);
}

void plus(QPainter& painter, const QColor& color) {
    stroke(painter, color);
    painter.drawLine(QPointF(4, 10), QPointF(16, 10));
    painter.drawLine(QPointF(10, 4), QPointF(10, 16));
}

void minus(QPainter& painter, const QColor& color) {
    stroke(painter, color);
    painter.drawLine(QPointF(4, 10), QPointF(16, 10));
}

void cross(QPainter& painter, const QColor& color) {
    stroke(painter, color, 2);
    painter.drawLine(QPointF(5, 5), QPointF(15, 15));
    painter.drawLine(QPointF(5, 15), QPointF(15, 5));
}

QPainterPath triangle() {
    QPainterPath path;
    path.moveTo(10, 3);
    path.lineTo(18, 16.5);
    path.lineTo(2, 16.5);
    path.closeSubpath();
    return path;
}

void exclamationMark(QPainter& painter, const QColor& color) {
    stroke(painter, color);
    painter.drawLine(QPointF(10, 8), QPointF(10, 11.75));
    fill(painter, color);
    painter.drawEllipse(QPointF(10, 14.25), 0.95, 0.95);
}

void warning(QPainter& painter, const QColor& color) {
    stroke(painter, color);
    painter.drawPath(triangle());
    exclamationMark(painter, color);
}

void filledWarning(QPainter& painter, const QColor& color) {
    stroke(painter, color);
    painter.setBrush(color);
    painter.drawPath(triangle());
    cutWith(painter, [&] { exclamationMark(painter, color); });
}

void filledCheckmark(QPainter& painter, const QColor& color) {
    fill(painter, color);
    painter.drawEllipse(QPointF(10, 10), 8.25, 8.25);
    cutWith(painter, [&] {
        stroke(painter, color, 1.75);
        painter.drawPolyline(
            std::array{QPointF(6.25, 10.5), QPointF(9, 13.25), QPointF(13.75, 7.25)}.data(), 3);
    });
}

void sparkles(QPainter& painter, const QColor& color) {
    stroke(painter, color);
    painter.drawLine(QPointF(6, 3), QPointF(14, 3));
    painter.drawLine(QPointF(4.5, 5.75), QPointF(15.5, 5.75));
    painter.drawRoundedRect(QRectF(2.25, 8.5, 15.5, 8.5), 2, 2);
    const auto star = [&](double x, double y, double radius) {
        QPainterPath path;
        path.moveTo(x, y - radius);
        path.quadTo(x, y, x + radius, y);
        path.quadTo(x, y, x, y + radius);
        path.quadTo(x, y, x - radius, y);
        path.quadTo(x, y, x, y - radius);
        fill(painter, color);
        painter.drawPath(path);
    };
    star(8.5, 12.75, 3);
    star(13, 11.5, 1.75);
}

void chevron(QPainter& painter, const QColor& color) {
    stroke(painter, color);
    painter.drawPolyline(std::array{QPointF(5, 8), QPointF(10, 13), QPointF(15, 8)}.data(), 3);
}

void chevronToTheRight(QPainter& painter, const QColor& color) {
    stroke(painter, color);
    painter.drawPolyline(std::array{QPointF(8, 5), QPointF(13, 10), QPointF(8, 15)}.data(), 3);
}

void keyboard(QPainter& painter, const QColor& color) {
    stroke(painter, color);
    painter.drawRoundedRect(QRectF(1.75, 4.75, 16.5, 10.5), 2, 2);
    fill(painter, color);
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 5; ++column) {
            painter.drawRoundedRect(QRectF(4.1 + column * 2.55, 7.1 + row * 2.4, 1.5, 1.4), 0.4,
                                    0.4);
        }
    }
    painter.drawRoundedRect(QRectF(6.6, 11.9, 6.7, 1.4), 0.4, 0.4);
}

void outwardArrows(QPainter& painter, const QColor& color) {
    stroke(painter, color);
    painter.drawLine(QPointF(8.25, 8.25), QPointF(3.25, 3.25));
    painter.drawPolyline(
        std::array{QPointF(3.25, 7.75), QPointF(3.25, 3.25), QPointF(7.75, 3.25)}.data(), 3);
    painter.drawLine(QPointF(11.75, 11.75), QPointF(16.75, 16.75));
    painter.drawPolyline(
        std::array{QPointF(16.75, 12.25), QPointF(16.75, 16.75), QPointF(12.25, 16.75)}.data(), 3);
}

void cloudWithArrows(QPainter& painter, const QColor& color) {
    stroke(painter, color);
    QPainterPath cloud;
    cloud.moveTo(5.25, 16.25);
    cloud.cubicTo(0.75, 16.25, 0.5, 10.25, 4.5, 9.75);
    cloud.cubicTo(4.25, 3.25, 12.75, 2, 14, 7.25);
    cloud.cubicTo(20.25, 7, 20.25, 16.25, 14.75, 16.25);
    cloud.closeSubpath();
    painter.drawPath(cloud);
    // Half a turn each, with a head where it ends.
    const QPointF middle(9.9, 11.5);
    constexpr double radius = 2.6;
    const QRectF circle(middle.x() - radius, middle.y() - radius, 2 * radius, 2 * radius);
    constexpr int unitsPerDegree = 16;
    stroke(painter, color, 1.1);
    painter.drawArc(circle, 20 * unitsPerDegree, 130 * unitsPerDegree);
    painter.drawArc(circle, 200 * unitsPerDegree, 130 * unitsPerDegree);
    fill(painter, color);
    for (const double turned : {0.0, 180.0}) {
        painter.save();
        painter.translate(middle);
        painter.rotate(turned);
        painter.drawPolygon(
            std::array{QPointF(radius - 1.5, -0.9), QPointF(radius + 1.4, -0.9), QPointF(radius, 1)}
                .data(),
            3);
        painter.restore();
    }
}

struct Drawing {
    std::string_view name;
    Draw draw;
};

constexpr std::array<Drawing, 16> drawings{
    {{"gearshape", gear},
     {"rectangle.split.2x2", splitRectangle},
     {"display", display},
     {"info.circle", info},
     {"plus", plus},
     {"minus", minus},
     {"xmark", cross},
     {"exclamationmark.triangle", warning},
     {"exclamationmark.triangle.fill", filledWarning},
     {"checkmark.circle.fill", filledCheckmark},
     {"chevron.down", chevron},
     {"chevron.right", chevronToTheRight},
     {"sparkles.rectangle.stack", sparkles},
     {"keyboard", keyboard},
     {"arrow.up.left.and.arrow.down.right", outwardArrows},
     {"arrow.triangle.2.circlepath.icloud", cloudWithArrows}}};

Draw drawingOf(std::string_view name) {
    const auto* const found =
        std::find_if(drawings.begin(), drawings.end(),
                     [name](const Drawing& each) { return each.name == name; });
    return found != drawings.end() ? found->draw : nullptr;
}

class Engine final : public QIconEngine {
public:
    Engine(Draw draw, const QColor& color, const QColor& selected)
        : draw_(draw), color_(color), selected_(selected) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        const double scale = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, scaledPixmap(rect.size() * scale, mode, state, scale));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return scaledPixmap(size, mode, state, 1);
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/,
                         qreal scale) override {
        // `size` is in device pixels already.
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        painter.setRenderHint(QPainter::Antialiasing);
        const double unit = std::min(size.width(), size.height()) / side;
        painter.translate((size.width() - unit * side) / 2, (size.height() - unit * side) / 2);
        painter.scale(unit, unit);
        QColor color = mode == QIcon::Selected ? selected_ : color_;
        if (mode == QIcon::Disabled) {
            color.setAlphaF(0.4F);
        }
        draw_(painter, color);
        painter.end();
        result.setDevicePixelRatio(scale);
        return result;
    }

    QIconEngine* clone() const override { return new Engine(draw_, color_, selected_); }

private:
    Draw draw_;
    QColor color_;
    QColor selected_;
};

}  // namespace

QIcon SymbolIcon::of(std::string_view name, const QColor& color) { return of(name, color, color); }

QIcon SymbolIcon::of(std::string_view name, const QColor& color, const QColor& selected) {
    const Draw draw = drawingOf(name);
    return draw != nullptr ? QIcon(new Engine(draw, color, selected)) : QIcon();
}

bool SymbolIcon::isKnown(std::string_view name) { return drawingOf(name) != nullptr; }

QPixmap SymbolIcon::pixmap(std::string_view name, const QColor& color, int pixels, double scale) {
    return of(name, color).pixmap(QSize(pixels, pixels), scale);
}

void SymbolIcon::drawChoiceArrow(QWidget& control) {
    constexpr int arrowSide = 12;
    QPainter painter(&control);
    of("chevron.down", WidgetColors::secondaryLabel())
        .paint(&painter, QRect(control.width() - choiceArrowRoom,
                               (control.height() - arrowSide) / 2, arrowSide, arrowSide));
}

}  // namespace lumatile
