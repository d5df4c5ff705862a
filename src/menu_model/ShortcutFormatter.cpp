#include "menu_model/ShortcutFormatter.h"

#include <array>
#include <unordered_map>
#include <utility>

#include "commands/Shortcut.h"

namespace lumatile::ShortcutFormatter {

namespace {

using KeyNames = std::unordered_map<std::uint32_t, std::string_view>;

const KeyNames& specialKeys() {
    static const KeyNames names{
        {36, "↩"},  {48, "⇥"},  {49, "␣"},  {51, "⌫"},  {53, "⎋"},  {117, "⌦"}, {123, "←"},
        {124, "→"}, {125, "↓"}, {126, "↑"}, {115, "↖"}, {119, "↘"}, {116, "⇞"}, {121, "⇟"},
    };
    return names;
}

const KeyNames& characterKeys() {
    static const KeyNames names{
        {0, "A"},   {1, "S"},  {2, "D"},  {3, "F"},  {4, "H"},  {5, "G"},  {6, "Z"},  {7, "X"},
        {8, "C"},   {9, "V"},  {11, "B"}, {12, "Q"}, {13, "W"}, {14, "E"}, {15, "R"}, {16, "Y"},
        {17, "T"},  {18, "1"}, {19, "2"}, {20, "3"}, {21, "4"}, {22, "6"}, {23, "5"}, {24, "="},
        {25, "9"},  {26, "7"}, {27, "-"}, {28, "8"}, {29, "0"}, {30, "]"}, {31, "O"}, {32, "U"},
        {33, "["},  {34, "I"}, {35, "P"}, {37, "L"}, {38, "J"}, {39, "'"}, {40, "K"}, {41, ";"},
        {42, "\\"}, {43, ","}, {44, "/"}, {45, "N"}, {46, "M"}, {47, "."}, {50, "`"},
    };
    return names;
}

constexpr std::array<std::pair<std::uint32_t, std::string_view>, 4> modifierGlyphs{{
    {ClassicModifier::control, "⌃"},
    {ClassicModifier::option, "⌥"},
    {ClassicModifier::shift, "⇧"},
    {ClassicModifier::command, "⌘"},
}};

}  // namespace

std::string_view keyName(std::uint32_t keyCode) {
    for (const KeyNames* names : {&specialKeys(), &characterKeys()}) {
        if (const auto found = names->find(keyCode); found != names->end()) {
            return found->second;
        }
    }
    return unknownKey;
}

std::string format(std::uint32_t keyCode, std::uint32_t modifiers) {
    std::string text;
    for (const auto& [bit, glyph] : modifierGlyphs) {
        if ((modifiers & bit) != 0) {
            text += glyph;
        }
    }
    return text.append(keyName(keyCode));
}

std::string keyEquivalent(std::uint32_t keyCode) {
    std::string name(keyName(keyCode));
    for (char& letter : name) {
        // Only the letters of the character keys have a lower case; glyphs are no ASCII.
        if (letter >= 'A' && letter <= 'Z') {
            letter = static_cast<char>(letter - 'A' + 'a');
        }
    }
    return name;
}

}  // namespace lumatile::ShortcutFormatter
