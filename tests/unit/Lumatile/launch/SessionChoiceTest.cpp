#include "Lumatile/launch/SessionChoice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <stdexcept>

#include "platform/simulated/SimulatedLog.h"

namespace lumatile {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A session of which only the facts are asked.
class NamedSession final : public PresentSession {
public:
    explicit NamedSession(SessionFacts facts) : facts_(std::move(facts)) {}

    const SessionFacts& facts() const override { return facts_; }
    DesktopSession enter(RunLoop& /*runLoop*/, SystemLog& /*log*/) override {
        throw std::logic_error("a session is entered by whoever has chosen it");
    }

private:
    SessionFacts facts_;
};

int timesAsked = 0;

std::unique_ptr<PresentSession> none() {
    ++timesAsked;
    return nullptr;
}

std::unique_ptr<PresentSession> guest() {
    ++timesAsked;
    SessionFacts facts;
    facts.desktop = "guest";
    facts.shortcomings = {"some windows cannot be reached", "the screens stay bright"};
    return std::make_unique<NamedSession>(facts);
}

std::unique_ptr<PresentSession> plain() {
    ++timesAsked;
    SessionFacts facts;
    facts.desktop = "plain";
    return std::make_unique<NamedSession>(facts);
}

class SessionChoice : public testing::Test {
protected:
    SessionChoice() { timesAsked = 0; }

    SimulatedLog log;
};

TEST_F(SessionChoice, theFirstThatIsPresentIsTakenAndNobodyElseAsked) {
    const std::array kinds{SessionKind{none, "no first"}, SessionKind{plain, "no second"},
                           SessionKind{guest, "no third"}};
    const auto session = firstPresent(kinds, log);
    ASSERT_NE(session, nullptr);
    EXPECT_EQ(session->facts().desktop, "plain");
    EXPECT_EQ(timesAsked, 2);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(SessionChoice, whatCannotBeDoneIsSaidALineEach) {
    const std::array kinds{SessionKind{guest, "no guest"}};
    const auto session = firstPresent(kinds, log);
    ASSERT_NE(session, nullptr);
    EXPECT_THAT(log.lines(), IsEmpty()) << "the program may run here already";
    sayShortcomings(session->facts(), log);
    EXPECT_THAT(log.lines(), ElementsAre("Lumatile: some windows cannot be reached",
                                         "Lumatile: the screens stay bright"));
}

TEST_F(SessionChoice, whereNoneIsPresentEveryKindSaysSo) {
    const std::array kinds{SessionKind{none, "no first"}, SessionKind{none, "no second"}};
    EXPECT_EQ(firstPresent(kinds, log), nullptr);
    EXPECT_EQ(timesAsked, 2);
    EXPECT_THAT(log.lines(), ElementsAre("Lumatile: no first", "Lumatile: no second"));
}

}  // namespace
}  // namespace lumatile
