#include "platform/x11/X11ShortcutText.h"

#include <gtest/gtest.h>

namespace lumatile {
namespace {

TEST(X11ShortcutText, readsAsKeyboardsPrintIt) {
    EXPECT_EQ(x11ShortcutText(123, 6144), "Ctrl+Alt+Left");
    EXPECT_EQ(x11ShortcutText(124, 6400), "Ctrl+Alt+Super+Right");
    EXPECT_EQ(x11ShortcutText(51, 6144), "Ctrl+Alt+Backspace");
    EXPECT_EQ(x11ShortcutText(117, 512), "Shift+Delete");
    EXPECT_EQ(x11ShortcutText(32, 6144 | 512), "Ctrl+Alt+Shift+U");
    EXPECT_EQ(x11ShortcutText(122, 0), "F1");
}

TEST(X11ShortcutText, leavesOutUnknownModifiersAndNumbersUnknownKeys) {
    EXPECT_EQ(x11ShortcutText(0, 1), "A");
    EXPECT_EQ(x11ShortcutText(999, 4096), "Ctrl+key 999");
}

}  // namespace
}  // namespace lumatile
