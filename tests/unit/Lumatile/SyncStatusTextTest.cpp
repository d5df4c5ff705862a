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
