#include "Lumatile/SyncStatusText.h"

#include <gtest/gtest.h>

namespace lumatile {
namespace {

using Condition = SharedStoreStatus::Condition;

std::string timeText(double seconds) { return "at " + std::to_string(static_cast<int>(seconds)); }

TEST(SyncStatusText, saysWhenAndWithWhat) {
    SharedStoreStatus status;
    EXPECT_EQ(SyncStatusText::lastSynced(status, timeText), "Settings stay on this computer.");
    status.condition = Condition::notReachable;
    status.location = "/home/someone/Shared";
    EXPECT_EQ(SyncStatusText::lastSynced(status, timeText),
              "Not synced yet with /home/someone/Shared.");
    status.condition = Condition::current;
    status.lastSynced = 17;
    EXPECT_EQ(SyncStatusText::lastSynced(status, timeText),
              "Last synced at 17 with /home/someone/Shared.");
}

TEST(SyncStatusText, saysWhatFailed) {
    for (const Condition fine : {Condition::noLocation, Condition::current, Condition::sending}) {
        EXPECT_EQ(SyncStatusText::failure({fine, "", {}, "", 0}), "");
    }
    EXPECT_EQ(
        SyncStatusText::failure({Condition::notWritable, "", {}, "No space left", 0}),
        "The last change could not be written there and will be tried again (No space left).");
    EXPECT_EQ(SyncStatusText::failure({Condition::notReachable, "", {}, "", 0}),
              "The folder cannot be read; syncing begins as soon as it can.");
    for (const Condition failed : {Condition::tooLarge, Condition::damaged, Condition::missing}) {
        EXPECT_NE(SyncStatusText::failure({failed, "", {}, "", 0}), "");
    }
}

TEST(SyncStatusText, saysHowManyCopiesWerePutAside) {
    SharedStoreStatus status;
    EXPECT_EQ(SyncStatusText::copies(status), "");
    status.copiesPutAside = 1;
    EXPECT_EQ(SyncStatusText::copies(status),
              "1 copy from a collision was put aside; the newest settings are in use.");
    status.copiesPutAside = 2;
    EXPECT_EQ(SyncStatusText::copies(status),
              "2 copies from collisions were put aside; the newest settings are in use.");
}

TEST(SyncStatusText, saysWhatWasKeptAndWhere) {
    SharedStoreStatus status;
    status.copiesLocation = "~/Shared/copies";
    EXPECT_TRUE(SyncStatusText::kept(status).empty());
    status.hasKeptOwn = true;
    EXPECT_EQ(SyncStatusText::kept(status),
              std::vector<std::string>{
                  "An older change from this computer was kept in ~/Shared/copies."});
    status.hasKeptOthers = true;
    status.hasKeptUnusable = true;
    EXPECT_EQ(SyncStatusText::kept(status).size(), 3U);
    EXPECT_EQ(SyncStatusText::kept(status).at(1),
              "A change from another computer that was not used was kept in ~/Shared/copies.");
}

TEST(SyncStatusText, saysWhatItDoesNotUnderstandAndWhereThatIsKept) {
    SharedStoreStatus status;
    status.condition = Condition::notUsable;
    status.copiesLocation = "~/Shared/copies";
    EXPECT_NE(SyncStatusText::failure(status).find("stay in force"), std::string::npos);
    EXPECT_NE(SyncStatusText::failure(status).find("~/Shared/copies"), std::string::npos);
    EXPECT_FALSE(SyncStatusText::offersStartAnew(status));
}

TEST(SyncStatusText, saysByHowMuchAClockIsAhead) {
    SharedStoreStatus status;
    EXPECT_EQ(SyncStatusText::clocks(status), "");
    for (const auto& [seconds, text] : {std::pair{61.9, "1 min 1 s"},
                                        {120.0, "2 min"},
                                        {3'599.0, "59 min 59 s"},
                                        {3'780.0, "1 h 3 min"},
                                        {86'400.0, "1 d"},
                                        {90'000.0, "1 d 1 h"}}) {
        status.clockLead = seconds;
        EXPECT_EQ(SyncStatusText::clocks(status),
                  "A computer’s clock is " + std::string(text) +
                      " ahead of this one’s. Please set the clocks right.");
    }
}

TEST(SyncStatusText, offersToReplaceWhatCannotBeRead) {
    for (const Condition condition :
         {Condition::noLocation, Condition::notReachable, Condition::current, Condition::sending,
          Condition::notWritable, Condition::tooLarge}) {
        EXPECT_FALSE(SyncStatusText::offersStartAnew({condition, "", {}, "", 0}));
    }
    EXPECT_TRUE(SyncStatusText::offersStartAnew({Condition::damaged, "", {}, "", 0}));
    EXPECT_TRUE(SyncStatusText::offersStartAnew({Condition::missing, "", {}, "", 0}));
}

}  // namespace
}  // namespace lumatile
