#include "platform/freedesktop/tiling/DesktopTilingSettings.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "Lumatile/DesktopTilingMonitor.h"
#include "tests/desktop/support/Deadline.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile::desktop {
namespace {

class DesktopTilingSettingsTest : public testing::Test {
protected:
    DesktopTilingSettings on(DesktopKind kind, bool isHeldBack = false) {
        return {[kind] {
                    return HostDesktop{kind, true};
                },
                {folder.path() / "home", {folder.path() / "system"}, {}},
                bus,
                isHeldBack};
    }

    TemporaryFolder folder;
    BusConnection bus{""};
};

TEST_F(DesktopTilingSettingsTest, aPlainWindowManagerHasNoTiling) {
    DesktopTilingSettings desktop = on(DesktopKind::other);
    EXPECT_LT(desktop.majorVersion(), 15);
    EXPECT_EQ(readTiling(desktop), SystemTiling{});
    EXPECT_FALSE(desktop.canSwitchOff());
    EXPECT_FALSE(desktop.switchOff());
    EXPECT_FALSE(desktop.canOpenSettings());
    EXPECT_FALSE(desktop.openSettings());
}

TEST_F(DesktopTilingSettingsTest, everyKnownDesktopHasTiling) {
    for (const DesktopKind kind : {DesktopKind::plasma, DesktopKind::gnome, DesktopKind::metacity,
                                   DesktopKind::cinnamon, DesktopKind::mate, DesktopKind::xfce}) {
        EXPECT_EQ(on(kind).majorVersion(), 15);
    }
}

TEST_F(DesktopTilingSettingsTest, asItComesPlasmaConflictsUntilItIsSwitchedOff) {
    DesktopTilingSettings desktop = on(DesktopKind::plasma);
    EXPECT_EQ(readTiling(desktop), (SystemTiling{true, true}));
    EXPECT_TRUE(desktop.canSwitchOff());
    EXPECT_TRUE(desktop.switchOff());
    EXPECT_FALSE(readTiling(desktop).conflictsWithDragToSnap());
}

TEST_F(DesktopTilingSettingsTest, whatIsHeldBackNeedsNoSwitchingOff) {
    DesktopTilingSettings desktop = on(DesktopKind::plasma, true);
    EXPECT_LT(desktop.majorVersion(), 15);
    EXPECT_FALSE(readTiling(desktop).conflictsWithDragToSnap());
    EXPECT_FALSE(desktop.canSwitchOff());
}

TEST_F(DesktopTilingSettingsTest, xfceThatCannotBeAskedCountsAsItComes) {
    DesktopTilingSettings desktop = on(DesktopKind::xfce);
    EXPECT_EQ(readTiling(desktop), (SystemTiling{true, true}));
    EXPECT_FALSE(desktop.canSwitchOff());
}

TEST_F(DesktopTilingSettingsTest, metacityIsReadThroughItsSchema) {
    DesktopTilingSettings desktop = on(DesktopKind::metacity);
    EXPECT_TRUE(desktop.switchOff());
    EXPECT_EQ(readTiling(desktop), SystemTiling{});
}

TEST_F(DesktopTilingSettingsTest, theSettingsPageIsStartedByItsEntry) {
    // Where the main function told the library to look for desktop entries.
    const std::filesystem::path entries =
        std::filesystem::path(std::getenv("XDG_DATA_HOME")) / "applications";
    std::filesystem::create_directories(entries);
    const std::filesystem::path pipe = folder.path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    // The page itself is not installed; the program that it is part of is.
    const std::filesystem::path entry = entries / "matecc.desktop";
    folder.write("entry",
                 "[Desktop Entry]\nType=Application\nName=Control Center\nExec=sh -c \"echo "
                 "opened > '" +
                     pipe.string() + "'\"\n");
    std::filesystem::copy_file(folder.path() / "entry", entry);

    DesktopTilingSettings desktop = on(DesktopKind::mate);
    EXPECT_TRUE(desktop.canOpenSettings());
    EXPECT_TRUE(desktop.openSettings());
    pollfd wait{reader, POLLIN, 0};
    ASSERT_EQ(poll(&wait, 1, Deadline::usual().milliseconds(60000)), 1);
    std::array<char, 16> text{};
    EXPECT_EQ(read(reader, text.data(), text.size()), 7);
    EXPECT_EQ(std::string(text.data()), "opened\n");
    close(reader);
    std::filesystem::remove(entry);
}

TEST_F(DesktopTilingSettingsTest, anEntryWhoseProgramIsMissingOpensNothing) {
    const std::filesystem::path entries =
        std::filesystem::path(std::getenv("XDG_DATA_HOME")) / "applications";
    std::filesystem::create_directories(entries);
    const std::filesystem::path entry = entries / "cinnamon-settings.desktop";
    folder.write("entry",
                 "[Desktop Entry]\nType=Application\nName=Settings\n"
                 "Exec=/no/such/program\n");
    std::filesystem::copy_file(folder.path() / "entry", entry);
    DesktopTilingSettings desktop = on(DesktopKind::cinnamon);
    EXPECT_FALSE(desktop.canOpenSettings());
    EXPECT_FALSE(desktop.openSettings());
    std::filesystem::remove(entry);
}

}  // namespace
}  // namespace lumatile::desktop
