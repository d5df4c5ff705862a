#include "platform/qt/KeySequence.h"

#include <gtest/gtest.h>

#include <QList>
#include <QString>

#include "menu_model/ShortcutFormatter.h"

namespace lumatile {
namespace {

QString textOf(std::uint32_t keyCode, std::uint32_t modifiers) {
    return keySequenceOf(
               KeyEquivalent::ofHotKey(ShortcutFormatter::keyEquivalent(keyCode), modifiers))
        .toString(QKeySequence::PortableText);
}

TEST(KeySequence, hotKeysReadAsTheKeyboardSaysThem) {
    EXPECT_EQ(textOf(123, 6144), "Ctrl+Alt+Left");
    EXPECT_EQ(textOf(51, 6144), "Ctrl+Alt+Backspace");
    EXPECT_EQ(textOf(0, 0x200), "Shift+A");
    EXPECT_EQ(textOf(24, 0x1000), "Ctrl+=");
    EXPECT_EQ(textOf(0, 0), "A");
}

TEST(KeySequence, commandIsTheSuperKeyOfHotKeys) {
    EXPECT_EQ(keySequenceOf(KeyEquivalent::ofHotKey("→", 6400)),
              QKeySequence(Qt::CTRL | Qt::ALT | Qt::META | Qt::Key_Right));
}

TEST(KeySequence, commandIsControlInTheProgramsOwnMenu) {
    EXPECT_EQ(keySequenceOf(KeyEquivalent::ofMenu(",")), QKeySequence(Qt::CTRL | Qt::Key_Comma));
    EXPECT_EQ(keySequenceOf(KeyEquivalent::ofMenu("q")), QKeySequence(Qt::CTRL | Qt::Key_Q));
}

TEST(KeySequence, everyKnownKeyHasOneAndNoTwoAreTheSame) {
    QList<QKeySequence> seen;
    for (std::uint32_t code = 0; code < 128; ++code) {
        const std::string key = ShortcutFormatter::keyEquivalent(code);
        const QKeySequence sequence = keySequenceOf(KeyEquivalent::ofHotKey(key, 0));
        EXPECT_FALSE(sequence.isEmpty()) << code;
        if (key != "?") {
            EXPECT_FALSE(seen.contains(sequence)) << code;
            seen.append(sequence);
        }
    }
    EXPECT_EQ(seen.size(), 14 + 47);
}

TEST(KeySequence, hotKeysAreNamedByTheLayout) {
    const KeyTexts german{
        [](std::string_view glyphs) { return std::string(glyphs); },
        [](std::string_view key) {
            return key == "Z" ? std::string("Y") : key == ";" ? "Ö" : std::string(key);
        },
        {}};
    EXPECT_EQ(keySequenceOf(KeyEquivalent::ofHotKey("z", 0x1000), german), QKeySequence("Ctrl+Y"));
    EXPECT_EQ(keySequenceOf(KeyEquivalent::ofHotKey(";", 0x1000), german), QKeySequence("Ctrl+Ö"));
    EXPECT_EQ(keySequenceOf(KeyEquivalent::ofHotKey("←", 0x1000), german),
              QKeySequence("Ctrl+Left"));
    EXPECT_EQ(keySequenceOf(KeyEquivalent::ofMenu("z"), german), QKeySequence("Ctrl+Z"));
    EXPECT_EQ(writtenKeys(KeyEquivalent::ofHotKey("z", 6912), german), "⌃⌥⇧⌘Z");
}

TEST(KeySequence, aKeyWithoutANameHasTheOneOfTheLayout) {
    const KeyTexts texts{
        [](std::string_view glyphs) { return glyphs == "⌃⌥" ? std::string("Ctrl+Alt+") : "none"; },
        [](std::string_view key) { return std::string(key); },
        [](std::uint32_t code) { return code == 96 ? std::string("F5") : std::string(); }};
    const KeyEquivalent known = KeyEquivalent::ofHotKey("?", 6144, 96);
    EXPECT_EQ(writtenKeys(known, texts), "Ctrl+Alt+F5");
    EXPECT_EQ(keySequenceOf(known, texts), QKeySequence("Ctrl+Alt+F5"));
    EXPECT_EQ(keySequenceOf(known, texts), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_F5));
    const KeyEquivalent unknown = KeyEquivalent::ofHotKey("?", 6144, 97);
    EXPECT_EQ(writtenKeys(unknown, texts), "none") << "what stands for it is written";
    EXPECT_EQ(keySequenceOf(unknown, texts), QKeySequence("Ctrl+Alt+?"));
}

TEST(KeySequence, withoutKeysItIsEmpty) {
    EXPECT_TRUE(keySequenceOf({}).isEmpty());
    EXPECT_TRUE(keySequenceOf(KeyEquivalent::ofHotKey("ab", 0x100)).isEmpty());
    EXPECT_TRUE(keySequenceOf(KeyEquivalent::ofHotKey("\x01", 0x100)).isEmpty());
}

}  // namespace
}  // namespace lumatile
