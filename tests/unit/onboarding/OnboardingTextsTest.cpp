#include "onboarding/OnboardingTexts.h"

#include <gtest/gtest.h>

#include <string>

#include "onboarding/Vocabulary.h"

namespace lumatile {
namespace {

std::string in(const Vocabulary& vocabulary, std::string_view text) {
    return vocabulary.apply(text);
}

TEST(OnboardingTexts, areWordForWordWithTheReferencesNouns) {
    const Vocabulary reference = Vocabulary::reference();
    EXPECT_EQ(in(reference, OnboardingTexts::windowTitle), "Lumatile Setup");
    EXPECT_EQ(in(reference, OnboardingTexts::welcome), "Welcome to Lumatile");
    EXPECT_EQ(in(reference, OnboardingTexts::explanation),
              "Lumatile arranges your windows and gently shifts them to protect OLED displays from "
              "burn-in. It needs Accessibility access to move other apps' windows.");
    EXPECT_EQ(in(reference, OnboardingTexts::openSettings), "Open System Settings…");
    EXPECT_EQ(in(reference, OnboardingTexts::waiting), "Waiting for permission…");
    EXPECT_EQ(in(reference, OnboardingTexts::openSettingsAgain), "Open System Settings again");
    EXPECT_EQ(OnboardingTexts::readySymbol, "checkmark.circle.fill");
    EXPECT_EQ(in(reference, OnboardingTexts::ready), "You're all set");
    EXPECT_EQ(in(reference, OnboardingTexts::done), "Done");
    ASSERT_EQ(OnboardingTexts::hints.size(), 2U);
    EXPECT_EQ(OnboardingTexts::hints[0].symbol, "keyboard");
    EXPECT_EQ(in(reference, OnboardingTexts::hints[0].text),
              "Press **⌃⌥ ← → ↑ ↓** to snap the front window to a half. Every shortcut is in the "
              "menu-bar menu.");
    EXPECT_EQ(OnboardingTexts::hints[1].symbol, "arrow.up.left.and.arrow.down.right");
    EXPECT_EQ(in(reference, OnboardingTexts::hints[1].text),
              "Drag a window to a screen edge or corner and let go to snap it.");
}

TEST(OnboardingTexts, nameTheHostsOwnSettings) {
    const Vocabulary xfce = Vocabulary::of({DesktopKind::xfce, true});
    EXPECT_EQ(in(xfce, OnboardingTexts::openSettings), "Open Settings Manager…");
    EXPECT_EQ(in(xfce, OnboardingTexts::openSettingsAgain), "Open Settings Manager again");
    // Nothing else in them would be false.
    for (const std::string_view text :
         {OnboardingTexts::welcome, OnboardingTexts::explanation, OnboardingTexts::waiting,
          OnboardingTexts::ready, OnboardingTexts::hints[1].text}) {
        EXPECT_EQ(in(xfce, text), text);
    }
    EXPECT_EQ(
        in(xfce, OnboardingTexts::hints[0].text),
        "Press **Ctrl+Alt+Left, Right, Up or Down** to snap the front window to a half. Every "
        "shortcut is in the menu-bar menu.");
}

TEST(OnboardingTexts, whatIsMissingIsOnePlainText) {
    EXPECT_EQ(OnboardingTexts::missing(TrustObstacle::noWindowManager),
              "No window manager is running in this session. As soon as one is, Lumatile continues "
              "by itself.");
    EXPECT_EQ(OnboardingTexts::missing(TrustObstacle::windowManagerRefuses),
              "The window manager of this session doesn't let programs move windows, so Lumatile "
              "needs another one.");
    EXPECT_EQ(OnboardingTexts::missing(TrustObstacle::otherDisplaySystem),
              "This is a Wayland session, and its windows can't be reached. In an X11 session "
              "Lumatile can move them.");
    EXPECT_EQ(OnboardingTexts::missing(TrustObstacle::unknown),
              "This session doesn't let programs move windows.");
}

}  // namespace
}  // namespace lumatile
