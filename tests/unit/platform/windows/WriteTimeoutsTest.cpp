#include "platform/windows/WriteTimeouts.h"

#include <gtest/gtest.h>

namespace lumatile {
namespace {

TEST(WriteTimeouts, theShortestCounts) {
    WriteTimeouts timeouts;
    EXPECT_EQ(timeouts.of(std::nullopt, 7), WriteTimeouts::longest);
    timeouts.set(7, 0.1);
    EXPECT_EQ(timeouts.of(std::nullopt, 7), 0.1);
    EXPECT_EQ(timeouts.of(0.05, 7), 0.05);
    EXPECT_EQ(timeouts.of(0.2, 7), 0.1);
    EXPECT_EQ(timeouts.of(0.2, 8), 0.2);
    EXPECT_EQ(timeouts.of(0.2, std::nullopt), 0.2);
}

TEST(WriteTimeouts, nothingLengthensTheLongest) {
    WriteTimeouts timeouts;
    timeouts.set(7, 0.1);
    timeouts.set(7, 6);
    EXPECT_EQ(timeouts.of(6, 7), WriteTimeouts::longest);
}

TEST(WriteTimeouts, whoeverIsMorePatientStillMindsWhatIsSet) {
    WriteTimeouts timeouts;
    EXPECT_EQ(timeouts.of(std::nullopt, 7, 2), 2);
    EXPECT_EQ(timeouts.of(6, 7, 2), 2);
    timeouts.set(7, 0.1);
    EXPECT_EQ(timeouts.of(std::nullopt, 7, 2), 0.1);
}

}  // namespace
}  // namespace lumatile
