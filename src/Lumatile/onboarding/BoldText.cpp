#include "Lumatile/onboarding/BoldText.h"

#include <QStringList>

namespace lumatile {

BoldText BoldText::of(const QString& marked) {
    BoldText result;
    bool isBold = false;
    for (const QString& part : marked.split(QStringLiteral("**"))) {
        const QString escaped = part.toHtmlEscaped();
        result.rich += isBold ? QStringLiteral("<b>%1</b>").arg(escaped) : escaped;
        result.plain += part;
        isBold = !isBold;
    }
    return result;
}

BoldText BoldText::with(const QString& first, const QString& second) const {
    return {rich.arg(first.toHtmlEscaped(), second.toHtmlEscaped()), plain.arg(first, second)};
}

}  // namespace lumatile
