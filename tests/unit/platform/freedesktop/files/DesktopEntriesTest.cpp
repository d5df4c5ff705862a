#include "platform/freedesktop/files/DesktopEntries.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "tests/support/TemporaryFolder.h"

namespace lumatile {
namespace {

class DesktopEntriesTest : public testing::Test {
protected:
    /// @param id a slash makes a folder
    void install(const std::string& folder, const std::string& id, const std::string& class_ = {}) {
        std::string text = "[Desktop Entry]\nType=Application\nName=Some Program\n";
        if (!class_.empty()) {
            text += "StartupWMClass=" + class_ + "\n";
        }
        root_.write(folder + "/" + id + ".desktop",
                    text + "\n[Desktop Action New]\nStartupWMClass=action\n");
        tick(folder);
    }

    /// Two changes within one tick of the file system's clock are not told apart by their times.
    void tick(const std::string& folder) {
        std::filesystem::last_write_time(
            root_ / folder,
            std::filesystem::file_time_type::clock::now() + std::chrono::seconds(++ticks_));
    }

    std::string idOf(const std::string& name) { return entries_.idOf(name); }

    TemporaryFolder root_;
    DesktopEntries entries_{{root_ / "mine", root_ / "system"}};

private:
    int ticks_ = 0;
};

TEST_F(DesktopEntriesTest, nameAProgramByItsIdInAnyLetters) {
    install("system", "org.example.Editor");
    install("system", "Slack");
    EXPECT_EQ(idOf("org.example.Editor"), "org.example.Editor");
    EXPECT_EQ(idOf("org.example.editor"), "org.example.Editor");
    EXPECT_EQ(idOf("slack"), "Slack");
    EXPECT_EQ(idOf("xlogo"), "xlogo") << "nobody has installed it";
    EXPECT_EQ(idOf("XLogo"), "XLogo");
    EXPECT_EQ(idOf("../Slack"), "../Slack");
    EXPECT_EQ(idOf(""), "");
}

TEST_F(DesktopEntriesTest, nameAProgramByTheClassThatItsEntryStates) {
    install("system", "debian-xterm", "XTerm");
    install("system", "xterm-like", "Other");
    EXPECT_EQ(idOf("xterm"), "debian-xterm");
    EXPECT_EQ(idOf("XTerm"), "debian-xterm");
    EXPECT_EQ(idOf("action"), "action") << "that is no class of the program";
    install("system", "other");
    EXPECT_EQ(idOf("Other"), "other") << "an id counts for more than a class";
}

TEST_F(DesktopEntriesTest, ofTheUserCountForMore) {
    install("system", "editor", "EditorOfAll");
    install("system", "viewer", "Shared");
    install("mine", "editor", "EditorOfMine");
    install("mine", "zoom", "Shared");
    EXPECT_EQ(idOf("editorofmine"), "editor");
    EXPECT_EQ(idOf("editorofall"), "editorofall") << "the user's replaces it";
    EXPECT_EQ(idOf("shared"), "zoom");
}

TEST_F(DesktopEntriesTest, inFoldersOfTheirOwnHaveThatInTheirId) {
    install("system", "kde/editor", "KEditor");
    tick("system");
    EXPECT_EQ(idOf("keditor"), "kde-editor");
}

TEST_F(DesktopEntriesTest, thatComeOrGoAreNoticedWithTheNextName) {
    install("system", "editor", "KEditor");
    EXPECT_EQ(idOf("keditor"), "editor");
    EXPECT_EQ(idOf("viewer"), "viewer");
    install("system", "org.example.Viewer", "Viewer");
    std::filesystem::remove(root_ / "system/editor.desktop");
    EXPECT_EQ(idOf("viewer"), "viewer") << "looked up already";
    EXPECT_EQ(idOf("another"), "another");
    EXPECT_EQ(idOf("viewer"), "org.example.Viewer");
    EXPECT_EQ(idOf("keditor"), "keditor");
}

TEST_F(DesktopEntriesTest, areReadAFewAtEachQuestion) {
    const std::size_t count = 2 * DesktopEntries::filesAtOnce;
    for (std::size_t number = 0; number < count; ++number) {
        const std::string name = std::to_string(1000 + number);
        install("system", "entry" + name, "class" + name);
    }
    const std::string last = std::to_string(1000 + count - 1);
    EXPECT_EQ(idOf("class1000"), "entry1000");
    EXPECT_EQ(idOf("entry" + last), "entry" + last) << "for this none has to be read";
    EXPECT_EQ(idOf("class" + last), "entry" + last) << "these are the rest";
}

TEST_F(DesktopEntriesTest, areNotFoundBeforeTheyHaveBeenRead) {
    const std::size_t count = 2 * DesktopEntries::filesAtOnce;
    for (std::size_t number = 0; number < count; ++number) {
        install("system", "entry" + std::to_string(1000 + number));
    }
    install("system", "zoom", "Zoomer");
    EXPECT_EQ(idOf("zoomer"), "zoomer");
    EXPECT_EQ(idOf("zoomer"), "zoomer");
    EXPECT_EQ(idOf("zoomer"), "zoom") << "the former answers were not the last word";
}

TEST_F(DesktopEntriesTest, thatAreNoFilesOrNoTextsAreLeftOut) {
    install("system", "zoom", "Zoomer");
    ASSERT_EQ(mkfifo((root_ / "system/pipe.desktop").c_str(), 0600), 0);
    std::filesystem::create_directory(root_ / "system/folder.desktop");
    std::filesystem::create_symlink("nowhere", root_ / "system/link.desktop");
    root_.write("system/zero.desktop", std::string("[Desktop Entry]\nStartupWMClass=Zero") + '\0');
    root_.write("system/large.desktop",
                "[Desktop Entry]\nStartupWMClass=Large\n" + std::string(2 << 20, '#'));
    EXPECT_EQ(idOf("zoomer"), "zoom");
    EXPECT_EQ(idOf("Folder"), "Folder");
    EXPECT_EQ(idOf("ZERO"), "zero") << "its name is its id all the same";
    EXPECT_EQ(idOf("LARGE"), "large");
}

TEST_F(DesktopEntriesTest, withoutAnyFolderEveryNameIsItsOwn) {
    EXPECT_EQ(idOf("Editor"), "Editor");
    EXPECT_EQ(DesktopEntries({}).idOf("Editor"), "Editor");
}

TEST(SmallLetters, areThoseOfASCII) {
    EXPECT_EQ(DesktopEntries::inSmallLetters("XLogo-2.0 Ä"), "xlogo-2.0 Ä");
}

}  // namespace
}  // namespace lumatile
