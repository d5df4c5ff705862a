#include "platform/qt/StatusPicture.h"

#include <QFile>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QStandardPaths>
#include <QString>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include "platform/qt/StatusDrawing.h"

namespace lumatile {

namespace {

// The sizes that bars have; each has a drawing of its own, on whole pixels.
constexpr std::array<int, 4> drawnSizes{16, 22, 24, 32};

// Light enough for dark bars; the rim carries it on light ones.
constexpr QColor inkColor(245, 245, 245);
constexpr QColor rimColor(0, 0, 0, 150);

QString drawingPath(const QString& name, int size) {
    return QStringLiteral(":/status/%1-%2.svg").arg(name).arg(size);
}

/// The name under which the picture is installed; empty where it is not, as in a build folder.
QString installedName(const QString& name) {
    const QString themed =
        (name == QLatin1String("MenuBarIcon") ? QStringLiteral("lumatile")
                                              : QStringLiteral("lumatile-paused")) +
        QStringLiteral("-symbolic");
    const QString file = QStringLiteral("icons/hicolor/symbolic/status/%1.svg").arg(themed);
    return QStandardPaths::locate(QStandardPaths::GenericDataLocation, file).isEmpty() ? QString()
                                                                                       : themed;
}

/// The largest drawing that fills the extent in whole steps, which keeps its edges on whole pixels;
/// else the largest that fits, since one that is shrunk loses its lines.
int drawnSizeFor(int extent) {
    for (auto size = drawnSizes.rbegin(); size != drawnSizes.rend(); ++size) {
        if (extent % *size == 0) {
            return *size;
        }
    }
    const auto* const larger = std::upper_bound(drawnSizes.begin(), drawnSizes.end(), extent);
    return larger == drawnSizes.begin() ? drawnSizes.front() : *std::prev(larger);
}

QImage shape(const QString& name, int extent) {
    return StatusDrawing::read(drawingPath(name, drawnSizeFor(extent)), extent);
}

QImage tinted(QImage image, const QColor& color) {
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

/// The picture's pixels, and around them a rim as wide as the thinnest line.
QImage outlined(const QImage& shape) {
    QImage result(shape.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    const int width = std::max(1, shape.width() / drawnSizes.front());
    const QImage rim = tinted(shape, QColor(rimColor.red(), rimColor.green(), rimColor.blue()));
    {
        QImage around(shape.size(), QImage::Format_ARGB32_Premultiplied);
        around.fill(Qt::transparent);
        QPainter painter(&around);
        for (int dy = -width; dy <= width; ++dy) {
            for (int dx = -width; dx <= width; ++dx) {
                painter.drawImage(dx, dy, rim);
            }
        }
        painter.end();
        QPainter onto(&result);
        onto.setOpacity(rimColor.alphaF());
        onto.drawImage(0, 0, around);
    }
    QPainter painter(&result);
    painter.drawImage(0, 0, tinted(shape, inkColor));
    return result;
}

class StatusPictureEngine final : public QIconEngine {
public:
    StatusPictureEngine(QString name, bool isTemplate)
        : name_(std::move(name)),
          installedName_(isTemplate ? installedName(name_) : QString()),
          isTemplate_(isTemplate) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        const QSize size = rect.size() * painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, pixmap(size, mode, state));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        const int extent = std::min(size.width(), size.height());
        if (extent <= 0) {
            return {};
        }
        const QImage drawn = shape(name_, extent);
        return QPixmap::fromImage(isTemplate_ ? outlined(drawn) : drawn);
    }

    QSize actualSize(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        const int extent = std::min(size.width(), size.height());
        return {extent, extent};
    }

    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        QList<QSize> sizes;
        for (const int extent : drawnSizes) {
            sizes.emplace_back(extent, extent);
        }
        return sizes;
    }

    QString iconName() override { return installedName_; }
    QString key() const override { return QStringLiteral("lumatile-status"); }
    QIconEngine* clone() const override { return new StatusPictureEngine(*this); }

private:
    QString name_;
    QString installedName_;
    bool isTemplate_;
};

}  // namespace

QIcon statusPicture(const StatusImage& image) {
    const QString name = QString::fromStdString(image.name);
    if (!QFile::exists(drawingPath(name, drawnSizes.front()))) {
        return {};
    }
    return QIcon(new StatusPictureEngine(name, image.isTemplate));
}

}  // namespace lumatile
