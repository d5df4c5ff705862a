#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/unit/platform/qt/PreferencesDesk.h"

// Files that others have damaged, or in which they keep odd things.

namespace lumatile {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

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
    const std::string text = readFile(file_);
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
        EXPECT_EQ(readFile(file_), text);
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
    EXPECT_EQ(readFile(file_), nested);
    // Once it is mended everything goes on.
    write(file_, "[General]\ncommands=@ByteArray([1])\n");
    EXPECT_EQ(preferences_.bytes("commands"), "[1]");
    preferences_.setBoolean("dragToSnapEnabled", true);
    EXPECT_EQ(onDisk().bytes("oledSettings"), "{}");
}

TEST_F(QSettingsPreferencesTest, aFileCutOffAnywhereStillTakesChanges) {
    preferences_.setBytes("commands", "[{\"name\":\"\\u00e4\\n\x01\"}]");
    preferences_.setBoolean("dragToSnapEnabled", true);
    const std::string whole = readFile(file_);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        write(file_, whole.substr(0, length));
        preferences_.bytes("commands");
        preferences_.setBytes("oledSettings", "{}");
        EXPECT_EQ(onDisk().bytes("oledSettings"), "{}") << length;
    }
}

}  // namespace
}  // namespace lumatile
