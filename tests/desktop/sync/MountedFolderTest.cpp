#include <sys/mount.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/freedesktop/sync_folder/SyncFolderVisit.h"
#include "tests/desktop/support/ChildProcess.h"
#include "tests/support/StoringComputer.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile {
namespace {

namespace fs = std::filesystem;

using Condition = SharedStoreStatus::Condition;
using testing::HasSubstr;
using testing::IsEmpty;

// Mounts in a namespace of its own are seen by nobody else and end with the process.
constexpr const char* isInside = "LUMATILE_TEST_HAS_OWN_MOUNTS";

desktop::ChildProcess::Exit runWithOwnMounts(const std::vector<std::string>& program,
                                             const fs::path& output) {
    std::vector<std::string> command{"unshare", "--map-root-user", "--mount"};
    command.insert(command.end(), program.begin(), program.end());
    desktop::ChildProcess::Start start{command, desktop::inheritedEnvironment(), output};
    start.environment[isInside] = "1";
    return desktop::ChildProcess(start)
        .wait(desktop::Deadline::usual())
        .value_or(desktop::ChildProcess::Exit{});
}

class MountedFolder : public testing::Test {
protected:
    /// As when a disc is plugged in or a share comes into reach.
    void attach() {
        ASSERT_EQ(mount(disc.c_str(), place.c_str(), nullptr, MS_BIND, nullptr), 0)
            << std::generic_category().message(errno);
    }

    void detach() {
        ASSERT_EQ(umount2(place.c_str(), MNT_DETACH), 0) << std::generic_category().message(errno);
    }

    void followTheMounts() {
        fs::create_directory(disc);
        fs::create_directory(place);
        attach();
        computer.start(place);
        computer.change(5, "[before]");
        computer.settle();
        ASSERT_EQ(readFile(disc / SyncFolderVisit::fileName), textOf(5, "[before]"));

        // No event tells of this one; the folder that was below the mount is there all the time.
        detach();
        ASSERT_TRUE(runUntil([&] { return computer.condition() == Condition::missing; }));
        EXPECT_EQ(computer.store->data("commands"), "[before]") << "answered from memory";
        computer.change(6, "[meanwhile]");
        computer.settle();
        EXPECT_TRUE(fs::is_empty(place)) << "nothing is begun there";
        EXPECT_EQ(computer.condition(), Condition::missing);

        attach();
        ASSERT_TRUE(runUntil([&] { return computer.condition() == Condition::current; }));
        EXPECT_EQ(readFile(disc / SyncFolderVisit::fileName), textOf(6, "[meanwhile]"));

        // What another computer did to the disc in the meantime is read as well.
        detach();
        ASSERT_TRUE(runUntil([&] { return computer.condition() == Condition::missing; }));
        replaceFile(disc / SyncFolderVisit::fileName, textOf(7, "[elsewhere]"));
        attach();
        ASSERT_TRUE(runUntil([&] { return computer.store->data("commands") == "[elsewhere]"; }));
        EXPECT_EQ(computer.condition(), Condition::current);
        EXPECT_THAT(computer.log.lines(), IsEmpty()) << "it was soon back each time";
    }

    TemporaryFolder folder;
    fs::path disc = folder / "disc";
    fs::path place = folder / "place";
    StoringComputer computer;
};

TEST_F(MountedFolder, mayBeUnmountedAndMountedAgain) {
    if (std::getenv(isInside) != nullptr) {
        followTheMounts();
        return;
    }
    const fs::path output = folder / "output";
    if (runWithOwnMounts({"true"}, output).status != 0) {
        GTEST_SKIP() << "mounting is not allowed here: " << readFile(output);
    }
    const auto exit =
        runWithOwnMounts({fs::read_symlink("/proc/self/exe").string(),
                          "--gtest_filter=MountedFolder.mayBeUnmountedAndMountedAgain"},
                         output);
    EXPECT_EQ(exit.status, 0) << readFile(output);
    EXPECT_THAT(readFile(output), HasSubstr("[  PASSED  ] 1 test."));
}

}  // namespace
}  // namespace lumatile
