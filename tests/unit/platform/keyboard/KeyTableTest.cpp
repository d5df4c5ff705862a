#include "platform/keyboard/KeyTable.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

namespace lumatile {
namespace {

// What is printed on an English keyboard, by virtual key code: the characters and special keys that
// shortcuts are shown with, the function keys and the keypad.
const std::map<std::uint32_t, std::string> expectedNames = {
    {0, "A"},           {1, "S"},          {2, "D"},         {3, "F"},         {4, "H"},
    {5, "G"},           {6, "Z"},          {7, "X"},         {8, "C"},         {9, "V"},
    {10, "ISO"},        {11, "B"},         {12, "Q"},        {13, "W"},        {14, "E"},
    {15, "R"},          {16, "Y"},         {17, "T"},        {18, "1"},        {19, "2"},
    {20, "3"},          {21, "4"},         {22, "6"},        {23, "5"},        {24, "="},
    {25, "9"},          {26, "7"},         {27, "-"},        {28, "8"},        {29, "0"},
    {30, "]"},          {31, "O"},         {32, "U"},        {33, "["},        {34, "I"},
    {35, "P"},          {36, "Return"},    {37, "L"},        {38, "J"},        {39, "'"},
    {40, "K"},          {41, ";"},         {42, "\\"},       {43, ","},        {44, "/"},
    {45, "N"},          {46, "M"},         {47, "."},        {48, "Tab"},      {49, "Space"},
    {50, "`"},          {51, "Backspace"}, {53, "Escape"},   {64, "F17"},      {65, "Keypad ."},
    {67, "Keypad *"},   {69, "Keypad +"},  {71, "Clear"},    {75, "Keypad /"}, {76, "Keypad Enter"},
    {78, "Keypad -"},   {79, "F18"},       {80, "F19"},      {81, "Keypad ="}, {82, "Keypad 0"},
    {83, "Keypad 1"},   {84, "Keypad 2"},  {85, "Keypad 3"}, {86, "Keypad 4"}, {87, "Keypad 5"},
    {88, "Keypad 6"},   {89, "Keypad 7"},  {90, "F20"},      {91, "Keypad 8"}, {92, "Keypad 9"},
    {96, "F5"},         {97, "F6"},        {98, "F7"},       {99, "F3"},       {100, "F8"},
    {101, "F9"},        {103, "F11"},      {105, "F13"},     {106, "F16"},     {107, "F14"},
    {109, "F10"},       {111, "F12"},      {113, "F15"},     {114, "Insert"},  {115, "Home"},
    {116, "Page Up"},   {117, "Delete"},   {118, "F4"},      {119, "End"},     {120, "F2"},
    {121, "Page Down"}, {122, "F1"},       {123, "Left"},    {124, "Right"},   {125, "Down"},
    {126, "Up"},
};

// The rows of the keyboard as they lie, so that a position can be told from its neighbours.
const std::map<std::string, std::string> expectedPositions = {
    {"`", "TLDE"},
    {"1", "AE01"},
    {"5", "AE05"},
    {"6", "AE06"},
    {"0", "AE10"},
    {"-", "AE11"},
    {"=", "AE12"},
    {"Backspace", "BKSP"},
    {"Tab", "TAB"},
    {"Q", "AD01"},
    {"T", "AD05"},
    {"Y", "AD06"},
    {"P", "AD10"},
    {"[", "AD11"},
    {"]", "AD12"},
    {"\\", "BKSL"},
    {"A", "AC01"},
    {"G", "AC05"},
    {"H", "AC06"},
    {"L", "AC09"},
    {";", "AC10"},
    {"'", "AC11"},
    {"Return", "RTRN"},
    {"ISO", "LSGT"},
    {"Z", "AB01"},
    {"B", "AB05"},
    {"N", "AB06"},
    {"/", "AB10"},
    {"Space", "SPCE"},
    {"Escape", "ESC"},
    {"Delete", "DELE"},
    {"Insert", "INS"},
    {"Home", "HOME"},
    {"End", "END"},
    {"Page Up", "PGUP"},
    {"Page Down", "PGDN"},
    {"Left", "LEFT"},
    {"Right", "RGHT"},
    {"Up", "UP"},
    {"Down", "DOWN"},
    {"Clear", "NMLK"},
    {"F1", "FK01"},
    {"F10", "FK10"},
    {"F20", "FK20"},
    {"Keypad 0", "KP0"},
    {"Keypad 9", "KP9"},
    {"Keypad Enter", "KPEN"},
    {"Keypad =", "KPEQ"},
};

TEST(KeyTable, holdsEveryKeyThatAShortcutCanName) {
    std::map<std::uint32_t, std::string> names;
    for (const PhysicalKey& key : KeyTable::keys()) {
        names[key.virtualKeyCode] = key.name;
    }
    EXPECT_EQ(names, expectedNames);
    EXPECT_EQ(KeyTable::keys().size(), expectedNames.size());
}

TEST(KeyTable, namesThePlaceOfEachKey) {
    std::map<std::string, std::string> positions;
    for (const PhysicalKey& key : KeyTable::keys()) {
        positions[std::string(key.name)] = key.position;
    }
    for (const auto& [name, position] : expectedPositions) {
        EXPECT_EQ(positions[name], position) << name;
    }
}

TEST(KeyTable, readsTheSameInBothDirections) {
    std::set<std::string_view> positions;
    std::set<int> evdevKeyCodes;
    for (const PhysicalKey& key : KeyTable::keys()) {
        EXPECT_EQ(KeyTable::withVirtualKeyCode(key.virtualKeyCode), &key) << key.name;
        EXPECT_EQ(KeyTable::atPosition(key.position), &key) << key.name;
        EXPECT_TRUE(positions.insert(key.position).second) << key.name;
        EXPECT_TRUE(evdevKeyCodes.insert(key.evdevKeyCode).second) << key.name;
        EXPECT_LE(key.position.size(), 4U) << key.name;
    }
}

TEST(KeyTable, knowsNothingOfOtherCodesAndPlaces) {
    for (const std::uint32_t code : {52U, 54U, 55U, 66U, 93U, 127U, 128U, 0xffffffffU}) {
        EXPECT_EQ(KeyTable::withVirtualKeyCode(code), nullptr) << code;
    }
    for (const char* position : {"", "LCTL", "AC12", "LEFTX", "left"}) {
        EXPECT_EQ(KeyTable::atPosition(position), nullptr) << position;
    }
}

}  // namespace
}  // namespace lumatile
