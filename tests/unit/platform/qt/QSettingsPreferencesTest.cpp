#include "platform/qt/QSettingsPreferences.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtGlobal>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace lumatile {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class RecordedLog final : public SystemLog {
public:
    void write(std::string_view type, std::string_view message) override {
        lines.push_back(std::string(type) + ": " + std::string(message));
    }

    std::vector<std::string> lines;
};

class Folder {
public:
    Folder() {
        std::string name = (fs::temp_directory_path() / "lumatile-preferences-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no folder");
        }
        path_ = name;
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() { fs::remove_all(path_); }

    const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

std::string contents(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// What another process, an editor for one, makes of the file.
void write(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

mode_t modeOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

/// A disk on which no file may grow beyond a size.
class FullDisk {
public:
    explicit FullDisk(rlim_t size) : formerHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
        EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &former_), 0);
        rlimit limit = former_;
        limit.rlim_cur = size;
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &former_);
        std::signal(SIGXFSZ, formerHandler_);
    }

private:
    rlimit former_{};
    void (*formerHandler_)(int);
};

class QSettingsPreferencesTest : public testing::Test {
protected:
    /// What is on the disk, as a process sees it that starts now: the toolkit remembers files by
    /// their names.
    QSettingsPreferences onDisk() {
        const fs::path copy = folder_.path() / ("copy" + std::to_string(++copies_) + ".conf");
        fs::copy_file(file_, copy);
        return {log_, copy.string()};
    }

    Folder folder_;
    fs::path file_ = folder_.path() / "lumatile" / "lumatile.conf";
    RecordedLog log_;
    QSettingsPreferences preferences_{log_, file_.string()};

private:
    int copies_ = 0;
};

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
    EXPECT_THAT(contents(file_), AllOf(HasSubstr("commands=\"@ByteArray("),
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
    EXPECT_THAT(contents(file_), testing::Not(HasSubstr("commands")));
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
    EXPECT_EQ(contents(file_), "");
    EXPECT_FALSE(preferences_.bytes("commands"));
    preferences_.remove("commands");
    EXPECT_THAT(log_.lines, IsEmpty());
    preferences_.setBytes("commands", "[2]");
    EXPECT_EQ(onDisk().bytes("commands"), "[2]");
}

TEST_F(QSettingsPreferencesTest, aRemovalThatTheDiskRefusedComesWithTheNextChange) {
    preferences_.setBytes("commands", "[1]");
    const std::string before = contents(file_);
    {
        const FullDisk full(0);
        preferences_.setBytes("oledSettings", "{}");
        preferences_.remove("commands");
        EXPECT_FALSE(preferences_.bytes("commands"));
        EXPECT_EQ(contents(file_), before);
    }
    EXPECT_THAT(log_.lines, SizeIs(2));
    preferences_.setBoolean("dragToSnapEnabled", true);
    EXPECT_FALSE(onDisk().bytes("commands"));
    EXPECT_EQ(onDisk().bytes("oledSettings"), "{}");
}

TEST_F(QSettingsPreferencesTest, liesInTheUsersConfigurationFolder) {
    const QByteArray former = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder_.path().string()));
    QSettingsPreferences preferences(log_);
    preferences.setBytes("commands", "[]");
    EXPECT_EQ(preferences.bytes("commands"), "[]");
    qputenv("XDG_CONFIG_HOME", former);
    EXPECT_THAT(contents(folder_.path() / "lumatile" / "lumatile.conf"),
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
    EXPECT_THAT(contents(elsewhere), HasSubstr("commands=@ByteArray([1])\n"));
}

// --- Types ---

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
    constexpr std::size_t length = std::size_t{16} * 1024 * 1024;
    // Control characters take the most room in the file.
    Bytes value(length, '\0');
    for (std::size_t i = 0; i < length; ++i) {
        value[i] = static_cast<char>(1 + i % 127);
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

// --- Other processes ---

TEST_F(QSettingsPreferencesTest, unknownKeysSurvive) {
    write(file_,
          "[General]\nlater=a thing of the next version\nnumber=42\ncommands=@ByteArray(old)\n\n"
          "[Window]\nsize=@Size(800 600)\n");
    preferences_.setBytes("commands", "[]");
    const std::string text = contents(file_);
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
    EXPECT_THAT(contents(file_), HasSubstr("new=thing\n"));
}

TEST_F(QSettingsPreferencesTest, twoOfOneFileAgree) {
    QSettingsPreferences other(log_, file_.string());
    preferences_.setBytes("commands", "[1]");
    EXPECT_EQ(other.bytes("commands"), "[1]");
    other.setBoolean("dragToSnapEnabled", false);
    EXPECT_EQ(preferences_.boolean("dragToSnapEnabled"), false);
    EXPECT_EQ(onDisk().bytes("commands"), "[1]");
}

// --- Disks that refuse ---

TEST_F(QSettingsPreferencesTest, aFullDiskLosesNothing) {
    preferences_.setBytes("commands", "[1]");
    preferences_.setBoolean("dragToSnapEnabled", true);
    const std::string before = contents(file_);
    const Bytes large(100000, 'x');
    {
        const FullDisk full(4096);
        preferences_.setBytes("commands", large);
        EXPECT_THAT(log_.lines,
                    ElementsAre(AllOf(StartsWith("Preferences: "), HasSubstr(file_.string()))));
        EXPECT_EQ(preferences_.bytes("commands"), large);
        EXPECT_EQ(preferences_.boolean("dragToSnapEnabled"), true);
        EXPECT_EQ(contents(file_), before);

        preferences_.setBoolean("dragToSnapEnabled", false);
        EXPECT_THAT(log_.lines, SizeIs(2));
        EXPECT_EQ(preferences_.boolean("dragToSnapEnabled"), false);
        EXPECT_EQ(preferences_.bytes("commands"), large);
        EXPECT_EQ(contents(file_), before);
    }
    // There is room again: the next change takes the others along.
    preferences_.setBytes("oledSettings", "{}");
    EXPECT_THAT(log_.lines, SizeIs(2));
    EXPECT_EQ(onDisk().bytes("commands"), large);
    EXPECT_EQ(onDisk().boolean("dragToSnapEnabled"), false);
    EXPECT_EQ(onDisk().bytes("oledSettings"), "{}");
    // Nothing is left lying about.
    EXPECT_THAT(std::vector<fs::path>(fs::directory_iterator(file_.parent_path()), {}),
                ElementsAre(file_));
}

TEST_F(QSettingsPreferencesTest, aDiskThatIsFullAtAnyPlaceLosesNothing) {
    preferences_.setBytes("commands", "[1]");
    preferences_.setBytes("oledSettings", "{}");
    const std::string before = contents(file_);
    const Bytes grown(150, 'x');
    // The least room in which the change fits; one byte less does not do.
    bool fitted = false;
    for (rlim_t room = 64; room < 400; ++room) {
        log_.lines.clear();
        {
            const FullDisk full(room);
            preferences_.setBytes("commands", grown);
        }
        if (log_.lines.empty()) {
            fitted = true;
            EXPECT_EQ(contents(file_).size(), room);
            break;
        }
        ASSERT_EQ(contents(file_), before) << room;
    }
    EXPECT_TRUE(fitted);
    EXPECT_EQ(onDisk().bytes("commands"), grown);
    EXPECT_EQ(onDisk().bytes("oledSettings"), "{}");
}

// Left by a process that was killed at the wrong moment; with a name in it, it would be told to be
// of a process that is gone.
TEST_F(QSettingsPreferencesTest, aLockWithoutANameHoldsUpOneSaveForAMomentAndNoneForLong) {
    write(file_.string() + ".lock", "");
    preferences_.setBytes("commands", "[1]");
    EXPECT_THAT(log_.lines, IsEmpty());
    EXPECT_EQ(onDisk().bytes("commands"), "[1]");
    EXPECT_FALSE(fs::exists(file_.string() + ".lock"));
}

TEST_F(QSettingsPreferencesTest, whatTheDiskRefusedIsOverwrittenByALaterValue) {
    preferences_.setBytes("commands", "[1]");
    {
        const FullDisk full(512);
        preferences_.setBytes("commands", Bytes(5000, 'x'));
        preferences_.setBytes("commands", "[2]");
    }
    EXPECT_THAT(log_.lines, SizeIs(1));
    EXPECT_EQ(onDisk().bytes("commands"), "[2]");
    EXPECT_EQ(preferences_.bytes("commands"), "[2]");
    // From now on the file is what counts again.
    write(file_, "[General]\ncommands=@ByteArray([by another])\n");
    EXPECT_EQ(preferences_.bytes("commands"), "[by another]");
}

TEST_F(QSettingsPreferencesTest, aChangeByAnotherProcessOnAFullDiskIsKept) {
    preferences_.setBytes("commands", "[1]");
    {
        const FullDisk full(512);
        preferences_.setBytes("commands", Bytes(5000, 'x'));
        write(file_, "[General]\nnew=thing\n");
        EXPECT_EQ(preferences_.bytes("commands"), Bytes(5000, 'x'));
    }
    preferences_.setBytes("oledSettings", "{}");
    EXPECT_THAT(contents(file_), HasSubstr("new=thing\n"));
    EXPECT_EQ(onDisk().bytes("commands"), Bytes(5000, 'x'));
    EXPECT_EQ(onDisk().bytes("oledSettings"), "{}");
}

TEST_F(QSettingsPreferencesTest, aFolderThatCannotBeMadeIsTriedAgain) {
    write(file_.parent_path(), "a file where the folder should be");
    preferences_.setBytes("commands", "[1]");
    EXPECT_THAT(log_.lines, ElementsAre(StartsWith("Preferences: ")));
    EXPECT_EQ(preferences_.bytes("commands"), "[1]");
    EXPECT_EQ(contents(file_.parent_path()), "a file where the folder should be");
    fs::remove(file_.parent_path());
    preferences_.setBytes("oledSettings", "{}");
    EXPECT_THAT(log_.lines, SizeIs(1));
    EXPECT_EQ(onDisk().bytes("commands"), "[1]");
    EXPECT_EQ(onDisk().bytes("oledSettings"), "{}");
}

TEST_F(QSettingsPreferencesTest, whatIsNoFileIsLeftAlone) {
    fs::create_directories(file_);  // A folder.
    EXPECT_EQ(preferences_.bytes("commands"), std::nullopt);
    preferences_.setBytes("commands", "[1]");
    EXPECT_EQ(preferences_.bytes("commands"), "[1]");
    EXPECT_THAT(log_.lines, SizeIs(1));
    fs::remove(file_);
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);  // To open it would block.
    EXPECT_EQ(preferences_.bytes("oledSettings"), std::nullopt);
    preferences_.setBytes("oledSettings", "{}");
    EXPECT_EQ(preferences_.bytes("oledSettings"), "{}");
    EXPECT_THAT(log_.lines, SizeIs(2));
    EXPECT_TRUE(fs::is_fifo(file_));
}

TEST_F(QSettingsPreferencesTest, anAbsurdlyLongFileIsNeitherReadNorOverwritten) {
    preferences_.setBytes("commands", "[1]");
    constexpr std::uintmax_t absurd = std::uintmax_t{4} << 30U;
    fs::resize_file(file_, absurd);  // A hole: takes no room.
    EXPECT_EQ(preferences_.bytes("commands"), std::nullopt);
    preferences_.setBytes("oledSettings", "{}");
    EXPECT_EQ(preferences_.bytes("oledSettings"), "{}");
    EXPECT_EQ(fs::file_size(file_), absurd);
    EXPECT_THAT(log_.lines, SizeIs(1));
}

// --- Damaged files ---

TEST_F(QSettingsPreferencesTest, aDamagedFileStillTakesChanges) {
    const std::vector<std::string> damaged = {
        "no key, no value",
        "[General\ncommands=@ByteArray([1])",
        "[General]\ncommands",
        "[General]\n=value\n==\n[]\n]\n",
        "[General]\ncommands=@ByteArray(",
        "[General]\ncommands=\"@ByteArray([1]",
        "[General]\ncommands=\\x",
        "[General]\ncommands=\\xffffffffffffffffffff",
        "[General]\ncommands=\\777777",
        "[General]\ncommands=a\\",
        "[General]\ncommands=%zz\n%zz=1\n%=2\n%U1=3",
        std::string("\0\0\0\0\0\0", 6),
        std::string(1000, '\xff'),
        std::string(100000, '['),
        std::string(100000, '\\'),
        std::string(100000, '"'),
        "\xef\xbb\xbf[General]\ncommands=@ByteArray([1])",
    };
    for (const std::string& text : damaged) {
        write(file_, text);
        preferences_.bytes("commands");
        preferences_.boolean("commands");
        preferences_.setBytes("commands", "[2]");
        EXPECT_EQ(preferences_.bytes("commands"), "[2]") << text.substr(0, 60);
        EXPECT_EQ(onDisk().bytes("commands"), "[2]") << text.substr(0, 60);
    }
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(QSettingsPreferencesTest, oddValuesOfOthersSurviveAndStopNothing) {
    write(file_,
          "[General]\nfloat=1.5\nlist=one, \"two, three\", "
          "@@four\n"
          "point=@Point(1 2)\nempty=@Invalid()\n"
          "%U4e2d\\deep\\key%20name=\xc3\xa4\n[%General]\ninner=1\n");
    preferences_.setBytes("commands", "[1]");
    preferences_.setBytes("commands", "[2]");
    EXPECT_THAT(log_.lines, IsEmpty());
    EXPECT_EQ(onDisk().bytes("commands"), "[2]");
    const std::string text = contents(file_);
    // In the form that the toolkit prefers.
    for (const char* line :
         {"float=1.5\n", "list=one, \"two, three\", @@four\n", "point=@Point(1 2)\n",
          "empty=@Invalid()\n", "[%U4E2D]\ndeep\\key%20name=\xc3\xa4\n", "[%General]\ninner=1\n"}) {
        EXPECT_THAT(text, HasSubstr(line));
    }
}

TEST_F(QSettingsPreferencesTest, serialisedValuesAreNeitherDecodedNorOverwritten) {
    const std::vector<std::string> serialised = {
        "[General]\ncommands=@Variant(garbage)",
        "[General]\ncommands=@Variant(\\0\\0\\0\\t\\xff\\xff\\xff\\xff)",
        "[General]\ncommands=@Variant(\\0\\0\\0\\f\\0\\x7f\\xff\\xff\\xff)",
        "[General]\ncommands=@DateTime(\\0\\0)",
    };
    for (const std::string& text : serialised) {
        log_.lines.clear();
        write(file_, text);
        EXPECT_EQ(preferences_.boolean("commands"), std::nullopt) << text;
        preferences_.setBytes("oledSettings", "{}");
        EXPECT_EQ(preferences_.bytes("oledSettings"), "{}") << text;
        EXPECT_THAT(log_.lines, ElementsAre(HasSubstr("left alone"))) << text;
        EXPECT_EQ(contents(file_), text);
    }
}

TEST_F(QSettingsPreferencesTest, valuesNestedWithoutEndStopNothing) {
    std::string nested = "[General]\ncommands=@Variant(";
    for (int level = 0; level < 1000000; ++level) {
        nested += "\\0\\0\\0\\x9\\0\\0\\0\\x1";  // A list of one, which is a list of one …
    }
    nested += ")\n";
    write(file_, nested);
    EXPECT_EQ(preferences_.bytes("commands"), std::nullopt);
    preferences_.setBytes("oledSettings", "{}");
    EXPECT_EQ(preferences_.bytes("oledSettings"), "{}");
    EXPECT_THAT(log_.lines, SizeIs(1));
    EXPECT_EQ(contents(file_), nested);
    // Once it is mended everything goes on.
    write(file_, "[General]\ncommands=@ByteArray([1])\n");
    EXPECT_EQ(preferences_.bytes("commands"), "[1]");
    preferences_.setBoolean("dragToSnapEnabled", true);
    EXPECT_EQ(onDisk().bytes("oledSettings"), "{}");
}

TEST_F(QSettingsPreferencesTest, aFileCutOffAnywhereStillTakesChanges) {
    preferences_.setBytes("commands", "[{\"name\":\"\\u00e4\\n\x01\"}]");
    preferences_.setBoolean("dragToSnapEnabled", true);
    const std::string whole = contents(file_);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        write(file_, whole.substr(0, length));
        preferences_.bytes("commands");
        preferences_.setBytes("oledSettings", "{}");
        EXPECT_EQ(onDisk().bytes("oledSettings"), "{}") << length;
    }
}

}  // namespace
}  // namespace lumatile
