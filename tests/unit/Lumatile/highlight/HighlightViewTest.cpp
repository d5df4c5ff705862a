#include "Lumatile/highlight/HighlightView.h"

#include <QBitmap>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "tests/support/HighlightReference.h"

namespace lumatile {
namespace {

using namespace reference;

// --- What the view draws ---

struct Case {
    const char* name;
    int width, height;  // Points.
    Size pitch;
};

class HighlightViewTest : public testing::TestWithParam<std::tuple<Case, double>> {
protected:
    static constexpr QRgb light = 0xffe8edf2;
    static constexpr QRgb dark = 0xff181c24;

    const Case& tested() const { return std::get<0>(GetParam()); }
    double scale() const { return std::get<1>(GetParam()); }

    QImage render(QRgb background, const QRectF& place = {}) const {
        HighlightView view;
        view.setAttribute(Qt::WA_TranslucentBackground);
        view.resize(tested().width, tested().height);
        view.cellPitch = tested().pitch;
        view.place = place;
        QImage image(QSize(static_cast<int>(std::lround(tested().width * scale())),
                           static_cast<int>(std::lround(tested().height * scale()))),
                     QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale());
        image.fill(background);
        QPainter painter(&image);
        view.render(&painter, {}, {}, QWidget::DrawChildren);
        painter.end();
        return image;
    }

    void compare(const QImage& image, QRgb background, const Drawing& drawing) const {
        // Four layers, each rounded to whole channel values.
        constexpr double plainTolerance = 2;
        // On edges the toolkit and the samples count coverage differently.
        constexpr double edgeTolerance = 20;
        double worstPlain = 0;
        double worstEdge = 0;
        double edgeSum = 0;
        int edges = 0;
        std::string where;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const auto covered = drawing.coverage(x, y, scale());
                const Color expected =
                    Drawing::color(covered, {static_cast<double>(qRed(background)),
                                             static_cast<double>(qGreen(background)),
                                             static_cast<double>(qBlue(background))});
                const QRgb pixel = image.pixel(x, y);
                const double difference = std::max({std::abs(qRed(pixel) - expected[0]),
                                                    std::abs(qGreen(pixel) - expected[1]),
                                                    std::abs(qBlue(pixel) - expected[2])});
                if (!covered.isEdge) {
                    worstPlain = std::max(worstPlain, difference);
                } else {
                    if (difference > worstEdge) {
                        where = std::to_string(x) + ", " + std::to_string(y);
                    }
                    worstEdge = std::max(worstEdge, difference);
                    edgeSum += difference;
                    ++edges;
                }
            }
        }
        EXPECT_LE(worstPlain, plainTolerance);
        EXPECT_LE(worstEdge, edgeTolerance) << "at " << where;
        ASSERT_GT(edges, 0);
        EXPECT_LE(edgeSum / edges, 4) << "mean over the edges";
        RecordProperty("worstEdge", std::to_string(worstEdge));
    }

    Box whole() const {
        return {0, 0, static_cast<double>(tested().width), static_cast<double>(tested().height)};
    }
};

TEST_P(HighlightViewTest, drawsTheEightStepsOnALightBackground) {
    compare(render(light), light, {whole(), tested().pitch});
}

TEST_P(HighlightViewTest, drawsTheEightStepsOnADarkBackground) {
    compare(render(dark), dark, {whole(), tested().pitch});
}

TEST_P(HighlightViewTest, drawsThemIntoAPlaceWithinTheView) {
    const Box place = {1 / scale(), 2 / scale(), tested().width - 1.0, tested().height - 2.0};
    compare(
        render(light, QRectF(QPointF(place.left, place.top), QPointF(place.right, place.bottom))),
        light, {place, tested().pitch});
}

INSTANTIATE_TEST_SUITE_P(
    Drawings, HighlightViewTest,
    testing::Combine(testing::Values(Case{"landscape", 242, 136, {80, 90}},
                                     Case{"portrait", 140, 242, {90, 80}},
                                     Case{"fractions", 172, 124, {56.916666, 61.333333}},
                                     Case{"initial", 120, 80, {40, 40}},
                                     Case{"tiny", 40, 24, {6, 4}}),
                     testing::Values(1.0, 1.5, 2.0)),
    [](const auto& tested) {
        return std::string(std::get<0>(tested.param).name) +
               std::to_string(static_cast<int>(std::get<1>(tested.param) * 10));
    });

// --- What must not go wrong ---

QImage drawn(HighlightView& view) {
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    view.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

TEST(HighlightView, beginsWithCellsOfForty) {
    const HighlightView view;
    EXPECT_EQ(view.cellPitch, (Size{40, 40}));
}

TEST(HighlightView, pitchesThatAreNoneDrawNoMarks) {
    HighlightView view;
    view.resize(300, 200);
    view.cellPitch = {1e9, 1e9};
    const QImage without = drawn(view);
    for (const Size& pitch : {Size{0, 0}, Size{-5, 10}, Size{std::nan(""), 10},
                              Size{10, std::nan("")}, Size{1e-9, 1e-9}, Size{1e-300, 40}}) {
        view.cellPitch = pitch;
        EXPECT_EQ(drawn(view), without) << pitch.width << " x " << pitch.height;
    }
}

TEST(HighlightView, aPlaceSmallerThanThePanelsInsetStaysEmpty) {
    HighlightView view;
    view.resize(6, 300);
    QImage image = drawn(view);
    QImage empty(image.size(), image.format());
    empty.fill(Qt::transparent);
    EXPECT_EQ(image, empty);
    view.isSolid = true;
    EXPECT_FALSE(view.shape().isEmpty()) << "an empty shape would mean no shape at all";
}

TEST(HighlightView, aPartOfItIsDrawnAsInTheWhole) {
    for (const bool isSolid : {false, true}) {
        HighlightView view;
        view.resize(480, 270);
        view.cellPitch = {56.916666, 61.333333};
        view.isSolid = isSolid;
        const QImage whole = drawn(view);
        // A pixel, as for a step of the fade; within a mark, over the edges of two, the band.
        for (const QRect& part : {QRect(0, 0, 1, 1), QRect(20, 20, 9, 9), QRect(70, 30, 60, 80),
                                  QRect(100, 0, 40, 20), QRect(400, 200, 80, 70)}) {
            QImage image(view.size(), whole.format());
            image.fill(Qt::transparent);
            view.render(&image, part.topLeft(), part, QWidget::DrawChildren);
            EXPECT_EQ(image.copy(part), whole.copy(part)) << part.x() << ", " << part.y();
        }
    }
}

// --- Without translucency ---

TEST(HighlightView, theSolidFormIsOpaqueAndItsShapeSeeThroughInside) {
    HighlightView view;
    view.resize(480, 270);
    view.cellPitch = {80, 90};
    view.isSolid = true;
    const QImage image = drawn(view);
    const QRegion shape = view.shape();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ASSERT_EQ(qAlpha(image.pixel(x, y)), 255) << x << ", " << y;
        }
    }
    EXPECT_TRUE(shape.contains(QPoint(3, 100))) << "outline";
    EXPECT_TRUE(shape.contains(QPoint(240, 7))) << "band";
    EXPECT_TRUE(shape.contains(QPoint(21, 45))) << "the first mark";
    EXPECT_TRUE(shape.contains(QPoint(458, 225))) << "the last mark";
    EXPECT_FALSE(shape.contains(QPoint(40, 45))) << "inside a mark";
    EXPECT_FALSE(shape.contains(QPoint(80, 90))) << "between the marks";
    EXPECT_FALSE(shape.contains(QPoint(0, 0))) << "the corner";
    EXPECT_EQ(image.pixel(3, 100), qRgb(239, 235, 227));
    EXPECT_EQ(image.pixel(240, 7), qRgb(255, 91, 31));
    // Most of what lies below is seen.
    int covered = 0;
    for (const QRect& rect : shape) {
        covered += rect.width() * rect.height();
    }
    EXPECT_LT(covered, 480 * 270 * 0.15);
}

/// The shape drawn whole, which is what it is put together from parts to save.
QRegion drawnShape(const QSize& size, const Box& place, const Size& pitch) {
    const QRectF panel(place.left + 3, place.top + 3, place.right - place.left - 6,
                       place.bottom - place.top - 6);
    const auto path = [&](double outset, double radius) {
        QPainterPath result;
        result.addRoundedRect(panel.adjusted(-outset, -outset, outset, outset), radius, radius);
        return result;
    };
    QBitmap bitmap(size);
    bitmap.clear();
    QPainter painter(&bitmap);
    painter.setClipPath(path(0, 8));
    const double side = std::min(pitch.width, pitch.height) / 2;
    for (double y = (pitch.height - side) / 2; y < panel.bottom(); y += pitch.height) {
        for (double x = (pitch.width - side) / 2; x < panel.right(); x += pitch.width) {
            const int left = qRound(place.left + x);
            const int top = qRound(place.top + y);
            const QRect mark(left, top, qRound(place.left + x + side) - left,
                             qRound(place.top + y + side) - top);
            painter.fillRect(mark, Qt::color1);
            painter.fillRect(mark.adjusted(2, 2, -2, -2), Qt::color0);
        }
    }
    painter.fillRect(QRectF(panel.left(), panel.top(), panel.width(), 6), Qt::color1);
    painter.setClipping(false);
    QPainterPath ring = path(3, 11);
    ring.addPath(path(-3, 5));
    painter.fillPath(ring, Qt::color1);
    painter.end();
    return {bitmap};
}

TEST(HighlightView, theShapeIsWhatDrawingTheWholeWouldGive) {
    struct Form {
        QSize size;
        Size pitch;
    };
    for (const Form& form : {Form{{480, 270}, {80, 90}}, Form{{960, 1080}, {80, 90}},
                             Form{{455, 307}, {56.916666, 61.333333}}, Form{{300, 90}, {40, 40}}}) {
        HighlightView view;
        view.resize(form.size);
        view.cellPitch = form.pitch;
        view.isSolid = true;
        const QRegion expected = drawnShape(
            form.size,
            {0, 0, static_cast<double>(form.size.width()), static_cast<double>(form.size.height())},
            form.pitch);
        EXPECT_TRUE(view.shape().xored(expected).isEmpty()) << form.size.width();
        EXPECT_FALSE(expected.isEmpty());
    }
}

TEST(HighlightView, marksThatAreOnlyBorderAreWhole) {
    HighlightView view;
    view.resize(120, 80);
    view.cellPitch = {6, 4};
    view.isSolid = true;
    const QRegion shape = view.shape();
    EXPECT_TRUE(shape.contains(QPoint(38, 41))) << "of two by two pixels";
    EXPECT_TRUE(shape.contains(QPoint(39, 42)));
    EXPECT_FALSE(shape.contains(QPoint(41, 41)));
}

TEST(HighlightView, theShapeOfAScreenHasFewRectangles) {
    HighlightView view;
    view.resize(1920, 1080);
    view.cellPitch = {80, 90};
    view.isSolid = true;
    // Two for each mark beside the inside, and one above and one below.
    EXPECT_LT(view.shape().rectCount(), 24 * 12 * 4 + 200);
}

}  // namespace
}  // namespace lumatile
