#include "platform/x11/X11GammaRamps.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/x11/X11Connection.h"
#include "tests/desktop/protection/GammaClient.h"
#include "tests/desktop/support/MonitorLayout.h"
#include "tests/desktop/support/PrivateServer.h"

namespace lumatile::desktop {
namespace {

using testing::Each;
using testing::IsEmpty;
using testing::Not;
using Ramp = std::vector<std::uint16_t>;

constexpr const char* property = "_LUMATILE_GAMMA_RAMPS";

/// Two monitors with gamma ramps of their own, and further controllers that drive nothing.
class GammaRampsTest : public testing::Test {
protected:
    GammaRampsTest()
        : server_(MonitorLayout::landscapeAndPortrait()),
          other_(server_.display()),
          first_(other_.controller(0)),
          second_(other_.controller(1)),
          idle_(other_.controller(2)) {
        other_.set(first_, other_.curved(first_));
        other_.set(second_, other_.warm(second_));
        firstOriginal_ = other_.ramp(first_);
        secondOriginal_ = other_.ramp(second_);
    }

    void SetUp() override {
        // What is restored must not be what would be there anyway.
        ASSERT_EQ(firstOriginal_, other_.curved(first_));
        ASSERT_EQ(secondOriginal_, other_.warm(second_));
        ASSERT_NE(firstOriginal_, secondOriginal_);
        ASSERT_EQ(firstOriginal_.size(), 3 * 256U);
        start();
    }

    void start() {
        ramps_.reset();  // Before the connection that it uses.
        connection_ = X11Connection::open(server_.display());
        ASSERT_TRUE(connection_);
        ramps_ = std::make_unique<X11GammaRamps>(*connection_);
    }

    /// Ends the connection without any of the program's own clearing up, as the kernel does with
    /// that of a killed program.
    void abandon() {
        connection_->synchronize();
        ASSERT_EQ(shutdown(connection_->fileDescriptor(), SHUT_RDWR), 0);
        // What is destroyed from here on can reach the server no more.
        connection_->synchronize();
        ASSERT_TRUE(connection_->isLost());
        ramps_.reset();
        connection_.reset();
    }

    void expectOriginals() {
        connection_->synchronize();
        EXPECT_EQ(other_.ramp(first_), firstOriginal_);
        EXPECT_EQ(other_.ramp(second_), secondOriginal_);
        EXPECT_THAT(other_.cardinals(other_.root(), property), IsEmpty());
    }

    void expectDimmed(double opacity) {
        EXPECT_EQ(other_.ramp(first_), GammaClient::dimmed(firstOriginal_, opacity));
        EXPECT_EQ(other_.ramp(second_), GammaClient::dimmed(secondOriginal_, opacity));
    }

    PrivateServer server_;
    GammaClient other_;
    std::uint32_t first_;
    std::uint32_t second_;
    std::uint32_t idle_;
    Ramp firstOriginal_;
    Ramp secondOriginal_;
    std::unique_ptr<X11Connection> connection_;
    std::unique_ptr<X11GammaRamps> ramps_;
};

TEST_F(GammaRampsTest, scalesTheRampOfEveryScreenThatIsOn) {
    const Ramp idleBefore = other_.ramp(idle_);
    for (const double opacity : {0.15, 0.3, 1.0, 0.9999, 0.00001, 0.5}) {
        SCOPED_TRACE(opacity);
        EXPECT_TRUE(ramps_->dim(opacity));
        connection_->synchronize();
        expectDimmed(opacity);
    }
    EXPECT_EQ(other_.ramp(idle_), idleBefore);
    ramps_->restore();
    expectOriginals();
}

TEST_F(GammaRampsTest, theEndOfTheProgramRestores) {
    ramps_->dim(0.3);
    connection_->synchronize();
    expectDimmed(0.3);
    ramps_.reset();
    expectOriginals();
}

TEST_F(GammaRampsTest, theOriginalsAreLaidDownOnlyWhileSomethingIsDimmed) {
    connection_->synchronize();
    EXPECT_THAT(other_.cardinals(other_.root(), property), IsEmpty());
    ramps_->dim(0.3);
    connection_->synchronize();
    const auto kept = other_.cardinals(other_.root(), property);
    // A version, and for each of two controllers its number, a size, and 3 × 256 steps in pairs.
    EXPECT_EQ(kept.size(), 1 + 2 * (2 + 3 * 256U / 2));
    ramps_->dim(0.4);
    connection_->synchronize();
    EXPECT_EQ(other_.cardinals(other_.root(), property), kept);
    ramps_->restore();
    expectOriginals();
}

TEST_F(GammaRampsTest, theNextStartRestoresWhatALostConnectionLeft) {
    ramps_->dim(0.3);
    abandon();
    expectDimmed(0.3);
    EXPECT_THAT(other_.cardinals(other_.root(), property), Not(IsEmpty()));
    start();
    expectOriginals();
}

TEST_F(GammaRampsTest, theNextStartRestoresWhatAKilledProgramLeft) {
    ramps_.reset();
    connection_.reset();
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const auto connection = X11Connection::open(server_.display());
        if (!connection) {
            _exit(1);
        }
        X11GammaRamps ramps(*connection);
        const bool dimmed = ramps.dim(0.15) && ramps.dim(0.3);
        connection->synchronize();
        _exit(dimmed ? 0 : 1);  // No destructor runs.
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    ASSERT_EQ(WEXITSTATUS(status), 0);
    expectDimmed(0.3);
    start();
    expectOriginals();
    // And it goes on from the true ramps.
    ramps_->dim(0.5);
    connection_->synchronize();
    expectDimmed(0.5);
}

TEST_F(GammaRampsTest, whatWasAllBlackComesBackToo) {
    ramps_->dim(1);
    abandon();
    EXPECT_THAT(other_.ramp(first_), Each(0));
    start();
    expectOriginals();
}

TEST_F(GammaRampsTest, aRampThatSomebodySetsMeanwhileIsTheNewOriginal) {
    ramps_->dim(0.3);
    connection_->synchronize();
    firstOriginal_ = other_.warm(first_);
    other_.set(first_, firstOriginal_);
    ramps_->dim(0.3);
    connection_->synchronize();
    expectDimmed(0.3);
    ramps_->restore();
    expectOriginals();
}

TEST_F(GammaRampsTest, aRampThatSomebodySetIsNotOverwrittenWhenClearing) {
    ramps_->dim(0.3);
    connection_->synchronize();
    secondOriginal_ = other_.curved(second_);
    other_.set(second_, secondOriginal_);
    ramps_->restore();
    expectOriginals();
}

TEST_F(GammaRampsTest, aRampThatSomebodySetAfterACrashIsNotOverwritten) {
    ramps_->dim(0.3);
    abandon();
    firstOriginal_ = other_.warm(first_);
    other_.set(first_, firstOriginal_);
    start();
    expectOriginals();
}

TEST_F(GammaRampsTest, aNewOriginalIsWhatANextStartRestores) {
    ramps_->dim(0.3);
    connection_->synchronize();
    firstOriginal_ = other_.warm(first_);
    other_.set(first_, firstOriginal_);
    ramps_->dim(0.4);
    abandon();
    expectDimmed(0.4);
    start();
    expectOriginals();
}

TEST_F(GammaRampsTest, aScreenThatIsSwitchedOffMeanwhileHasItsRampBack) {
    ramps_->dim(0.3);
    connection_->synchronize();
    server_.unplug(1);
    // Its controller keeps the dark ramp, for whatever is plugged in next.
    EXPECT_EQ(other_.ramp(second_), GammaClient::dimmed(secondOriginal_, 0.3));
    EXPECT_TRUE(ramps_->dim(0.4));
    ramps_->restore();
    expectOriginals();
}

TEST_F(GammaRampsTest, aScreenThatComesBackIsDimmedFromItsOwnOriginal) {
    ramps_->dim(0.3);
    connection_->synchronize();
    server_.unplug(1);
    ramps_->dim(0.5);
    connection_->synchronize();
    server_.arrange(MonitorLayout::landscapeAndPortrait());
    ramps_->dim(0.6);
    connection_->synchronize();
    expectDimmed(0.6);
    ramps_->restore();
    expectOriginals();
}

TEST_F(GammaRampsTest, aScreenThatIsPluggedInMeanwhileIsDimmedFromThenOn) {
    server_.unplug(1);
    ramps_->dim(0.3);
    connection_->synchronize();
    EXPECT_EQ(other_.ramp(first_), GammaClient::dimmed(firstOriginal_, 0.3));
    EXPECT_EQ(other_.ramp(second_), secondOriginal_);
    server_.arrange(MonitorLayout::landscapeAndPortrait());
    ramps_->dim(0.3);
    connection_->synchronize();
    expectDimmed(0.3);
    // It is restored after a crash as well.
    abandon();
    start();
    expectOriginals();
}

TEST_F(GammaRampsTest, withNoScreenOnNothingCanBeDimmed) {
    server_.unplug(1);
    server_.unplug(0);
    EXPECT_FALSE(ramps_->dim(0.3));
    connection_->synchronize();
    expectOriginals();
}

TEST_F(GammaRampsTest, whatLiesInThePropertyIsRestoredWholeOrNotAtAll) {
    ramps_->dim(0.3);
    abandon();
    const auto kept = other_.cardinals(other_.root(), property);
    const auto dark = other_.ramp(first_);
    const auto write = [&](const std::vector<std::uint32_t>& items, xcb_atom_t type) {
        other_.setCardinals(other_.root(), property, type, items);
        other_.roundTrip();
    };
    auto cut = kept;
    cut.pop_back();
    auto wrongVersion = kept;
    wrongVersion.front() = 2;
    for (const auto& [items, type] : std::vector<std::pair<std::vector<std::uint32_t>, xcb_atom_t>>{
             {cut, XCB_ATOM_CARDINAL},
             {wrongVersion, XCB_ATOM_CARDINAL},
             {kept, XCB_ATOM_INTEGER},
             {std::vector<std::uint32_t>(60000, 1), XCB_ATOM_CARDINAL}}) {
        write(items, type);
        start();
        connection_->synchronize();
        // Also the ramp that could be read: a half-true property is no ground to act on.
        EXPECT_EQ(other_.ramp(first_), dark);
        EXPECT_THAT(other_.cardinals(other_.root(), property), IsEmpty());
        ramps_.reset();
        connection_.reset();
    }
    write(kept, XCB_ATOM_CARDINAL);
    start();
    expectOriginals();
}

TEST_F(GammaRampsTest, aPropertyThatNamesWhatTheServerHasNotIsHarmless) {
    other_.setCardinals(
        other_.root(), property, XCB_ATOM_CARDINAL,
        {1, other_.root(), 1, 0x00020001, 3, 0, 1, 0x00020001, 3, first_, 1, 0x00020001, 3});
    other_.roundTrip();
    start();
    expectOriginals();
    EXPECT_FALSE(connection_->isLost());
}

TEST_F(GammaRampsTest, withNothingDimmedRestoringAsksNothing) {
    const auto before = xcb_no_operation(connection_->get()).sequence;
    ramps_->restore();
    EXPECT_EQ(xcb_no_operation(connection_->get()).sequence, before + 1);
}

TEST_F(GammaRampsTest, aLostServerIsNoMatter) {
    ramps_->dim(0.3);
    connection_->synchronize();
    server_.stop();
    EXPECT_FALSE(ramps_->dim(0.4));
    ramps_->restore();
    EXPECT_TRUE(connection_->isLost());
}

TEST(X11GammaRamps, aServerWithoutRandRCannotDim) {
    const PrivateServer server(MonitorLayout::landscape(), PrivateServer::Kind::virtualFramebuffer,
                               {"RANDR"});
    const auto connection = X11Connection::open(server.display());
    ASSERT_TRUE(connection);
    X11GammaRamps ramps(*connection);
    EXPECT_FALSE(ramps.dim(0.3));
    ramps.restore();
    EXPECT_FALSE(connection->isLost());
}

}  // namespace
}  // namespace lumatile::desktop
