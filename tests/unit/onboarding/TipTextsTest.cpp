#include "onboarding/TipTexts.h"

#include <gtest/gtest.h>

namespace lumatile {
namespace {

TEST(TipTexts, theTilingTipWarnsWhileTheTilingIsOn) {
    const TipTexts::Tip& tip = TipTexts::systemTiling(true);
    EXPECT_EQ(tip.symbol, "exclamationmark.triangle.fill");
    EXPECT_EQ(tip.title, "macOS's own window tiling is on");
    EXPECT_EQ(tip.text,
              "It also snaps windows you drag to the edge of the screen, so it and Lumatile will "
              "fight over them. In System Settings ▸ Desktop & Dock ▸ Windows, turn off the two "
              "“Drag windows to…” options.");
    EXPECT_EQ(tip.button, "Open Desktop & Dock Settings…");
}

TEST(TipTexts, theTilingTipIsOneLineWhileTheTilingIsOff) {
    const TipTexts::Tip& tip = TipTexts::systemTiling(false);
    EXPECT_EQ(tip.symbol, "checkmark.circle.fill");
    EXPECT_EQ(tip.title, "");
    EXPECT_EQ(tip.text, "macOS's own edge tiling is off, so it won't compete with drag-to-snap.");
    EXPECT_EQ(tip.button, "");
}

TEST(TipTexts, whatCouldNotBeDoneIsSaid) {
    EXPECT_EQ(TipTexts::openingFailed, "System Settings could not be opened.");
    EXPECT_EQ(TipTexts::switchOffFailed,
              "Lumatile could not change that setting. Turn it off in System Settings ▸ Desktop & "
              "Dock ▸ Windows.");
}

TEST(TipTexts, theProtectionTipIsFixed) {
    EXPECT_EQ(TipTexts::protection.symbol, "sparkles.rectangle.stack");
    EXPECT_EQ(TipTexts::protection.title, "");
    EXPECT_EQ(TipTexts::protection.text,
              "OLED protection covers every window, however you placed it: with Lumatile, by hand, "
              "or with macOS's own green-button menu.");
    EXPECT_EQ(TipTexts::protection.button, "");
}

}  // namespace
}  // namespace lumatile
