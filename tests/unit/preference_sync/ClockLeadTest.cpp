#include "preference_sync/ClockLead.h"

#include <gtest/gtest.h>

namespace lumatile {
namespace {

TEST(ClockLead, aMinuteIsNoneAndMoreIsSaid) {
    ClockLead lead;
    EXPECT_EQ(lead.seconds(), std::nullopt);
    lead.note(1060, 1000);
    EXPECT_EQ(lead.seconds(), std::nullopt);
    lead.note(1061, 1000);
    EXPECT_EQ(lead.seconds(), 61);
}

TEST(ClockLead, theLargestOneCountsUntilNothingIsOfTheFuture) {
    ClockLead lead;
    lead.note(4600, 1000);
    lead.note(4601, 2000);
    EXPECT_EQ(lead.seconds(), 3600) << "the same clock, seen later";
    lead.note(4601, 4601);
    EXPECT_EQ(lead.seconds(), std::nullopt);
    lead.note(0, 5000);
    EXPECT_EQ(lead.seconds(), std::nullopt);
}

}  // namespace
}  // namespace lumatile
