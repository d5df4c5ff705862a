#include "onboarding/KeyWords.h"

#include <gtest/gtest.h>

namespace lumatile {
namespace {

TEST(KeyWords, aShortcutIsWrittenByTheNamesOfItsKeys) {
    const KeyWords::Legends none;
    EXPECT_EQ(KeyWords::written("⌃⌥←", none), "Ctrl+Alt+Left");
    EXPECT_EQ(KeyWords::written("⌃⌥⇧⌘␣", none), "Ctrl+Alt+Shift+Super+Space");
    EXPECT_EQ(KeyWords::written("⌘U", none), "Super+U");
    EXPECT_EQ(KeyWords::written("⌃F5", none), "Ctrl+F5");
    EXPECT_EQ(KeyWords::written("⌃=", none), "Ctrl+=");
    EXPECT_EQ(KeyWords::written("⇟", none), "Page Down");
    EXPECT_EQ(KeyWords::written("⌃⌥", none), "Ctrl+Alt+");
}

TEST(KeyWords, keysInARowAreAChoice) {
    EXPECT_EQ(KeyWords::written("Press **⌃⌥ ← → ↑ ↓** to snap.", {}),
              "Press **Ctrl+Alt+Left, Right, Up or Down** to snap.");
    EXPECT_EQ(KeyWords::written("← →, then", {}), "Left or Right, then");
}

TEST(KeyWords, aCharacterKeyIsNamedByTheLayout) {
    const KeyWords::Legends german{{"Z", "Y"}, {"Y", "Z"}, {";", "Ö"}, {"F", "U"}};
    EXPECT_EQ(KeyWords::written("⌃⌥Z", german), "Ctrl+Alt+Y");
    EXPECT_EQ(KeyWords::written("⌃;", german), "Ctrl+Ö");
    EXPECT_EQ(KeyWords::written("⌃F5", german), "Ctrl+F5") << "is a key of its own";
    EXPECT_EQ(KeyWords::written("Zoom; Y", german), "Zoom; Y") << "no keys";
}

TEST(KeyWords, otherTextStaysAsItIs) {
    for (const char* text : {"", "Settings…", "Open “A” ▸ B", "größer 中", " "}) {
        EXPECT_EQ(KeyWords::written(text, {}), text);
        EXPECT_FALSE(KeyWords::occurIn(text));
    }
    EXPECT_TRUE(KeyWords::occurIn("⌘"));
    EXPECT_TRUE(KeyWords::occurIn("a ↩"));
}

}  // namespace
}  // namespace lumatile
