#include "tests/desktop/support/VainWaits.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <array>

namespace lumatile::desktop {
namespace {

TEST(VainWaits, areThoseThatRunOut) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    const auto [readEnd, writeEnd] = ends;
    const auto wait = [descriptor = readEnd](int milliseconds) {
        pollfd readable{descriptor, POLLIN, 0};
        poll(&readable, 1, milliseconds);
    };
    EXPECT_EQ(vainSecondsFor([&] {
                  wait(20);
                  wait(0);
                  wait(5);
              }),
              0.025);
    ASSERT_EQ(write(writeEnd, "x", 1), 1);
    EXPECT_EQ(vainSecondsFor([&] { wait(1000); }), 0) << "there is something to read";
    close(readEnd);
    close(writeEnd);
}

}  // namespace
}  // namespace lumatile::desktop
