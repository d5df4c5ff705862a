#include "platform/qt/KeySequence.h"

#include <QString>

#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace lumatile {

namespace {

constexpr std::array<std::pair<std::string_view, Qt::Key>, 14> glyphs{{
    {"↩", Qt::Key_Return},
    {"⇥", Qt::Key_Tab},
    {"␣", Qt::Key_Space},
    {"⌫", Qt::Key_Backspace},
    {"⎋", Qt::Key_Escape},
    {"⌦", Qt::Key_Delete},
    {"←", Qt::Key_Left},
    {"→", Qt::Key_Right},
    {"↓", Qt::Key_Down},
    {"↑", Qt::Key_Up},
    {"↖", Qt::Key_Home},
    {"↘", Qt::Key_End},
    {"⇞", Qt::Key_PageUp},
    {"⇟", Qt::Key_PageDown},
}};

std::optional<Qt::Key> keyOf(const std::string& text) {
    for (const auto& [glyph, key] : glyphs) {
        if (glyph == text) {
            return key;
        }
    }
    const QString characters = QString::fromStdString(text).toUpper();
    if (characters.size() > 1) {
        const QKeySequence named = QKeySequence::fromString(characters);
        return named.count() == 1 && named[0].key() != Qt::Key_unknown
                   ? std::optional(named[0].key())
                   : std::nullopt;
    }
    // The toolkit numbers the printable keys by what stands on them, letters in upper case.
    if (characters.size() != 1 || characters.front().isSpace() || !characters.front().isPrint()) {
        return std::nullopt;
    }
    return static_cast<Qt::Key>(characters.front().unicode());
}

std::string modifierGlyphs(const KeyEquivalent& keys) {
    std::string text;
    for (const auto& [isHeld, glyph] : {std::pair(keys.control, "⌃"), std::pair(keys.option, "⌥"),
                                        std::pair(keys.shift, "⇧"), std::pair(keys.command, "⌘")}) {
        if (isHeld) {
            text += glyph;
        }
    }
    return text;
}

/// As `ShortcutFormatter` has it.
std::string usLegend(const KeyEquivalent& keys) {
    return QString::fromStdString(keys.key).toUpper().toStdString();
}

/// Empty where the key has a name, or none in this layout either.
std::string namelessLegend(const KeyEquivalent& keys, const KeyTexts& texts) {
    return keys.namelessKeyCode && texts.namelessLegend
               ? texts.namelessLegend(*keys.namelessKeyCode)
               : std::string();
}

}  // namespace

std::string writtenKeys(const KeyEquivalent& keys, const KeyTexts& texts) {
    const std::string nameless = namelessLegend(keys, texts);
    return nameless.empty() ? texts.written(modifierGlyphs(keys) + usLegend(keys))
                            : texts.written(modifierGlyphs(keys)) + nameless;
}

QKeySequence keySequenceOf(const KeyEquivalent& keys, const KeyTexts& texts) {
    std::string legend = keys.key;
    if (keys.reach == KeyEquivalent::Reach::desktop) {
        legend = namelessLegend(keys, texts);
        if (legend.empty()) {
            legend = texts.legend ? texts.legend(usLegend(keys)) : keys.key;
        }
    }
    const std::optional<Qt::Key> key = keyOf(legend);
    if (!key) {
        return {};
    }
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ControlModifier, keys.control);
    modifiers.setFlag(Qt::AltModifier, keys.option);
    modifiers.setFlag(Qt::ShiftModifier, keys.shift);
    if (keys.command) {
        modifiers |=
            keys.reach == KeyEquivalent::Reach::desktop ? Qt::MetaModifier : Qt::ControlModifier;
    }
    return {QKeyCombination(modifiers, *key)};
}

}  // namespace lumatile
