#include <gio/gio.h>

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/freedesktop/bus/DisplayToken.h"
#include "platform/freedesktop/glib/GLibHandles.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"
#include "tests/desktop/sync/MirroredFolders.h"
#include "tests/support/StoringComputer.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile::desktop {
namespace {

/// The program on a computer with a desktop and a home of its own.
class ProgramAtHome {
public:
    explicit ProgramAtHome(const std::filesystem::path& folder)
        : desktop_(MonitorLayout::landscape(), WindowManager::Kind::openbox) {
        LumatileProcess::Settings settings;
        settings.syncFolder = folder.string();
        program_ =
            std::make_unique<LumatileProcess>(desktop_.session(), LUMATILE_PROGRAM, settings);
        // Wakes the main loop of this test whenever the program stores something.
        const GObjectHandle<GFile> file(
            g_file_new_for_path(program_->settingsFile().parent_path().c_str()));
        monitor_.reset(g_file_monitor_directory(file.get(), G_FILE_MONITOR_NONE, nullptr, nullptr));
        run({"gdbus", "wait", "--session", "--timeout", "20",
             "org.lumatile.Control." + displayToken(desktop_.display())});
    }

    std::string ask(std::vector<std::string> words) {
        words.insert(words.begin(), LUMATILECTL_PROGRAM);
        return run(words);
    }

    std::string stored() const { return readFile(program_->settingsFile()); }
    LumatileProcess& program() { return *program_; }

private:
    std::string run(const std::vector<std::string>& command) {
        const std::string name = "asked-" + std::to_string(++count_);
        ChildProcess process = desktop_.session().start(command, name);
        process.wait(Deadline::usual());
        return desktop_.session().output(name);
    }

    TestDesktop desktop_;
    std::unique_ptr<LumatileProcess> program_;
    GObjectHandle<GFileMonitor> monitor_;
    int count_ = 0;
};

TEST(TwoPrograms, aSwitchOnOneComputerIsSwitchedOnTheOther) {
    MirroredFolders folders;
    ProgramAtHome one(folders.path(0));
    ProgramAtHome two(folders.path(1));
    EXPECT_EQ(two.ask({"protection"}), "pixelShift\toff\nedgeJitter\toff\nidleDimming\toff\n");

    EXPECT_EQ(one.ask({"protection", "edgeJitter", "on"}), "");
    const std::string jitter = R"(\"jitterEnabled\":true)";
    ASSERT_TRUE(runUntil([&] { return one.stored().find(jitter) != std::string::npos; }));
    ASSERT_TRUE(runUntil([&] { return two.stored().find(jitter) != std::string::npos; }))
        << two.program().output() << folders.output(0) << folders.output(1);
    EXPECT_EQ(two.ask({"protection"}), "pixelShift\toff\nedgeJitter\ton\nidleDimming\toff\n");

    // And back.
    EXPECT_EQ(two.ask({"protection", "idleDimming", "on"}), "");
    ASSERT_TRUE(runUntil([&] {
        return one.stored().find(R"(\"idleDimEnabled\":true)") != std::string::npos;
    })) << one.program().output();
    EXPECT_EQ(one.ask({"protection"}), "pixelShift\toff\nedgeJitter\ton\nidleDimming\ton\n");
    EXPECT_EQ(one.program().output(), "");
    EXPECT_EQ(two.program().output(), "");
    EXPECT_TRUE(LumatileProcess::isClean(one.program().stop()));
    EXPECT_TRUE(LumatileProcess::isClean(two.program().stop()));
}

}  // namespace
}  // namespace lumatile::desktop
