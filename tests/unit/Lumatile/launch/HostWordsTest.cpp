#include "Lumatile/launch/HostWords.h"

#include <gtest/gtest.h>

namespace lumatile {
namespace {

class HostWordsTest : public testing::Test {
protected:
    std::string windowManager;
    int looks = 0;
    HostWords words{"", [this] {
                        ++looks;
                        return windowManager;
                    }};
};

TEST_F(HostWordsTest, looksWhenFirstAskedAndOnce) {
    windowManager = "Xfwm4";
    EXPECT_EQ(looks, 0);
    EXPECT_EQ(words.host(), (HostDesktop{DesktopKind::xfce, false}));
    EXPECT_EQ(words.host().kind, DesktopKind::xfce);
    EXPECT_EQ(words.apply("macOS"), Vocabulary::of({DesktopKind::xfce, false}).apply("macOS"));
    EXPECT_EQ(looks, 1);
}

TEST_F(HostWordsTest, aWindowManagerThatCameLaterNamesTheDesktop) {
    EXPECT_EQ(words.host().kind, DesktopKind::other);
    windowManager = "KWin";
    EXPECT_EQ(words.host().kind, DesktopKind::other);
    words.forget();
    EXPECT_EQ(words.host().kind, DesktopKind::plasma);
    EXPECT_EQ(words.apply("System Settings"),
              Vocabulary::of({DesktopKind::plasma, false}).apply("System Settings"));
}

TEST_F(HostWordsTest, keysAreNamedAsThePresentLayoutDoes) {
    std::map<std::uint32_t, std::string> layout{{6, "Y"}};
    int readings = 0;
    HostWords said(
        "XFCE", [] { return std::string(); },
        [&] {
            ++readings;
            return layout;
        });
    EXPECT_EQ(said.apply("macOS"), "Xfce");
    EXPECT_EQ(readings, 0) << "where no key is named";
    EXPECT_EQ(said.apply("⌃⌥Z"), "Ctrl+Alt+Y");
    EXPECT_EQ(said.legend("Z"), "Y");
    EXPECT_EQ(said.legend("A"), "A");
    EXPECT_EQ(said.legend(6), "Y");
    EXPECT_EQ(said.legend(7), "");
    layout = {};
    EXPECT_EQ(said.apply("⌃⌥Z"), "Ctrl+Alt+Z");
}

TEST_F(HostWordsTest, theSessionsOwnNameDecides) {
    HostWords named("XFCE", [] { return std::string("KWin"); });
    EXPECT_EQ(named.host(), (HostDesktop{DesktopKind::xfce, true}));
}

}  // namespace
}  // namespace lumatile
