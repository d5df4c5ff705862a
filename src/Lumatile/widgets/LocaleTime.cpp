#include "Lumatile/widgets/LocaleTime.h"

#include <QRegularExpression>

namespace lumatile {

QString withoutSeconds(QString format) {
    // With what separates them from the minutes, and fractions behind them.
    static const QRegularExpression seconds(
        QStringLiteral("(?:'[^']*'|[\\s:.,])*\\bs{1,2}\\b(?:[.,]z+)?(?:'[^']*')?"));
    return format.remove(seconds);
}

}  // namespace lumatile
