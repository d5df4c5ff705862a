#include <gtest/gtest.h>

#include "settings_core/RecordedModifiers.h"
#include "settings_core/RecorderContent.h"

namespace lumatile {
namespace {

TEST(RecordedModifiers, eachFlagHasItsBit) {
    EXPECT_EQ(RecordedModifiers::classic(0x100000), 256U);
    EXPECT_EQ(RecordedModifiers::classic(0x80000), 2048U);
    EXPECT_EQ(RecordedModifiers::classic(0x20000), 512U);
    EXPECT_EQ(RecordedModifiers::classic(0x40000), 4096U);
}

TEST(RecordedModifiers, commandAndShift) {
    EXPECT_EQ(RecordedModifiers::classic(RecordedModifiers::command | RecordedModifiers::shift),
              0x300U);
}

TEST(RecordedModifiers, otherFlagsAreDropped) {
    constexpr std::uint32_t capsLock = 0x10000;
    constexpr std::uint32_t keypad = 0x200000;
    constexpr std::uint32_t function = 0x800000;
    EXPECT_EQ(RecordedModifiers::classic(capsLock | keypad | function), 0U);
    EXPECT_EQ(RecordedModifiers::classic(capsLock | RecordedModifiers::control), 4096U);
}

TEST(RecorderContent, recordingComesFirst) {
    EXPECT_EQ(recorderContent(true, Shortcut{123, 4096, true}), RecorderContent::typeAShortcut);
    EXPECT_EQ(recorderContent(true, std::nullopt), RecorderContent::typeAShortcut);
}

TEST(RecorderContent, aShortcutThatIsOnIsShown) {
    EXPECT_EQ(recorderContent(false, Shortcut{123, 4096, true}), RecorderContent::shortcut);
}

TEST(RecorderContent, aDisabledShortcutShowsThePrompt) {
    EXPECT_EQ(recorderContent(false, Shortcut{123, 4096, false}), RecorderContent::clickToRecord);
    EXPECT_EQ(recorderContent(false, std::nullopt), RecorderContent::clickToRecord);
}

}  // namespace
}  // namespace lumatile
