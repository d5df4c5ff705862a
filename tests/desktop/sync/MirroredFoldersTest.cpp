#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Lumatile/SettingsSync.h"
#include "platform/freedesktop/glib/GLibHandles.h"
#include "platform/freedesktop/sync_folder/SyncFolderVisit.h"
#include "tests/desktop/sync/MirroredFolders.h"
#include "tests/support/StoringComputer.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile {
namespace {

namespace fs = std::filesystem;

/// One of two computers; its clock shows what it is told to.
class MirroredComputer : public StoringComputer {
public:
    explicit MirroredComputer(const fs::path& folder) : folder_(folder) {
        pace = SharedFolderStore::Pace();
        start(folder);
        sync = std::make_unique<SettingsSync>(
            preferences, *store, [this] { return now; },
            SettingsSync::Closures{[] {}, [] {},
                                   [](const ConflictSummary&) { FAIL() << "a question"; }});
        sync->start();
        settle();
    }

    void edit(double time, const Bytes& commands) {
        now = time;
        preferences.setBytes("commands", commands);
        sync->recordLocalChange();
    }

    bool has(const Bytes& commands) { return preferences.bytes("commands") == commands; }

    /// The settings in the file, in those put aside and in copies that were not yet.
    std::vector<Bytes> everything() const {
        std::vector<Bytes> found;
        for (const auto& entry : fs::recursive_directory_iterator(folder_)) {
            const auto set = SharedSetCodec::parse(readFile(entry.path()));
            if (entry.is_regular_file() && set && set->contains("commands")) {
                found.push_back(set->at("commands"));
            }
        }
        return found;
    }

    Bytes shared() const {
        const auto set = SharedSetCodec::parse(readFile(folder_ / SyncFolderVisit::fileName));
        return set && set->contains("commands") ? set->at("commands") : "";
    }

    double now = 0;
    std::unique_ptr<SettingsSync> sync;

private:
    fs::path folder_;
};

TEST(MirroredFolders, settingsFollowAndCollisionsEndWithTheLatestOnBothSides) {
    desktop::MirroredFolders folders;
    MirroredComputer one(folders.path(0));
    MirroredComputer two(folders.path(1));
    const auto told = [&] {
        std::string state;
        for (const std::size_t side : {0U, 1U}) {
            state += "side " + std::to_string(side) + " has:\n";
            for (const auto& entry : fs::recursive_directory_iterator(folders.path(side))) {
                state += entry.path().string() + "\n";
                const auto set = SharedSetCodec::parse(readFile(entry.path()));
                if (set && set->contains("commands")) {
                    state += "  " + set->at("commands") + "\n";
                }
            }
            state += folders.output(side);
        }
        return state;
    };

    one.edit(1000, "[first]");
    ASSERT_TRUE(runUntil([&] { return two.has("[first]"); })) << told();
    two.edit(1001, "[second]");
    ASSERT_TRUE(runUntil([&] { return one.has("[second]"); })) << told();

    // Both change theirs while they do not see each other. The service lets the file count that was
    // written last; the settings say that it is the older change.
    folders.stop(1);
    one.edit(3000, "[later]");
    ASSERT_TRUE(runUntil([&] { return one.shared() == "[later]"; })) << told();
    two.edit(2000, "[earlier]");
    ASSERT_TRUE(runUntil([&] { return two.shared() == "[earlier]"; })) << told();
    folders.start(1);
    ASSERT_TRUE(runUntil([&] {
        return one.has("[later]") && two.has("[later]") && one.shared() == "[later]" &&
               two.shared() == "[later]" &&
               one.store->status().copiesPutAside + two.store->status().copiesPutAside > 0;
    })) << told();
    // A copy was made, and what did not count is kept on the side where it lay.
    EXPECT_THAT(one.everything(), testing::Contains("[later]"));
    // What is mirrored into the folder of the copies concerns no store and so wakes no loop.
    const GObjectHandle<GFile> copies(
        g_file_new_for_path((folders.path(1) / SyncFolderVisit::asideName).c_str()));
    const GObjectHandle<GFileMonitor> wakes(
        g_file_monitor_directory(copies.get(), G_FILE_MONITOR_NONE, nullptr, nullptr));
    ASSERT_TRUE(runUntil([&] {
        const auto found = two.everything();
        return std::find(found.begin(), found.end(), "[earlier]") != found.end();
    })) << told();

    // It goes on afterwards, and nothing comes back.
    two.edit(3001, "[third]");
    ASSERT_TRUE(runUntil([&] { return one.has("[third]"); })) << told();
    EXPECT_TRUE(two.has("[third]"));
    EXPECT_TRUE(runUntil([&] { return two.condition() == SharedStoreStatus::Condition::current; }));
}

}  // namespace
}  // namespace lumatile
