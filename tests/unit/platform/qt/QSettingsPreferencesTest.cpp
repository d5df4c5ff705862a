#include "platform/qt/QSettingsPreferences.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sys/stat.h>

#include <QtGlobal>

#include <filesystem>
#include <string>

#include "tests/unit/platform/qt/PreferencesDesk.h"

namespace lumatile {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

mode_t modeOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

TEST_F(QSettingsPreferencesTest, nothingIsStoredAtFirst) {
    EXPECT_EQ(preferences_.bytes("commands"), std::nullopt);
    EXPECT_EQ(preferences_.boolean("dragToSnapEnabled"), std::nullopt);
    EXPECT_FALSE(fs::exists(file_.parent_path()));
}

TEST_F(QSettingsPreferencesTest, storesAtOnce) {
    preferences_.setBytes("commands", R"([{"id":"A","axis":"horizontal"}])");
    EXPECT_EQ(onDisk().bytes("commands"), R"([{"id":"A","axis":"horizontal"}])");
    preferences_.setBoolean("dragToSnapEnabled", false);
    EXPECT_EQ(onDisk().boolean("dragToSnapEnabled"), false);
    EXPECT_EQ(onDisk().bytes("commands"), R"([{"id":"A","axis":"horizontal"}])");
    preferences_.setBoolean("dragToSnapEnabled", true);
    EXPECT_EQ(onDisk().boolean("dragToSnapEnabled"), true);
    EXPECT_THAT(log_.lines, IsEmpty());
    EXPECT_THAT(readFile(file_), AllOf(HasSubstr("commands=\"@ByteArray("),
                                       HasSubstr("\ndragToSnapEnabled=true\n")));
}

TEST_F(QSettingsPreferencesTest, whatIsRemovedIsGoneFromTheFile) {
    preferences_.setBytes("commands", "[1]");
    preferences_.setBytes("__ts", Bytes("\0\x80\xff)\n\"\\;", 8));
    preferences_.setBoolean("dragToSnapEnabled", false);
    EXPECT_EQ(onDisk().bytes("__ts"), Bytes("\0\x80\xff)\n\"\\;", 8));
    preferences_.remove("commands");
    EXPECT_FALSE(preferences_.bytes("commands"));
    EXPECT_FALSE(onDisk().bytes("commands"));
    EXPECT_THAT(readFile(file_), testing::Not(HasSubstr("commands")));
    preferences_.remove("dragToSnapEnabled");
    EXPECT_FALSE(onDisk().boolean("dragToSnapEnabled"));
    EXPECT_EQ(onDisk().bytes("__ts"), Bytes("\0\x80\xff)\n\"\\;", 8));
    preferences_.setBytes("commands", "[2]");
    EXPECT_EQ(onDisk().bytes("commands"), "[2]");
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(QSettingsPreferencesTest, theLastValueCanBeRemoved) {
    preferences_.setBytes("commands", "[1]");
    preferences_.remove("commands");
    EXPECT_EQ(readFile(file_), "");
    EXPECT_FALSE(preferences_.bytes("commands"));
    preferences_.remove("commands");
    EXPECT_THAT(log_.lines, IsEmpty());
    preferences_.setBytes("commands", "[2]");
    EXPECT_EQ(onDisk().bytes("commands"), "[2]");
}

TEST_F(QSettingsPreferencesTest, liesInTheUsersConfigurationFolder) {
    const QByteArray former = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder_.path().string()));
    {
        QSettingsPreferences preferences(log_, preferences_.runLoop());
        preferences.setBytes("commands", "[]");
        EXPECT_EQ(preferences.bytes("commands"), "[]");
    }
    qputenv("XDG_CONFIG_HOME", former);
    EXPECT_THAT(readFile(folder_.path() / "lumatile" / "lumatile.conf"),
                HasSubstr("commands=@ByteArray([])"));
}

TEST_F(QSettingsPreferencesTest, isTheUsersAlone) {
    const mode_t former = umask(0);
    preferences_.setBytes("commands", "[]");
    EXPECT_EQ(umask(former), 0U);
    EXPECT_EQ(modeOf(file_), 0600U);
    EXPECT_EQ(modeOf(file_.parent_path()), 0700U);
    chmod(file_.c_str(), 0644);
    preferences_.setBytes("commands", "[1]");
    EXPECT_EQ(modeOf(file_), 0600U);
}

TEST_F(QSettingsPreferencesTest, leavesAFolderThatWasThereAsItIs) {
    fs::create_directory(file_.parent_path());
    chmod(file_.parent_path().c_str(), 0755);
    preferences_.setBytes("commands", "[]");
    EXPECT_EQ(modeOf(file_.parent_path()), 0755U);
    EXPECT_EQ(modeOf(file_), 0600U);
}

TEST_F(QSettingsPreferencesTest, aLinkToAFileElsewhereStays) {
    const fs::path elsewhere = folder_.path() / "elsewhere" / "settings";
    write(elsewhere, "[General]\ncommands=@ByteArray(old)\n");
    fs::create_directories(file_.parent_path());
    fs::create_symlink(elsewhere, file_);
    EXPECT_EQ(preferences_.bytes("commands"), "old");
    preferences_.setBytes("commands", "[1]");
    EXPECT_EQ(preferences_.bytes("commands"), "[1]");
    EXPECT_TRUE(fs::is_symlink(file_));
    EXPECT_THAT(readFile(elsewhere), HasSubstr("commands=@ByteArray([1])\n"));
}

TEST_F(QSettingsPreferencesTest, aLinkToAFileThatIsNotThereYetStays) {
    const fs::path elsewhere = folder_.path() / "elsewhere" / "settings";
    fs::create_directories(elsewhere.parent_path());
    fs::create_directories(file_.parent_path());
    fs::create_symlink("../elsewhere/settings", file_);
    EXPECT_EQ(preferences_.bytes("commands"), std::nullopt);
    preferences_.setBytes("commands", "[1]");
    EXPECT_THAT(log_.lines, IsEmpty());
    EXPECT_TRUE(fs::is_symlink(file_));
    EXPECT_THAT(readFile(elsewhere), HasSubstr("commands=@ByteArray([1])\n"));
    EXPECT_EQ(preferences_.bytes("commands"), "[1]");
}

TEST_F(QSettingsPreferencesTest, everyByteValueComesBack) {
    Bytes all;
    for (int round = 0; round < 3; ++round) {
        for (int value = 0; value < 256; ++value) {
            all += static_cast<char>(round == 1 ? 255 - value : value);
        }
        all += "0123456789abcdefABCDEF\\x41\\n\"';,=%#[]@()";
    }
    preferences_.setBytes("commands", all);
    EXPECT_EQ(onDisk().bytes("commands"), all);
    preferences_.setBytes("commands", "");
    EXPECT_EQ(onDisk().bytes("commands"), "");
    for (const char alone :
         {'\0', '\n', '\r', '"', '\\', ';', ',', '=', '@', ' ', '\x7f', '\xff'}) {
        preferences_.setBytes("commands", Bytes(1, alone));
        EXPECT_EQ(onDisk().bytes("commands"), Bytes(1, alone)) << int{alone};
    }
}

RC_GTEST_FIXTURE_PROP(QSettingsPreferencesTest, anyBytesComeBack, (const Bytes& value)) {
    preferences_.setBytes("commands", value);
    RC_ASSERT(onDisk().bytes("commands") == value);
}

TEST_F(QSettingsPreferencesTest, theLongestListComesBack) {
    // As much as a list of commands may be.
    constexpr std::size_t length = std::size_t{3} * 1024 * 1024;
    Bytes value = "[";
    while (value.size() < length) {
        value += R"({"column":12,"customName":"Mine","row":3},)";
    }
    preferences_.setBytes("commands", value);
    EXPECT_EQ(onDisk().bytes("commands"), value);
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(QSettingsPreferencesTest, onlyTheTextsTrueAndFalseAreBooleans) {
    write(file_,
          "[General]\na=true\nb=false\nc=True\nd=1\ne=0\nf=yes\ng=\nh=TRUE\ni=\"true \"\n"
          "j=@ByteArray(true)\nk=true, false\nl=\"false\"\n");
    EXPECT_EQ(preferences_.boolean("a"), true);
    EXPECT_EQ(preferences_.boolean("b"), false);
    for (const char* key : {"c", "d", "e", "f", "g", "h", "i", "j", "k", "missing"}) {
        EXPECT_EQ(preferences_.boolean(key), std::nullopt) << key;
    }
    EXPECT_EQ(preferences_.boolean("l"), false);
}

TEST_F(QSettingsPreferencesTest, aValueOfAnotherTypeReadsAsAbsentAndStays) {
    preferences_.setBytes("commands", "[]");
    preferences_.setBoolean("dragToSnapEnabled", true);
    EXPECT_EQ(preferences_.boolean("commands"), std::nullopt);
    EXPECT_EQ(preferences_.bytes("dragToSnapEnabled"), std::nullopt);
    EXPECT_EQ(onDisk().boolean("commands"), std::nullopt);
    EXPECT_EQ(onDisk().bytes("dragToSnapEnabled"), std::nullopt);
    EXPECT_EQ(onDisk().bytes("commands"), "[]");
    EXPECT_EQ(onDisk().boolean("dragToSnapEnabled"), true);
    // Bytes that read "true" are bytes.
    preferences_.setBytes("commands", "true");
    EXPECT_EQ(onDisk().boolean("commands"), std::nullopt);
    EXPECT_EQ(onDisk().bytes("commands"), "true");
}

TEST_F(QSettingsPreferencesTest, textsAndNumbersAreNoBytes) {
    write(file_, "[General]\na=[]\nb=17\nc=one, two\nd=@Point(1 2)\ne=@Invalid()\n");
    for (const char* key : {"a", "b", "c", "d", "e"}) {
        EXPECT_EQ(preferences_.bytes(key), std::nullopt) << key;
    }
}

TEST_F(QSettingsPreferencesTest, unknownKeysSurvive) {
    write(file_,
          "[General]\nlater=a thing of the next version\nnumber=42\ncommands=@ByteArray(old)\n\n"
          "[Window]\nsize=@Size(800 600)\n");
    preferences_.setBytes("commands", "[]");
    const std::string text = readFile(file_);
    EXPECT_THAT(text, HasSubstr("later=a thing of the next version\n"));
    EXPECT_THAT(text, HasSubstr("number=42\n"));
    EXPECT_THAT(text, HasSubstr("[Window]\nsize=@Size(800 600)\n"));
    EXPECT_EQ(onDisk().bytes("commands"), "[]");
}

TEST_F(QSettingsPreferencesTest, aChangeByAnotherProcessIsSeen) {
    preferences_.setBytes("commands", "[1]");
    preferences_.setBytes("oledSettings", "{}");
    write(file_, "[General]\ncommands=\"@ByteArray([1,2,3])\"\n");
    EXPECT_EQ(preferences_.bytes("commands"), "[1,2,3]");
    EXPECT_EQ(preferences_.bytes("oledSettings"), std::nullopt);
    fs::remove(file_);
    EXPECT_EQ(preferences_.bytes("commands"), std::nullopt);
}

TEST_F(QSettingsPreferencesTest, aChangeIsMergedIntoWhatAnotherProcessWrote) {
    preferences_.setBytes("commands", "[1]");
    preferences_.setBytes("oledSettings", "{}");
    EXPECT_EQ(preferences_.bytes("commands"), "[1]");
    write(file_,
          "[General]\ncommands=\"@ByteArray([1,2,3])\"\nnew=thing\noledSettings=@ByteArray({"
          "\\\"a\\\":"
          "1})\n");
    preferences_.setBytes("oledSettings", "{}");
    EXPECT_EQ(onDisk().bytes("commands"), "[1,2,3]");
    EXPECT_EQ(onDisk().bytes("oledSettings"), "{}");
    EXPECT_THAT(readFile(file_), HasSubstr("new=thing\n"));
}

TEST_F(QSettingsPreferencesTest, twoOfOneFileAgree) {
    PatientPreferences other(log_, file_);
    preferences_.setBytes("commands", "[1]");
    EXPECT_EQ(other.bytes("commands"), "[1]");
    other.setBoolean("dragToSnapEnabled", false);
    EXPECT_EQ(preferences_.boolean("dragToSnapEnabled"), false);
    EXPECT_EQ(onDisk().bytes("commands"), "[1]");
}

}  // namespace
}  // namespace lumatile
