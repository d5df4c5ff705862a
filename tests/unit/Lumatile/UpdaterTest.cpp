#include "Lumatile/Updater.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace lumatile {
namespace {

using Events = std::vector<std::string>;

class RecordingController final : public UpdateController {
public:
    explicit RecordingController(Events& events) : events_(events) {}

    void start() override { events_.emplace_back("start"); }
    void checkForUpdates() override { events_.emplace_back("check"); }
    bool automaticallyChecksForUpdates() override { return checks_; }
    void setAutomaticallyChecksForUpdates(bool checks) override { checks_ = checks; }

private:
    Events& events_;
    bool checks_ = true;
};

class UpdaterTest : public testing::Test {
protected:
    Events events;
    Updater updater{[this] {
                        events.emplace_back("make");
                        return std::make_shared<RecordingController>(events);
                    },
                    [this] { events.emplace_back("activate"); }};
};

TEST_F(UpdaterTest, makesNothingBeforeTheFirstUse) { EXPECT_EQ(events, Events{}); }

TEST_F(UpdaterTest, theFirstUseStartsTheController) {
    updater.controller();
    EXPECT_EQ(events, (Events{"make", "start"}));
}

TEST_F(UpdaterTest, twoAccessesYieldTheSameController) {
    EXPECT_EQ(&updater.controller(), &updater.controller());
    EXPECT_EQ(events, (Events{"make", "start"}));
}

TEST_F(UpdaterTest, aCheckBringsTheProgramToTheFrontFirst) {
    updater.controller();
    events.clear();
    updater.checkForUpdates();
    EXPECT_EQ(events, (Events{"activate", "check"}));
}

TEST_F(UpdaterTest, aCheckMayBeTheFirstUse) {
    updater.checkForUpdates();
    EXPECT_EQ(events, (Events{"activate", "make", "start", "check"}));
}

TEST_F(UpdaterTest, theAutomaticChecksAreTheControllers) {
    EXPECT_TRUE(updater.automaticallyChecksForUpdates());
    updater.setAutomaticallyChecksForUpdates(false);
    EXPECT_FALSE(updater.automaticallyChecksForUpdates());
    EXPECT_FALSE(updater.controller().automaticallyChecksForUpdates());
    updater.controller().setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(updater.automaticallyChecksForUpdates());
}

}  // namespace
}  // namespace lumatile
