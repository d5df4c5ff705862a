#include "platform/freedesktop/sync_folder/CollisionCopyName.h"

#include <string>

#include <gtest/gtest.h>

namespace lumatile {
namespace {

constexpr std::string_view original = "lumatile-settings.json";

TEST(CollisionCopyName, knowsWhatServicesCallThem) {
    for (const char* name :
         {"lumatile-settings.sync-conflict-20261121-170512-ABCDEFG.json",
          "lumatile-settings (1).json", "lumatile-settings (27).json",
          "lumatile-settings (conflicted copy 2026-11-21 170512).json",
          "lumatile-settings (Somebody's conflicted copy 2026-11-21).json",
          "lumatile-settings (Jürgen’s conflicted copy 2026-11-21).json",
          "lumatile-settings (SFConflict someone 2026-11-21-17-05-12).json",
          "lumatile-settings_conflict-20261121-170512.json", "lumatile-settings [Conflict].json",
          "lumatile-settings-conflict-1.json", "lumatile-settings.conflict1.json"}) {
        EXPECT_TRUE(CollisionCopyName::isCopyOf(original, name)) << name;
    }
}

TEST(CollisionCopyName, leavesOtherFilesAlone) {
    for (const char* name :
         {"lumatile-settings.json", "", "lumatile-settings", "settings (1).json",
          "lumatile-settings ().json", "lumatile-settings (1).json.part",
          "lumatile-settings (1).txt", "lumatile-settings backup.json", "lumatile-settings2.json",
          "lumatile-settings (1.json", "lumatile-settings.sync-conflict-.json",
          ".lumatile-settings (1).json", "lumatile-settings (1)x.json"}) {
        EXPECT_FALSE(CollisionCopyName::isCopyOf(original, name)) << name;
    }
    EXPECT_FALSE(CollisionCopyName::isCopyOf(
        original, "lumatile-settings (" + std::string(300, 'x') + ").json"));
}

TEST(CollisionCopyName, anOriginalWithoutAnEndingHasCopiesAsWell) {
    EXPECT_TRUE(CollisionCopyName::isCopyOf("settings", "settings (1)"));
    EXPECT_FALSE(CollisionCopyName::isCopyOf("settings", "settings"));
}

}  // namespace
}  // namespace lumatile
