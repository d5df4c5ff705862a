#pragma once

#include <QString>

#include <string_view>

namespace lumatile {

/// A text of a catalogue, as the toolkit takes it.
inline QString viewText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// A text for a button, a menu or a label with a buddy, where the toolkit would take an ampersand
/// for the mark of a mnemonic.
inline QString withoutMnemonic(QString text) { return text.replace(u'&', QLatin1String("&&")); }

}  // namespace lumatile
