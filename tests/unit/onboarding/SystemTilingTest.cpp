#include "onboarding/SystemTiling.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumatile {
namespace {

constexpr int beforeTiling = 14;
constexpr int withTiling = 15;

using Values = std::map<std::string, bool, std::less<>>;

SystemTiling read(int majorVersion, const Values& values) {
    return SystemTiling::read(majorVersion, [&](std::string_view key) -> std::optional<bool> {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    });
}

TEST(SystemTiling, aSystemTooOldHasNoneWhateverIsStored) {
    for (const bool value : {true, false}) {
        const SystemTiling tiling = read(beforeTiling, {{"EnableTilingByEdgeDrag", value},
                                                        {"EnableTopTilingByEdgeDrag", value}});
        EXPECT_FALSE(tiling.edgeDrag);
        EXPECT_FALSE(tiling.menuBarDrag);
        EXPECT_FALSE(tiling.conflictsWithDragToSnap());
    }
    EXPECT_FALSE(read(0, {}).conflictsWithDragToSnap());
}

TEST(SystemTiling, aSystemTooOldIsNotAsked) {
    int asked = 0;
    SystemTiling::read(beforeTiling, [&](std::string_view) {
        ++asked;
        return std::optional(true);
    });
    EXPECT_EQ(asked, 0);
}

TEST(SystemTiling, withNeitherKeyBothAreOn) {
    for (const int version : {withTiling, withTiling + 1}) {
        const SystemTiling tiling = read(version, {});
        EXPECT_TRUE(tiling.edgeDrag);
        EXPECT_TRUE(tiling.menuBarDrag);
        EXPECT_TRUE(tiling.conflictsWithDragToSnap());
    }
}

TEST(SystemTiling, anAbsentKeyIsOnBesideOneThatIsOff) {
    const SystemTiling top = read(withTiling, {{"EnableTilingByEdgeDrag", false}});
    EXPECT_FALSE(top.edgeDrag);
    EXPECT_TRUE(top.menuBarDrag);
    EXPECT_TRUE(top.conflictsWithDragToSnap());

    const SystemTiling edge = read(withTiling, {{"EnableTopTilingByEdgeDrag", false}});
    EXPECT_TRUE(edge.edgeDrag);
    EXPECT_FALSE(edge.menuBarDrag);
    EXPECT_TRUE(edge.conflictsWithDragToSnap());
}

TEST(SystemTiling, withBothOffNothingConflicts) {
    const SystemTiling tiling =
        read(withTiling, {{"EnableTilingByEdgeDrag", false}, {"EnableTopTilingByEdgeDrag", false}});
    EXPECT_EQ(tiling, SystemTiling{});
    EXPECT_FALSE(tiling.conflictsWithDragToSnap());
}

TEST(SystemTiling, equalityComparesBoth) {
    EXPECT_NE((SystemTiling{true, false}), (SystemTiling{false, true}));
    EXPECT_NE((SystemTiling{true, true}), (SystemTiling{true, false}));
    EXPECT_EQ((SystemTiling{false, true}), (SystemTiling{false, true}));
}

}  // namespace
}  // namespace lumatile
