#include "Lumatile/SettingsSync.h"
#include "tests/unit/platform/freedesktop/sync_folder/FolderStoreTest.h"

namespace lumatile {
namespace {

namespace fs = std::filesystem;

/// A computer of which the settings follow a folder.
class FollowingComputer : public StoringComputer {
public:
    explicit FollowingComputer(const fs::path& folder, double& time) {
        start(folder);
        sync = std::make_unique<SettingsSync>(
            preferences, *store, [&time] { return ++time; },
            SettingsSync::Closures{[this] { ++reloads; }, [] {},
                                   [](const ConflictSummary&) { FAIL() << "a conflict"; }});
        sync->start();
        settle();
    }

    void edit(const std::string& key, const Bytes& value) {
        preferences.setBytes(key, value);
        sync->recordLocalChange();
    }

    std::unique_ptr<SettingsSync> sync;
    int reloads = 0;
};

class SharedFolderSyncTest : public testing::Test {
protected:
    void settle(FollowingComputer& one, FollowingComputer& two) {
        EXPECT_TRUE(runUntil([&] {
            while (g_main_context_iteration(nullptr, FALSE) != 0) {
            }
            return !one.store->isVisiting() && !two.store->isVisiting();
        }));
    }

    TemporaryFolder folder;
    double time = 1000;
};

TEST_F(SharedFolderSyncTest, twoComputersFollowEachOther) {
    FollowingComputer one(folder.path(), time);
    FollowingComputer two(folder.path(), time);
    one.edit("commands", "[1]");
    settle(one, two);
    EXPECT_EQ(two.preferences.bytes("commands"), "[1]");
    EXPECT_EQ(two.reloads, 1);
    two.edit("oledSettings", "{2}");
    settle(one, two);
    EXPECT_EQ(one.preferences.bytes("commands"), "[1]");
    EXPECT_EQ(one.preferences.bytes("oledSettings"), "{2}");
    EXPECT_EQ(one.reloads, 1);
    EXPECT_EQ(two.reloads, 1);
    EXPECT_EQ(folder.names(), std::vector<std::string>{SyncFolderVisit::fileName});
}

TEST_F(SharedFolderSyncTest, ofChangesAtOnceTheLaterReachesBoth) {
    FollowingComputer one(folder.path(), time);
    FollowingComputer two(folder.path(), time);
    for (int round = 0; round < 20; ++round) {
        one.edit("commands", "[one " + std::to_string(round) + "]");
        two.edit("commands", "[two " + std::to_string(round) + "]");
        settle(one, two);
        const Bytes later = "[two " + std::to_string(round) + "]";
        ASSERT_EQ(one.preferences.bytes("commands"), later);
        ASSERT_EQ(two.preferences.bytes("commands"), later);
    }
}

TEST_F(SharedFolderSyncTest, settingsOfBeforeAreSharedWithAFolderThatIsNamedLater) {
    FollowingComputer one(folder.path(), time);
    one.sync->setLocation(std::nullopt);
    one.edit("commands", "[1]");
    one.settle();
    one.sync->setLocation(folder.path().string());
    one.settle();
    FollowingComputer two(folder.path(), time);
    EXPECT_EQ(two.preferences.bytes("commands"), "[1]");
}

TEST_F(SharedFolderSyncTest, aDamagedFileIsReplacedByThisComputersSettingsOnDemand) {
    FollowingComputer one(folder.path(), time);
    one.edit("commands", "[1]");
    one.settle();
    replaceFile(folder / SyncFolderVisit::fileName, "damaged");
    one.settle();
    one.sync->startAnew();
    one.settle();
    const auto set = SharedSetCodec::parse(readFile(folder / SyncFolderVisit::fileName));
    ASSERT_TRUE(set);
    EXPECT_EQ(set->at("commands"), "[1]");
}

}  // namespace
}  // namespace lumatile
