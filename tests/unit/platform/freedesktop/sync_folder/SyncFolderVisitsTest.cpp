#include "platform/freedesktop/sync_folder/SyncFolderVisits.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/StoringComputer.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Holds those who pass on other threads until it is opened.
class Gate {
public:
    void pass() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return isOpen_; });
        ++passed_;
        changed_.notify_all();
    }
    void open() {
        const std::lock_guard lock(mutex_);
        isOpen_ = true;
        changed_.notify_all();
    }
    void awaitPassed(int count) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this, count] { return passed_ >= count; });
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isOpen_ = false;
    int passed_ = 0;
};

class SyncFolderVisitsTest : public testing::Test {
protected:
    using Errand = SyncFolderVisits::Errand;

    /// Visits whose errands are numbered by the time that they know of.
    void start(int patienceMilliseconds = 60'000) {
        visits = std::make_unique<SyncFolderVisits>(SyncFolderVisits::Parts{
            .look = look,
            .errand =
                [this] {
                    Errand errand;
                    errand.folder = folder.path();
                    errand.knownTime = ++errands;
                    return errand;
                },
            .back =
                [this](const std::unique_ptr<SyncFolderVisits::Report>& report) {
                    back.push_back(report ? report->visit.readFailure : "nothing");
                    if (onBack) {
                        onBack();
                    }
                },
            .unanswered = [this] { ++unanswered; },
            .patienceMilliseconds = patienceMilliseconds,
        });
    }

    static SyncFolderVisit numbered(const Errand& errand) {
        SyncFolderVisit visit(errand);
        visit.readFailure = std::to_string(static_cast<int>(errand.knownTime));
        return visit;
    }

    /// Runs until no visit is under way.
    void settle() {
        ASSERT_TRUE(runUntil([this] { return !visits->isVisiting(); }));
    }

    TemporaryFolder folder;
    std::function<SyncFolderVisit(const Errand&)> look = numbered;
    std::function<void()> onBack;
    int errands = 0;
    int unanswered = 0;
    std::vector<std::string> back;
    std::unique_ptr<SyncFolderVisits> visits;
};

TEST_F(SyncFolderVisitsTest, aVisitLooksOnAnotherThreadAndComesBackOnThisOne) {
    const std::thread::id own = std::this_thread::get_id();
    std::atomic<std::thread::id> worker;
    std::thread::id returned;
    look = [&worker](const Errand& errand) {
        worker = std::this_thread::get_id();
        return numbered(errand);
    };
    onBack = [&returned] { returned = std::this_thread::get_id(); };
    start();
    EXPECT_FALSE(visits->isVisiting());
    visits->visit();
    EXPECT_TRUE(visits->isVisiting());
    EXPECT_THAT(back, IsEmpty());
    settle();
    EXPECT_THAT(back, ElementsAre("1"));
    EXPECT_NE(worker.load(), own);
    EXPECT_EQ(returned, own);
}

TEST_F(SyncFolderVisitsTest, howeverOftenItIsAskedForDuringOneAnotherFollows) {
    Gate gate;
    look = [&gate](const Errand& errand) {
        gate.pass();
        return numbered(errand);
    };
    start();
    visits->visit();
    visits->visit();
    visits->visit();
    EXPECT_EQ(errands, 1) << "one at a time";
    gate.open();
    settle();
    EXPECT_THAT(back, ElementsAre("1", "2"));
}

TEST_F(SyncFolderVisitsTest, whoeverTakesAReportMayAskForTheNextVisit) {
    onBack = [this] {
        if (back.size() < 3) {
            EXPECT_FALSE(visits->isVisiting());
            visits->visit();
        }
    };
    start();
    visits->visit();
    settle();
    EXPECT_THAT(back, ElementsAre("1", "2", "3"));
}

TEST_F(SyncFolderVisitsTest, whatIsForgottenDoesNotComeBack) {
    Gate gate;
    look = [&gate](const Errand& errand) {
        if (errand.knownTime == 1) {
            gate.pass();
        }
        return numbered(errand);
    };
    start();
    visits->visit();
    visits->visit();
    visits->forget();
    EXPECT_FALSE(visits->isVisiting());
    visits->visit();
    settle();
    EXPECT_THAT(back, ElementsAre("2"));
    gate.open();
    gate.awaitPassed(1);
    // The answer of the forgotten one comes before that of a later one, if at all.
    visits->visit();
    settle();
    EXPECT_THAT(back, ElementsAre("2", "3"));
}

TEST_F(SyncFolderVisitsTest, aVisitThatIsNotBackIsToldOnceAndWaitedForAllTheSame) {
    Gate gate;
    look = [&gate](const Errand& errand) {
        gate.pass();
        return numbered(errand);
    };
    start(1);
    visits->visit();
    ASSERT_TRUE(runUntil([this] { return unanswered > 0; }));
    EXPECT_TRUE(visits->isVisiting());
    EXPECT_THAT(back, IsEmpty());
    gate.open();
    settle();
    EXPECT_THAT(back, ElementsAre("1"));
    EXPECT_EQ(unanswered, 1);
}

TEST_F(SyncFolderVisitsTest, whatRunsOutOfMemoryComesBackWithNothing) {
    look = [](const Errand&) -> SyncFolderVisit { throw std::bad_alloc(); };
    start();
    visits->visit();
    settle();
    EXPECT_THAT(back, ElementsAre("nothing"));
}

TEST_F(SyncFolderVisitsTest, theListeningBeginsBeforeTheLook) {
    std::unique_ptr<FolderEvents> events;
    look = [this](const Errand& errand) {
        replaceFile(folder / SyncFolderVisit::fileName, textOf(1, "a"));
        return numbered(errand);
    };
    visits = std::make_unique<SyncFolderVisits>(SyncFolderVisits::Parts{
        .look = look,
        .errand =
            [this] {
                Errand errand;
                errand.folder = folder.path();
                return errand;
            },
        .back =
            [&events](std::unique_ptr<SyncFolderVisits::Report> report) {
                ASSERT_TRUE(report);
                events = std::make_unique<FolderEvents>(std::move(report->events));
            },
        .unanswered = [] {},
        .patienceMilliseconds = 60'000,
    });
    visits->visit();
    settle();
    ASSERT_TRUE(events);
    EXPECT_TRUE(events->consume());
}

TEST_F(SyncFolderVisitsTest, mayEndDuringAVisit) {
    Gate gate;
    auto held = std::make_shared<int>(0);
    const std::weak_ptr<int> trace = held;
    look = [&gate, held](const Errand& errand) {
        gate.pass();
        return numbered(errand);
    };
    start();
    held.reset();
    look = nullptr;
    visits->visit();
    visits.reset();
    gate.open();
    ASSERT_TRUE(runUntil([&trace] { return trace.expired(); })) << "the visit is cleared away";
    EXPECT_THAT(back, IsEmpty());
}

}  // namespace
}  // namespace lumatile
