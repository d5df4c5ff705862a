#include "platform/keyboard/KeyTable.h"

#include <algorithm>
#include <array>

namespace lumatile {

namespace {

// In the order of the virtual key codes. Keys of one place on two kinds of keyboard share a row:
// help is where others have insert, clear is where others have num lock, and 10 is the key that
// only ISO keyboards have, right of the left shift key.
constexpr std::array<PhysicalKey, 101> table = {{
    {0, "AC01", 38, "A"},          {1, "AC02", 39, "S"},          {2, "AC03", 40, "D"},
    {3, "AC04", 41, "F"},          {4, "AC06", 43, "H"},          {5, "AC05", 42, "G"},
    {6, "AB01", 52, "Z"},          {7, "AB02", 53, "X"},          {8, "AB03", 54, "C"},
    {9, "AB04", 55, "V"},          {10, "LSGT", 94, "ISO"},       {11, "AB05", 56, "B"},
    {12, "AD01", 24, "Q"},         {13, "AD02", 25, "W"},         {14, "AD03", 26, "E"},
    {15, "AD04", 27, "R"},         {16, "AD06", 29, "Y"},         {17, "AD05", 28, "T"},
    {18, "AE01", 10, "1"},         {19, "AE02", 11, "2"},         {20, "AE03", 12, "3"},
    {21, "AE04", 13, "4"},         {22, "AE06", 15, "6"},         {23, "AE05", 14, "5"},
    {24, "AE12", 21, "="},         {25, "AE09", 18, "9"},         {26, "AE07", 16, "7"},
    {27, "AE11", 20, "-"},         {28, "AE08", 17, "8"},         {29, "AE10", 19, "0"},
    {30, "AD12", 35, "]"},         {31, "AD09", 32, "O"},         {32, "AD07", 30, "U"},
    {33, "AD11", 34, "["},         {34, "AD08", 31, "I"},         {35, "AD10", 33, "P"},
    {36, "RTRN", 36, "Return"},    {37, "AC09", 46, "L"},         {38, "AC07", 44, "J"},
    {39, "AC11", 48, "'"},         {40, "AC08", 45, "K"},         {41, "AC10", 47, ";"},
    {42, "BKSL", 51, "\\"},        {43, "AB08", 59, ","},         {44, "AB10", 61, "/"},
    {45, "AB06", 57, "N"},         {46, "AB07", 58, "M"},         {47, "AB09", 60, "."},
    {48, "TAB", 23, "Tab"},        {49, "SPCE", 65, "Space"},     {50, "TLDE", 49, "`"},
    {51, "BKSP", 22, "Backspace"}, {53, "ESC", 9, "Escape"},      {64, "FK17", 195, "F17"},
    {65, "KPDL", 91, "Keypad ."},  {67, "KPMU", 63, "Keypad *"},  {69, "KPAD", 86, "Keypad +"},
    {71, "NMLK", 77, "Clear"},     {75, "KPDV", 106, "Keypad /"}, {76, "KPEN", 104, "Keypad Enter"},
    {78, "KPSU", 82, "Keypad -"},  {79, "FK18", 196, "F18"},      {80, "FK19", 197, "F19"},
    {81, "KPEQ", 125, "Keypad ="}, {82, "KP0", 90, "Keypad 0"},   {83, "KP1", 87, "Keypad 1"},
    {84, "KP2", 88, "Keypad 2"},   {85, "KP3", 89, "Keypad 3"},   {86, "KP4", 83, "Keypad 4"},
    {87, "KP5", 84, "Keypad 5"},   {88, "KP6", 85, "Keypad 6"},   {89, "KP7", 79, "Keypad 7"},
    {90, "FK20", 198, "F20"},      {91, "KP8", 80, "Keypad 8"},   {92, "KP9", 81, "Keypad 9"},
    {96, "FK05", 71, "F5"},        {97, "FK06", 72, "F6"},        {98, "FK07", 73, "F7"},
    {99, "FK03", 69, "F3"},        {100, "FK08", 74, "F8"},       {101, "FK09", 75, "F9"},
    {103, "FK11", 95, "F11"},      {105, "FK13", 191, "F13"},     {106, "FK16", 194, "F16"},
    {107, "FK14", 192, "F14"},     {109, "FK10", 76, "F10"},      {111, "FK12", 96, "F12"},
    {113, "FK15", 193, "F15"},     {114, "INS", 118, "Insert"},   {115, "HOME", 110, "Home"},
    {116, "PGUP", 112, "Page Up"}, {117, "DELE", 119, "Delete"},  {118, "FK04", 70, "F4"},
    {119, "END", 115, "End"},      {120, "FK02", 68, "F2"},       {121, "PGDN", 117, "Page Down"},
    {122, "FK01", 67, "F1"},       {123, "LEFT", 113, "Left"},    {124, "RGHT", 114, "Right"},
    {125, "DOWN", 116, "Down"},    {126, "UP", 111, "Up"},
}};

}  // namespace

std::span<const PhysicalKey> KeyTable::keys() { return table; }

const PhysicalKey* KeyTable::withVirtualKeyCode(std::uint32_t virtualKeyCode) {
    const auto* const found = std::lower_bound(
        table.begin(), table.end(), virtualKeyCode,
        [](const PhysicalKey& key, std::uint32_t code) { return key.virtualKeyCode < code; });
    return found != table.end() && found->virtualKeyCode == virtualKeyCode ? found : nullptr;
}

const PhysicalKey* KeyTable::atPosition(std::string_view position) {
    const auto* const found =
        std::find_if(table.begin(), table.end(),
                     [position](const PhysicalKey& key) { return key.position == position; });
    return found != table.end() ? found : nullptr;
}

}  // namespace lumatile
