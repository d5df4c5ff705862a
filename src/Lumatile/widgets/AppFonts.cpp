#include "Lumatile/widgets/AppFonts.h"

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QFontInfo>
#include <QString>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

// The linker leaves out what a static library holds but nobody names. Outside any namespace, as the
// macro has it.
static void keepResources() {
    Q_INIT_RESOURCE(fonts);
    Q_INIT_RESOURCE(licence);
}

namespace lumatile {

namespace {

constexpr std::array resources{"ibm-plex-mono-400",  "ibm-plex-mono-500",  "hanken-grotesk-400",
                               "hanken-grotesk-500", "hanken-grotesk-600", "hanken-grotesk-700"};

constexpr const char* textFamily = "Hanken Grotesk";
constexpr const char* monospacedFamily = "IBM Plex Mono";

// Of the toolkit's font where the user has set none: ten points at 96 dots an inch.
constexpr double usualPixelSize = 40.0 / 3.0;

bool isKnown(const char* family) { return QFontDatabase::hasFamily(QString::fromLatin1(family)); }

QFont sized(QFont font, double points) {
    font.setPixelSize(
        std::max(1, static_cast<int>(std::lround(points * AppFonts::pixelsPerPoint()))));
    return font;
}

}  // namespace

void AppFonts::registerFonts() {
    static bool areRegistered = false;
    if (std::exchange(areRegistered, true)) {
        return;
    }
    keepResources();
    for (const char* name : resources) {
        const QString path = QStringLiteral(":/fonts/%1.woff2").arg(QLatin1String(name));
        if (QFile::exists(path)) {
            QFontDatabase::addApplicationFont(path);
        }
    }
}

QFont AppFonts::text(double points, QFont::Weight weight) {
    registerFonts();
    QFont font = QApplication::font();
    if (isKnown(textFamily)) {
        font.setFamilies({QString::fromLatin1(textFamily)});
    }
    font.setWeight(weight > QFont::DemiBold ? QFont::Bold
                   : weight < QFont::Medium ? QFont::Normal
                                            : weight);
    return sized(font, points);
}

QFont AppFonts::monospaced(double points) {
    registerFonts();
    QFont font = isKnown(monospacedFamily) ? QFont(QString::fromLatin1(monospacedFamily))
                                           : QFontDatabase::systemFont(QFontDatabase::FixedFont);
    return sized(font, points);
}

double AppFonts::pixelsPerPoint() {
    return std::max(1.0, QFontInfo(QApplication::font()).pixelSize() / usualPixelSize);
}

}  // namespace lumatile
