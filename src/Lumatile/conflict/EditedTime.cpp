#include "Lumatile/conflict/EditedTime.h"

#include <QDate>
#include <QDateTime>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

#include "Lumatile/widgets/LocaleTime.h"

namespace lumatile {

namespace {

// The first second of year 1 and the last of year 9999 with a day to spare, so that no time zone
// leads out of what the calendar of the toolkit can write.
constexpr double earliest = -62135510400.0;
constexpr double latest = 253402214400.0;

/// The toolkit knows a long and a short date only. The medium one is the long one without the day
/// of the week, and with the month's short name.
QString mediumDateFormat(const QLocale& locale) {
    QString format = locale.dateFormat(QLocale::LongFormat);
    // With what separates it from the rest, before or behind.
    static const QRegularExpression dayOfWeek(
        QStringLiteral("^d{3,4}(?:'[^']*'|[\\s,.،、])*|(?:'[^']*'|[\\s,،、])*\\bd{3,4}$|d{3,4}"));
    format.remove(dayOfWeek);
    static const QRegularExpression longMonth(QStringLiteral("M{4}"));
    format.replace(longMonth, QStringLiteral("MMM"));
    return format.trimmed();
}

}  // namespace

QString editedTime(double timestamp, const QLocale& locale) {
    constexpr double perSecond = 1000;
    const double seconds = std::isnan(timestamp) ? 0 : std::clamp(timestamp, earliest, latest);
    const QDateTime moment = QDateTime::fromMSecsSinceEpoch(
        static_cast<qint64>(std::floor(seconds * perSecond)), Qt::LocalTime);
    return locale.toString(moment.date(), mediumDateFormat(locale)) + QStringLiteral(", ") +
           locale.toString(moment.time(), withoutSeconds(locale.timeFormat(QLocale::ShortFormat)));
}

}  // namespace lumatile
