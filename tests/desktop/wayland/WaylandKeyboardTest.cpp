#include "platform/wayland/WaylandKeyboard.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <cstdint>
#include <fstream>

#include "platform/keyboard/KeyTable.h"
#include "tests/desktop/wayland/WaylandDesk.h"

namespace lumatile::desktop {
namespace {

std::uint32_t codeAt(const char* position) {
    return KeyTable::atPosition(position)->virtualKeyCode;
}

constexpr std::uint32_t symbol(int keysym) { return static_cast<std::uint32_t>(keysym); }

/// The layouts that the user has chosen, as the compositor's settings have them.
void chooseLayouts(PrivateSession& session, const std::string& layouts) {
    std::ofstream(session.configuration() / "kxkbrc")
        << "[Layout]\nUse=true\nLayoutList=" << layouts << "\n";
}

/// What the settings of the keyboard say to the compositor when the user has applied them.
void tellOfNewLayouts(PrivateSession& session) {
    ChildProcess tell = session.start({"gdbus", "emit", "--session", "--object-path", "/Layouts",
                                       "--signal", "org.kde.keyboard.reloadConfig"},
                                      "tell");
    ASSERT_EQ(tell.wait(Deadline::usual()), (ChildProcess::Exit{0, 0}));
}

class WaylandKeyboardTest : public testing::Test {
protected:
    WaylandKeyboardTest() { choose("de,ru"); }

    void choose(const std::string& layouts) {
        chooseLayouts(desk.session(), layouts);
        tellOfNewLayouts(desk.session());
    }

    /// Whether the key comes to have this symbol.
    bool comesToHave(const char* position, int keysym) {
        return desk.waitUntil(
            [&] { return keyboard.keysymAt(codeAt(position)) == symbol(keysym); });
    }

    WaylandDesk desk;
    WaylandKeyboard keyboard{desk.connection()};
};

TEST_F(WaylandKeyboardTest, hasTheCompositorsMapWithoutTheFocus) {
    ASSERT_TRUE(comesToHave("AB01", XKB_KEY_y));
    EXPECT_TRUE(keyboard.isKnown());
    EXPECT_EQ(keyboard.virtualKeyCode(52), codeAt("AB01"));
    EXPECT_EQ(keyboard.virtualKeyCode(113), codeAt("LEFT"));
    EXPECT_EQ(keyboard.virtualKeyCode(37), std::nullopt);  // Control.
    const auto legends = keyboard.legends();
    EXPECT_EQ(legends.at(codeAt("AB01")), "Y");
    EXPECT_EQ(legends.at(codeAt("AC10")), "Ö");
    EXPECT_EQ(legends.at(codeAt("LEFT")), "Left");
    EXPECT_EQ(legends.size(), KeyTable::keys().size());
}

TEST_F(WaylandKeyboardTest, hasTheSymbolsOfTheLayoutThatIsInForce) {
    ASSERT_TRUE(comesToHave("AB01", XKB_KEY_y));
    int told = 0;
    const auto subscription = keyboard.observe([&] { ++told; });
    keyboard.setGroup(0);
    EXPECT_EQ(told, 0);
    keyboard.setGroup(1);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(keyboard.keysymAt(codeAt("AD01")), symbol(XKB_KEY_Cyrillic_shorti));
    EXPECT_EQ(keyboard.legends().at(codeAt("AD01")), "Й");
    EXPECT_EQ(keyboard.virtualKeyCode(52), codeAt("AB01"));
}

TEST_F(WaylandKeyboardTest, followsTheLayoutsThatTheUserChooses) {
    ASSERT_TRUE(comesToHave("AB01", XKB_KEY_y));
    int told = 0;
    const auto subscription = keyboard.observe([&] { ++told; });
    choose("fr");
    EXPECT_TRUE(comesToHave("AD01", XKB_KEY_a));
    EXPECT_GT(told, 0);
    EXPECT_EQ(keyboard.keysymAt(codeAt("AE01")), symbol(XKB_KEY_ampersand));
}

}  // namespace
}  // namespace lumatile::desktop
