#include "platform/keyboard/ShortcutText.h"

#include <gtest/gtest.h>

namespace lumatile {
namespace {

TEST(ShortcutText, readsAsKeyboardsPrintIt) {
    EXPECT_EQ(shortcutText(123, 6144), "Ctrl+Alt+Left");
    EXPECT_EQ(shortcutText(124, 6400), "Ctrl+Alt+Super+Right");
    EXPECT_EQ(shortcutText(51, 6144), "Ctrl+Alt+Backspace");
    EXPECT_EQ(shortcutText(117, 512), "Shift+Delete");
    EXPECT_EQ(shortcutText(32, 6144 | 512), "Ctrl+Alt+Shift+U");
    EXPECT_EQ(shortcutText(122, 0), "F1");
}

TEST(ShortcutText, leavesOutUnknownModifiersAndNumbersUnknownKeys) {
    EXPECT_EQ(shortcutText(0, 1), "A");
    EXPECT_EQ(shortcutText(999, 4096), "Ctrl+key 999");
}

}  // namespace
}  // namespace lumatile
