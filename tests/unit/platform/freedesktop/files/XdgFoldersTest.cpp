#include "platform/freedesktop/files/XdgFolders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdlib.h>

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace lumatile {
namespace {

/// The environment as it was, once this has gone.
class FormerEnvironment {
public:
    FormerEnvironment() {
        for (const char* name :
             {"HOME", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "XDG_DATA_HOME", "XDG_DATA_DIRS"}) {
            const char* value = std::getenv(name);
            former_[name] = value == nullptr ? std::nullopt : std::optional<std::string>(value);
        }
    }
    FormerEnvironment(const FormerEnvironment&) = delete;
    FormerEnvironment& operator=(const FormerEnvironment&) = delete;
    ~FormerEnvironment() {
        for (const auto& [name, value] : former_) {
            if (value) {
                setenv(name.c_str(), value->c_str(), 1);
            } else {
                unsetenv(name.c_str());
            }
        }
    }

private:
    std::map<std::string, std::optional<std::string>> former_;
};

class XdgFoldersTest : public testing::Test {
protected:
    XdgFoldersTest() {
        unsetenv("XDG_CONFIG_HOME");
        unsetenv("XDG_CONFIG_DIRS");
        unsetenv("XDG_DATA_HOME");
        unsetenv("XDG_DATA_DIRS");
        set("HOME", "/home/me");
    }

    static void set(const char* name, const char* value) { setenv(name, value, 1); }

private:
    FormerEnvironment former_;
};

TEST_F(XdgFoldersTest, withoutVariablesTheyAreTheUsualOnes) {
    const XdgFolders folders = XdgFolders::fromEnvironment();
    EXPECT_EQ(folders.configuration, "/home/me/.config");
    EXPECT_THAT(folders.systemConfigurations, testing::ElementsAre("/etc/xdg"));
    EXPECT_THAT(folders.data,
                testing::ElementsAre("/home/me/.local/share", "/usr/local/share", "/usr/share"));
}

TEST_F(XdgFoldersTest, variablesNameOthers) {
    set("XDG_CONFIG_HOME", "/elsewhere");
    set("XDG_CONFIG_DIRS", "/one:/two");
    set("XDG_DATA_HOME", "/mine");
    set("XDG_DATA_DIRS", "/three:/four");
    const XdgFolders folders = XdgFolders::fromEnvironment();
    EXPECT_EQ(folders.configuration, "/elsewhere");
    EXPECT_THAT(folders.systemConfigurations, testing::ElementsAre("/one", "/two"));
    EXPECT_THAT(folders.data, testing::ElementsAre("/mine", "/three", "/four"));
}

TEST_F(XdgFoldersTest, relativePathsAreIgnored) {
    set("XDG_CONFIG_HOME", "relative");
    set("XDG_CONFIG_DIRS", "relative::/two:");
    const XdgFolders folders = XdgFolders::fromEnvironment();
    EXPECT_EQ(folders.configuration, "/home/me/.config");
    EXPECT_THAT(folders.systemConfigurations, testing::ElementsAre("/two"));
}

TEST_F(XdgFoldersTest, withoutAHomeTheUsersRecordNamesIt) {
    unsetenv("HOME");
    EXPECT_TRUE(XdgFolders::fromEnvironment().configuration.is_absolute());
}

}  // namespace
}  // namespace lumatile
