#include "platform/freedesktop/login/AutostartEntry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "tests/support/FileSizeLimit.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile {
namespace {

using Status = LoginItem::Status;
using testing::HasSubstr;
using testing::Not;

/// A home and a system in a temporary folder, with the program installed.
class AutostartEntryTest : public testing::Test {
protected:
    AutostartEntryTest() {
        binary = folder / "bin dir/lumatile";
        std::filesystem::create_directories(binary.parent_path());
        std::ofstream(binary) << "#!/bin/sh\n";
        std::filesystem::permissions(binary, std::filesystem::perms::owner_all);
        folders.configuration = folder / "home";
        folders.systemConfigurations = {folder / "site", folder / "system"};
    }

    AutostartEntry entry(const std::string& session = "XFCE") { return {folders, binary, session}; }

    std::filesystem::path userFile() const {
        return folders.configuration / "autostart/lumatile.desktop";
    }

    static void write(const std::filesystem::path& path, const std::string& text) {
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }

    std::string userText() const {
        std::ifstream file(userFile());
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// An entry that starts the program, with further lines.
    std::string entryText(const std::string& further = "") const {
        return "[Desktop Entry]\nType=Application\nName=Lumatile\nExec=\"" + binary.string() +
               "\"\n" + further;
    }

    Status statusWith(const std::string& further, const std::string& session = "XFCE") {
        write(userFile(), entryText(further));
        return entry(session).status();
    }

    TemporaryFolder folder;
    XdgFolders folders;
    std::filesystem::path binary;
};

TEST_F(AutostartEntryTest, isNotRegisteredAtFirst) {
    EXPECT_EQ(entry().status(), Status::notRegistered);
    EXPECT_FALSE(std::filesystem::exists(folders.configuration));
}

TEST_F(AutostartEntryTest, registersTheRunningBinaryByItsAbsolutePath) {
    EXPECT_EQ(entry().registerItem(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::enabled);
    EXPECT_THAT(userText(), HasSubstr("\nExec=\"" + binary.string() + "\"\n"));
    EXPECT_THAT(userText(), HasSubstr("\nHidden=false\n"));
    EXPECT_THAT(userText(), HasSubstr("\nX-GNOME-Autostart-enabled=true\n"));
    EXPECT_THAT(userText(), testing::StartsWith("[Desktop Entry]\nType=Application\n"));
}

TEST_F(AutostartEntryTest, unregisteringLeavesNoFileOfOurOwn) {
    entry().registerItem();
    EXPECT_EQ(entry().unregisterItem(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::notRegistered);
    EXPECT_FALSE(std::filesystem::exists(userFile()));
    EXPECT_EQ(entry().unregisterItem(), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(userFile()));
}

TEST_F(AutostartEntryTest, whatOthersWroteStays) {
    write(userFile(), "# mine\n" + entryText("X-GNOME-Autostart-Delay=10\nComment[de]=Fenster\n"));
    EXPECT_EQ(entry().unregisterItem(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::notRegistered);
    EXPECT_THAT(userText(), HasSubstr("Hidden=true"));
    EXPECT_THAT(userText(), HasSubstr("X-GNOME-Autostart-enabled=false"));
    EXPECT_EQ(entry().registerItem(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::enabled);
    EXPECT_THAT(userText(), HasSubstr("# mine\n"));
    EXPECT_THAT(userText(), HasSubstr("X-GNOME-Autostart-Delay=10"));
    EXPECT_THAT(userText(), HasSubstr("Comment[de]=Fenster"));
    EXPECT_THAT(userText(), Not(HasSubstr("Hidden=true")));
}

TEST_F(AutostartEntryTest, honoursTheDesktopsOwnSwitches) {
    EXPECT_EQ(statusWith(""), Status::enabled);
    EXPECT_EQ(statusWith("Hidden=true\n"), Status::notRegistered);
    EXPECT_EQ(statusWith("Hidden=false\n"), Status::enabled);
    EXPECT_EQ(statusWith("X-GNOME-Autostart-enabled=false\n"), Status::requiresApproval);
    EXPECT_EQ(statusWith("X-GNOME-Autostart-enabled=true\n"), Status::enabled);
    EXPECT_EQ(statusWith("X-MATE-Autostart-enabled=false\n"), Status::requiresApproval);
    // Not a boolean, so not a switch.
    EXPECT_EQ(statusWith("Hidden=perhaps\nX-GNOME-Autostart-enabled=\n"), Status::enabled);
}

TEST_F(AutostartEntryTest, anEntryForOtherSessionsDoesNotStartInThisOne) {
    EXPECT_EQ(statusWith("OnlyShowIn=GNOME;KDE;\n"), Status::requiresApproval);
    EXPECT_EQ(statusWith("OnlyShowIn=GNOME;XFCE;\n"), Status::enabled);
    EXPECT_EQ(statusWith("NotShowIn=XFCE;\n"), Status::requiresApproval);
    EXPECT_EQ(statusWith("NotShowIn=KDE;\n"), Status::enabled);
    EXPECT_EQ(statusWith("OnlyShowIn=GNOME;\n", "ubuntu:GNOME"), Status::enabled);

    write(userFile(), entryText("OnlyShowIn=GNOME;\n"));
    EXPECT_EQ(entry().registerItem(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::enabled);
}

TEST_F(AutostartEntryTest, anEntryWhoseProgramIsGoneIsNotFound) {
    entry().registerItem();
    std::filesystem::remove(binary);
    EXPECT_EQ(entry().status(), Status::notFound);
}

TEST_F(AutostartEntryTest, anEntryThatStartsNothingIsNotFound) {
    for (const std::string& text :
         {std::string(""), std::string("[Desktop Entry]\n"),
          std::string("[Desktop Entry]\nType=Application\nExec=\n"),
          std::string("[Desktop Entry]\nType=Application\nExec=\"unclosed\n"),
          std::string("[Desktop Entry]\nType=Link\nExec=/bin/sh\n"),
          std::string("[Desktop Entry]\nType=Application\nExec=./relative\n"),
          std::string("[Desktop Entry]\nType=Application\nExec=/bin/sh\nTryExec=/absent\n"),
          std::string("[Other]\nType=Application\nExec=/bin/sh\n"),
          std::string(1, '\0') + "[Desktop Entry]\nType=Application\nExec=/bin/sh\n"}) {
        write(userFile(), text);
        EXPECT_EQ(entry().status(), Status::notFound) << text;
        EXPECT_EQ(entry().registerItem(), std::nullopt) << text;
        EXPECT_EQ(entry().status(), Status::enabled) << text;
    }
}

TEST_F(AutostartEntryTest, aProgramIsLookedForAlongThePath) {
    write(userFile(), "[Desktop Entry]\nType=Application\nExec=sh -c true\n");
    EXPECT_EQ(entry().status(), Status::enabled);
    write(userFile(), "[Desktop Entry]\nType=Application\nExec=no-such-program-here\n");
    EXPECT_EQ(entry().status(), Status::notFound);
}

TEST_F(AutostartEntryTest, theEntryForEverybodyHoldsWhereTheUserHasNone) {
    write(folder / "system/autostart/lumatile.desktop", entryText());
    EXPECT_EQ(entry().status(), Status::enabled);
    write(folder / "site/autostart/lumatile.desktop", entryText("Hidden=true\n"));
    EXPECT_EQ(entry().status(), Status::notRegistered);
    write(userFile(), entryText());
    EXPECT_EQ(entry().status(), Status::enabled);
}

TEST_F(AutostartEntryTest, unregisteringShadowsTheEntryForEverybody) {
    const auto everybodys = folder / "system/autostart/lumatile.desktop";
    write(everybodys, entryText());
    EXPECT_EQ(entry().unregisterItem(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::notRegistered);
    EXPECT_THAT(userText(), HasSubstr("Hidden=true"));
    EXPECT_TRUE(std::filesystem::exists(everybodys));

    EXPECT_EQ(entry().registerItem(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::enabled);
    // Its own text, but without it the other one would hold.
    EXPECT_EQ(entry().unregisterItem(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::notRegistered);
}

TEST_F(AutostartEntryTest, aFolderInItsPlaceIsAFailureThatIsTold) {
    std::filesystem::create_directories(userFile());
    EXPECT_EQ(entry().status(), Status::notFound);
    EXPECT_THAT(entry().registerItem().value_or(""), HasSubstr(userFile().string()));
    EXPECT_THAT(entry().unregisterItem().value_or(""), HasSubstr(userFile().string()));
}

TEST_F(AutostartEntryTest, aFileInPlaceOfTheFolderIsAFailureThatIsTold) {
    write(folders.configuration / "autostart", "");
    EXPECT_EQ(entry().status(), Status::notRegistered);
    EXPECT_THAT(entry().registerItem().value_or(""), HasSubstr("autostart"));
    EXPECT_EQ(entry().status(), Status::notRegistered);
}

TEST_F(AutostartEntryTest, aPipeInItsPlaceIsNotWaitedFor) {
    std::filesystem::create_directories(userFile().parent_path());
    ASSERT_EQ(mkfifo(userFile().c_str(), S_IRUSR | S_IWUSR), 0);
    EXPECT_EQ(entry().status(), Status::notFound);
    EXPECT_TRUE(entry().registerItem());
}

TEST_F(AutostartEntryTest, aFullDiskLeavesTheEntryAsItWas) {
    write(userFile(), entryText("Hidden=true\n"));
    const std::string before = userText();
    {
        const FileSizeLimit full(1);
        EXPECT_TRUE(entry().registerItem());
    }
    EXPECT_EQ(userText(), before);
    EXPECT_EQ(entry().status(), Status::notRegistered);
}

TEST_F(AutostartEntryTest, anEntryTooLongIsReplaced) {
    write(userFile(), entryText(std::string(KeyFileText::maximumBytes, '#')));
    EXPECT_EQ(entry().status(), Status::notFound);
    EXPECT_EQ(entry().registerItem(), std::nullopt);
    EXPECT_EQ(entry().status(), Status::enabled);
    EXPECT_LT(std::filesystem::file_size(userFile()), 1024U);
}

TEST_F(AutostartEntryTest, aLinkIsFollowed) {
    const auto target = folder / "dotfiles/lumatile.desktop";
    write(target, entryText("X-Delay=1\n"));
    std::filesystem::create_directories(userFile().parent_path());
    std::filesystem::create_symlink(target, userFile());
    EXPECT_EQ(entry().unregisterItem(), std::nullopt);
    EXPECT_TRUE(std::filesystem::is_symlink(userFile()));
    EXPECT_EQ(entry().status(), Status::notRegistered);
}

TEST_F(AutostartEntryTest, aProgramThatNoEntryCanNameIsRefused) {
    for (const char* path : {"", "relative/lumatile", "/line\nbreak"}) {
        AutostartEntry other(folders, path, "XFCE");
        EXPECT_TRUE(other.registerItem()) << path;
    }
    EXPECT_FALSE(std::filesystem::exists(userFile()));
}

TEST_F(AutostartEntryTest, aUserWithoutAHomeIsTold) {
    folders.configuration.clear();
    EXPECT_EQ(entry().status(), Status::notRegistered);
    EXPECT_EQ(entry().registerItem(), "the user has no folder for settings");
}

TEST_F(AutostartEntryTest, theRunningBinaryIsThisTest) {
    EXPECT_EQ(AutostartEntry::runningBinary(), std::filesystem::canonical("/proc/self/exe"));
}

}  // namespace
}  // namespace lumatile
