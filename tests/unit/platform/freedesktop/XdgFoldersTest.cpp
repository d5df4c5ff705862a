#include "platform/freedesktop/XdgFolders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdlib.h>

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace lumatile {
namespace {

/// Puts the environment back afterwards.
class XdgFoldersTest : public testing::Test {
protected:
    XdgFoldersTest() {
        for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS"}) {
            const char* value = std::getenv(name);
            former[name] = value == nullptr ? std::nullopt : std::optional<std::string>(value);
            unsetenv(name);
        }
        set("HOME", "/home/me");
    }
    XdgFoldersTest(const XdgFoldersTest&) = delete;
    XdgFoldersTest& operator=(const XdgFoldersTest&) = delete;
    ~XdgFoldersTest() override {
        for (const auto& [name, value] : former) {
            if (value) {
                set(name, *value);
            } else {
                unsetenv(name.c_str());
            }
        }
    }

    static void set(const std::string& name, const std::string& value) {
        setenv(name.c_str(), value.c_str(), 1);
    }

private:
    std::map<std::string, std::optional<std::string>> former;
};

TEST_F(XdgFoldersTest, withoutVariablesTheyAreTheUsualOnes) {
    const XdgFolders folders = XdgFolders::fromEnvironment();
    EXPECT_EQ(folders.configuration, "/home/me/.config");
    EXPECT_THAT(folders.systemConfigurations, testing::ElementsAre("/etc/xdg"));
}

TEST_F(XdgFoldersTest, variablesNameOthers) {
    set("XDG_CONFIG_HOME", "/elsewhere");
    set("XDG_CONFIG_DIRS", "/one:/two");
    const XdgFolders folders = XdgFolders::fromEnvironment();
    EXPECT_EQ(folders.configuration, "/elsewhere");
    EXPECT_THAT(folders.systemConfigurations, testing::ElementsAre("/one", "/two"));
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
