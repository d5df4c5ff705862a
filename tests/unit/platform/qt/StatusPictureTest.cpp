#include "platform/qt/StatusPicture.h"

#include "platform/qt/StatusDrawing.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QProcess>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <set>
#include <utility>

#include "tests/support/TemporaryFolder.h"

namespace lumatile {
namespace {

const StatusImage active{"MenuBarIcon", "Lumatile"};
const StatusImage paused{"MenuBarIconPaused", "Lumatile, protection off"};

QImage pixels(const StatusImage& image, int extent) {
    return statusPicture(image)
        .pixmap(extent, extent)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

/// How far the picture stands out from a bar of this colour: the largest difference of lightness.
int contrast(const QImage& picture, const QColor& bar) {
    int largest = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor over = picture.pixelColor(x, y);
            const int seen =
                (over.lightness() * over.alpha() + bar.lightness() * (255 - over.alpha())) / 255;
            largest = std::max(largest, std::abs(seen - bar.lightness()));
        }
    }
    return largest;
}

TEST(StatusPicture, hasEverySizeOfBars) {
    for (const StatusImage& image : {active, paused}) {
        for (const int extent : {16, 22, 24, 32, 48, 64}) {
            const QImage picture = pixels(image, extent);
            EXPECT_EQ(picture.size(), QSize(extent, extent)) << image.name;
            EXPECT_EQ(picture.pixelColor(extent - 1, extent - 1).alpha(), 0) << extent;
        }
    }
}

TEST(StatusPicture, pausedLooksDifferent) {
    for (const int extent : {16, 22, 24, 32}) {
        EXPECT_NE(pixels(active, extent), pixels(paused, extent));
    }
}

TEST(StatusPicture, standsOutOnDarkAndOnLightBars) {
    constexpr int clearly = 100;
    for (const StatusImage& image : {active, paused}) {
        for (const QColor bar : {QColor(0, 0, 0), QColor(49, 54, 59), QColor(128, 128, 128),
                                 QColor(239, 240, 241), QColor(255, 255, 255)}) {
            EXPECT_GE(contrast(pixels(image, 22), bar), clearly) << bar.name().toStdString();
        }
    }
}

TEST(StatusPicture, straightEdgesLieOnWholePixels) {
    for (const int extent : {16, 22, 24, 32, 44, 48, 64}) {
        const QImage picture = pixels(active, extent);
        std::set<int> coverages;
        for (int y = 0; y < extent; ++y) {
            for (int x = 0; x < extent; ++x) {
                coverages.insert(picture.pixelColor(x, y).alpha());
            }
        }
        // Ink, rim, or nothing; an edge that falls between pixels would add shades.
        EXPECT_EQ(coverages.size(), 3U) << extent;
        EXPECT_TRUE(coverages.contains(0) && coverages.contains(255)) << extent;
    }
}

TEST(StatusPicture, aMissingPictureIsNone) {
    EXPECT_TRUE(statusPicture({"NoSuchIcon", "Lumatile"}).isNull());
    EXPECT_TRUE(statusPicture({"../MenuBarIcon", "Lumatile"}).isNull());
}

TEST(StatusPicture, isNamedOnlyWhereTheNameIsInstalled) {
    const TemporaryFolder folder;
    qputenv("XDG_DATA_HOME", folder.path().c_str());
    qputenv("XDG_DATA_DIRS", folder.path().c_str());
    EXPECT_EQ(statusPicture(active).name(), "");
    const QString icons =
        QString::fromStdString((folder / "icons/hicolor/symbolic/status").string());
    ASSERT_TRUE(QDir().mkpath(icons));
    for (const char* name : {"lumatile-symbolic", "lumatile-paused-symbolic"}) {
        ASSERT_TRUE(QFile::copy(":/status/MenuBarIcon-16.svg", icons + "/" + name + ".svg"));
    }
    EXPECT_EQ(statusPicture(active).name(), "lumatile-symbolic");
    EXPECT_EQ(statusPicture(paused).name(), "lumatile-paused-symbolic");
    // What is no template keeps its own colours, which the symbolic one would not.
    EXPECT_EQ(statusPicture({"MenuBarIcon", "", false}).name(), "");
    qunsetenv("XDG_DATA_HOME");
    qunsetenv("XDG_DATA_DIRS");
}

/// The largest difference of opacity of two pictures of one size.
int difference(const QImage& one, const QImage& other) {
    int largest = one.size() == other.size() ? 0 : 255;
    for (int y = 0; largest < 255 && y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            largest = std::max(
                largest, std::abs(one.pixelColor(x, y).alpha() - other.pixelColor(x, y).alpha()));
        }
    }
    return largest;
}

/// Where the build system installs the pictures to, and the theme that they belong to.
class InstalledPictures : public testing::Test {
protected:
    InstalledPictures() {
        QProcess install;
        install.start(QStringLiteral("cmake"),
                      {QStringLiteral("--install"), QStringLiteral(LUMATILE_BUILD),
                       QStringLiteral("--prefix"), QString::fromStdString(prefix_.path().string()),
                       QStringLiteral("--component"), QStringLiteral("pictures")});
        EXPECT_TRUE(install.waitForFinished());
        EXPECT_EQ(install.exitCode(), 0) << install.readAllStandardError().toStdString();
        QIcon::setThemeSearchPaths({QString::fromStdString((prefix_ / "share/icons").string()),
                                    QStringLiteral("/usr/share/icons")});
        QIcon::setThemeName(QStringLiteral("hicolor"));
    }

    TemporaryFolder prefix_;
};

TEST(StatusDrawing, isWhatAReaderOfSuchFilesDraws) {
    for (const char* const name : {"MenuBarIcon", "MenuBarIconPaused"}) {
        for (const int extent : {16, 22, 24, 32}) {
            const QString path =
                QStringLiteral(":/status/%1-%2.svg").arg(QLatin1String(name)).arg(extent);
            const QImage drawn = StatusDrawing::read(path, extent);
            ASSERT_EQ(drawn.size(), QSize(extent, extent));
            EXPECT_LT(difference(drawn, QImage(path)), 3) << name << " at " << extent;
        }
    }
}

TEST(StatusDrawing, anythingElseIsNone) {
    const TemporaryFolder folder;
    const QString path = QString::fromStdString((folder / "drawing.svg").string());
    for (const char* const text :
         {"", "<svg width=\"16\"/>", "<svg width=\"16\"><path d=\"\"/></svg>",
          "<svg width=\"16\"><path d=\"M1 2C1 2 3 4 5 6z\"/></svg>",
          "<svg width=\"16\"><path d=\"M1 2L3\"/></svg>",
          "<svg width=\"0\"><path d=\"M1 2L3 4L5 6z\"/></svg>",
          "<svg><path d=\"M1 2L3 4L5 6z\"/></svg>"}) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        EXPECT_TRUE(StatusDrawing::read(path, 16).isNull()) << text;
    }
    EXPECT_TRUE(StatusDrawing::read(QString::fromStdString((folder / "missing.svg").string()), 16)
                    .isNull());
}

TEST_F(InstalledPictures, areFoundInTheTheme) {
    const std::array names{std::pair("lumatile-symbolic", "MenuBarIcon"),
                           std::pair("lumatile-paused-symbolic", "MenuBarIconPaused")};
    for (const auto& [name, drawing] : names) {
        const QIcon found = QIcon::fromTheme(QString::fromLatin1(name));
        ASSERT_FALSE(found.isNull()) << name;
        // A theme's folders reach two pixels up and down, and the first that reaches is taken: at
        // 24 that is the one of 22.
        EXPECT_EQ(found.pixmap(24, 24).size(), QSize(24, 24));
        for (const int extent : {16, 22, 32}) {
            const QImage drawn(
                QStringLiteral(":/status/%1-%2.svg").arg(QLatin1String(drawing)).arg(extent));
            ASSERT_EQ(drawn.size(), QSize(extent, extent));
            // Which drawing it is counts, not how it is blended at its edges.
            EXPECT_LT(difference(found.pixmap(extent, extent).toImage(), drawn), 8)
                << name << " at " << extent;
        }
    }
}

}  // namespace
}  // namespace lumatile
