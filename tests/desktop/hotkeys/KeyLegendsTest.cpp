// What is on the keys, in the layout that a real server has at this moment.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "menu_model/ShortcutFormatter.h"
#include "platform/x11/X11KeyCodes.h"
#include "platform/x11/XkbProtocol.h"
#include "tests/desktop/hotkeys/HotKeyTest.h"

namespace lumatile::desktop {
namespace {

constexpr std::uint32_t letterY = 16;
constexpr std::uint32_t letterZ = 6;
constexpr std::uint32_t semicolon = 41;
constexpr std::uint32_t f5 = 96;
constexpr std::uint32_t backspace = 51;
constexpr std::uint32_t keypad1 = 83;

class KeyLegendsTest : public HotKeyTest {
protected:
    std::string legend(std::uint32_t keyCode) { return keys_.legends()[keyCode]; }

    void layout(const std::string& names) {
        changeKeyboard({"setxkbmap", "-rules", "evdev", "-model", "pc105", "-layout", names});
    }

    X11KeyCodes keys_{desk_.connection()};
};

TEST_F(KeyLegendsTest, aUSLayoutHasWhatTheFormatterWrites) {
    layout("us");
    std::set<std::string> seen;
    for (const auto& [keyCode, text] : keys_.legends()) {
        const std::string name(ShortcutFormatter::keyName(keyCode));
        EXPECT_TRUE(seen.insert(text).second) << text << " is on two keys";
        // Special keys have glyphs there, and names on a keyboard.
        if (name.size() == 1 && name != "?") {
            EXPECT_EQ(text, name) << keyCode;
        }
    }
    EXPECT_EQ(legend(leftArrow), "Left");
    EXPECT_EQ(legend(f5), "F5");
    EXPECT_EQ(legend(backspace), "Backspace");
    EXPECT_EQ(legend(keypad1), "Keypad 1");
}

TEST_F(KeyLegendsTest, anotherLayoutNamesTheSameKeysByWhatItHasThere) {
    layout("us");
    EXPECT_EQ(legend(letterZ), "Z");
    layout("de");
    EXPECT_EQ(legend(letterZ), "Y");
    EXPECT_EQ(legend(letterY), "Z");
    EXPECT_EQ(legend(semicolon), "Ö");
    EXPECT_EQ(legend(leftArrow), "Left");
}

TEST_F(KeyLegendsTest, theLayoutInUseCounts) {
    layout("us,ru");
    EXPECT_EQ(legend(letterU), "U");
    xcb_xkb_use_extension(input_.connection(), 1, 0);
    for (const std::uint8_t group : Keys{1, 0}) {
        xcb_xkb_latch_lock_state(input_.connection(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0,
                                 0);
        input_.roundTrip();
        const std::string expected = group == 1 ? "Г" : "U";
        EXPECT_TRUE(desk_.runUntil([&] { return legend(letterU) == expected; })) << expected;
    }
}

}  // namespace
}  // namespace lumatile::desktop
