#include "platform/qt/StatusDrawing.h"

#include <QByteArray>
#include <QFile>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace lumatile {

namespace {

// Pictures have some hundred bytes.
constexpr qint64 longestFile = 4096;

/// The value of the attribute that comes first by this name; empty where there is none.
std::string_view attribute(std::string_view text, std::string_view opening) {
    const std::size_t begin = text.find(opening);
    if (begin == std::string_view::npos) {
        return {};
    }
    text.remove_prefix(begin + opening.size());
    return text.substr(0, text.find('"'));
}

/// Takes a number and the blanks before it off the text.
std::optional<double> takeNumber(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc()) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

/// Empty for anything but moves, lines and closings.
QPainterPath pathOf(std::string_view commands) {
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    while (!commands.empty()) {
        const char command = commands.front();
        commands.remove_prefix(1);
        if (command == 'z') {
            path.closeSubpath();
            continue;
        }
        const std::optional<double> x = takeNumber(commands);
        const std::optional<double> y = takeNumber(commands);
        if ((command != 'M' && command != 'L') || !x || !y) {
            return {};
        }
        if (command == 'M') {
            path.moveTo(*x, *y);
        } else {
            path.lineTo(*x, *y);
        }
    }
    return path;
}

}  // namespace

QImage StatusDrawing::read(const QString& path, int extent) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray bytes = file.read(longestFile);
    const std::string_view text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    std::string_view width = attribute(text, " width=\"");
    const std::optional<double> side = takeNumber(width);
    const QPainterPath drawing = pathOf(attribute(text, " d=\""));
    if (!side || *side <= 0 || drawing.isEmpty()) {
        return {};
    }
    QImage image(extent, extent, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(extent / *side, extent / *side);
    painter.fillPath(drawing, Qt::black);
    return image;
}

}  // namespace lumatile
