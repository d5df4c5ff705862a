#include "platform/qt/SettingsWatch.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/qt/QSettingsPreferences.h"
#include "platform/qt/QtRunLoop.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile {
namespace {

class SilentLog final : public SystemLog {
public:
    void write(std::string_view, std::string_view) override {}
};

class SettingsWatchTest : public testing::Test {
protected:
    std::string path() const { return (folder_ / "lumatile/lumatile.conf").string(); }

    QSettingsPreferences preferences() { return {log_, runLoop_, path()}; }

    /// Runs the loop until something has been told of.
    bool isTold() {
        constexpr std::chrono::seconds patience(20);
        const int before = told_;
        QTimer limit;
        limit.setSingleShot(true);
        limit.start(patience);
        while (told_ == before && limit.isActive()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return told_ != before;
    }

    /// What arrived beside what was waited for.
    void settle() { QCoreApplication::processEvents(); }

    int told_ = 0;

private:
    int argumentCount_ = 1;
    std::string name_ = "test";
    std::array<char*, 2> arguments_{name_.data(), nullptr};
    QCoreApplication application_{argumentCount_, arguments_.data()};
    QtRunLoop runLoop_;
    TemporaryFolder folder_;
    SilentLog log_;
};

TEST_F(SettingsWatchTest, tellsOfAChangeThatAnotherProcessMade) {
    QSettingsPreferences ours = preferences();
    const auto watch = ours.observe([&] { ++told_; });
    QSettingsPreferences others = preferences();
    others.setBoolean("dragToSnapEnabled", false);
    ASSERT_TRUE(isTold()) << "the file is made";
    EXPECT_EQ(ours.boolean("dragToSnapEnabled"), false);
    settle();
    others.setBoolean("dragToSnapEnabled", true);
    ASSERT_TRUE(isTold()) << "the file is replaced";
    EXPECT_EQ(ours.boolean("dragToSnapEnabled"), true);
}

TEST_F(SettingsWatchTest, tellsOfAnEditInPlaceAlsoAfterTheFileWasReplaced) {
    QSettingsPreferences ours = preferences();
    ours.setBoolean("dragToSnapEnabled", true);
    const auto watch = ours.observe([&] { ++told_; });
    ours.setBoolean("dragToSnapEnabled", false);
    ASSERT_TRUE(isTold());
    while (ours.boolean("dragToSnapEnabled") != true) {
        settle();
        std::ofstream(path()) << "[General]\ndragToSnapEnabled=true\n";
        ASSERT_TRUE(isTold());
    }
}

TEST_F(SettingsWatchTest, tellsThatTheFileWasTakenAway) {
    QSettingsPreferences ours = preferences();
    ours.setBoolean("dragToSnapEnabled", false);
    settle();
    const auto watch = ours.observe([&] { ++told_; });
    std::filesystem::remove(path());
    ASSERT_TRUE(isTold());
    EXPECT_EQ(ours.boolean("dragToSnapEnabled"), std::nullopt);
}

TEST_F(SettingsWatchTest, tellsNothingOnceItIsGone) {
    QSettingsPreferences ours = preferences();
    auto watch = ours.observe([&] { ++told_; });
    watch.reset();
    ours.setBoolean("dragToSnapEnabled", false);
    settle();
    EXPECT_EQ(told_, 0);
}

TEST_F(SettingsWatchTest, isHarmlessWhereThereCanBeNoFolder) {
    std::ofstream(std::filesystem::path(path()).parent_path().string()) << "a file";
    QSettingsPreferences ours = preferences();
    const auto watch = ours.observe([&] { ++told_; });
    settle();
    EXPECT_EQ(told_, 0);
    EXPECT_EQ(ours.boolean("dragToSnapEnabled"), std::nullopt);
}

}  // namespace
}  // namespace lumatile
