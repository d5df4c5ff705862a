#include "Lumatile/HighlightView.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

namespace lumatile {
namespace {

// --- The eight steps once more, pixel by pixel, from nothing but their numbers ---

struct Place {
    double x, y;
};

struct Box {
    double left, top, right, bottom;

    Box inset(double by) const { return {left + by, top + by, right - by, bottom - by}; }

    /// Whether the box, with round corners, holds the place.
    bool holds(const Place& place, double radius) const {
        if (place.x < left || place.x >= right || place.y < top || place.y >= bottom) {
            return false;
        }
        radius = std::min({radius, (right - left) / 2, (bottom - top) / 2});
        const double x = std::max({left + radius - place.x, place.x - (right - radius), 0.0});
        const double y = std::max({top + radius - place.y, place.y - (bottom - radius), 0.0});
        return x * x + y * y <= radius * radius;
    }
};

using Color = std::array<double, 3>;  // Red, green, blue; 0 to 255.

constexpr Color black{0, 0, 0};
constexpr Color tint{239, 235, 227};
constexpr Color accent{255, 91, 31};

struct Drawing {
    Box bounds;
    Size pitch;

    Box panel() const { return bounds.inset(3); }
    bool inPanel(const Place& place) const { return panel().holds(place, 8); }

    /// A mark is a square of half the shorter side, in the middle of its cell; the cells begin
    /// where the place does.
    bool inMark(const Place& place) const {
        const double side = std::min(pitch.width, pitch.height) / 2;
        const double x = std::fmod(place.x - bounds.left, pitch.width) - pitch.width / 2;
        const double y = std::fmod(place.y - bounds.top, pitch.height) - pitch.height / 2;
        return Box{-side / 2, -side / 2, side / 2, side / 2}.holds({x, y}, 4);
    }
    bool inBand(const Place& place) const { return place.y < panel().top + 6; }
    bool inOutline(const Place& place) const {
        return panel().inset(-1).holds(place, 9) && !panel().inset(1).holds(place, 7);
    }

    /// How much of a pixel each of the shapes covers.
    struct Coverage {
        double panel = 0, mark = 0, band = 0, outline = 0;
        bool isEdge = false;  ///< Some shape ends in the pixel or next to it.

        bool operator==(const Coverage&) const = default;
    };

    Coverage at(const Place& place) const {
        const bool inside = inPanel(place);
        return {inside ? 1.0 : 0.0, inside && inMark(place) ? 1.0 : 0.0,
                inside && inBand(place) ? 1.0 : 0.0, inOutline(place) ? 1.0 : 0.0};
    }

    Coverage coverage(int x, int y, double scale) const {
        const auto in = [&](double dx, double dy) {
            return at({(x + dx) / scale, (y + dy) / scale});
        };
        // No shape is narrower than these points are apart.
        const Coverage middle = in(0.5, 0.5);
        if (middle == in(-0.2, -0.2) && middle == in(1.2, -0.2) && middle == in(-0.2, 1.2) &&
            middle == in(1.2, 1.2)) {
            return middle;
        }
        constexpr int samples = 16;
        constexpr double share = 1.0 / (samples * samples);
        Coverage result;
        result.isEdge = true;
        for (int i = 0; i < samples; ++i) {
            for (int j = 0; j < samples; ++j) {
                const Coverage sample = in((i + 0.5) / samples, (j + 0.5) / samples);
                result.panel += sample.panel * share;
                result.mark += sample.mark * share;
                result.band += sample.band * share;
                result.outline += sample.outline * share;
            }
        }
        return result;
    }

    static Color over(const Color& color, double alpha, const Color& below) {
        Color result{};
        for (std::size_t i = 0; i < result.size(); ++i) {
            result[i] = color[i] * alpha + below[i] * (1 - alpha);
        }
        return result;
    }

    static Color color(const Coverage& covered, Color below) {
        below = over(black, 0.45 * covered.panel, below);
        below = over(tint, 0.07 * covered.panel, below);
        below = over(tint, 0.14 * covered.mark, below);
        below = over(accent, covered.band, below);
        return over(tint, 0.9 * covered.outline, below);
    }
};

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
        // On edges the toolkit and the samples count coverage differently, and the
        // toolkit clips with whole pixels; the outline covers the clip's edge.
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
    EXPECT_TRUE(shape.contains(QPoint(40, 45))) << "the first mark";
    EXPECT_TRUE(shape.contains(QPoint(440, 225))) << "the last mark";
    EXPECT_FALSE(shape.contains(QPoint(80, 90))) << "between the marks";
    EXPECT_FALSE(shape.contains(QPoint(0, 0))) << "the corner";
    EXPECT_EQ(image.pixel(3, 100), qRgb(239, 235, 227));
    EXPECT_EQ(image.pixel(240, 7), qRgb(255, 91, 31));
    // Most of what lies below is seen.
    int covered = 0;
    for (const QRect& rect : shape) {
        covered += rect.width() * rect.height();
    }
    EXPECT_LT(covered, 480 * 270 * 0.4);
    EXPECT_GT(covered, 480 * 270 * 0.2);
}

}  // namespace
}  // namespace lumatile
