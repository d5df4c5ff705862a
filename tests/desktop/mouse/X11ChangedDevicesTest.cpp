#include <gmock/gmock.h>

#include <vector>

#include "tests/desktop/mouse/X11MouseTapTest.h"

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Devices that come and go may take the watching with them.
class ChangedDevicesTest : public X11MouseTapTest {
protected:
    void changeDevices() {
        const TemporaryFolder folder;
        ChildProcess::Start start;
        start.command = {"xinput", "create-master", "Second"};
        start.environment = inheritedEnvironment();
        start.environment["DISPLAY"] = server_.display();
        start.output = folder.path() / "output";
        ASSERT_EQ(ChildProcess(start).wait(Deadline::usual()), (ChildProcess::Exit{0, 0}))
            << readFile(start.output);
    }
};

TEST_F(ChangedDevicesTest, disableTheTapAndItCanBeEnabledAgain) {
    input_.buttonDown();
    told();
    input_.buttonUp();
    told();
    changeDevices();
    const std::vector<MouseEvent> events = told();
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events.front().type, MouseEventType::tapDisabled);
    input_.buttonDown();
    input_.buttonUp();
    EXPECT_THAT(told(), IsEmpty());
    enable();
    input_.buttonDown();
    input_.buttonUp();
    EXPECT_THAT(told(), testing::SizeIs(2));
}

TEST_F(ChangedDevicesTest, inMidDragLoseNothing) {
    tap_ = taps_.createTap(everything, [this](const MouseEvent& event) {
        if (event.type == MouseEventType::tapDisabled) {
            tap_->enable();
        } else {
            told_.push_back(event);
        }
    });
    enable();
    input_.buttonDown();
    told();
    input_.movePointer(110, 100);
    told();
    // At rest, so that only an event of the mouse would say that it moves; while the tap is not
    // enabled there may be none.
    changeDevices();
    input_.movePointer(300, 100);
    const std::vector<MouseEvent> first = told();
    ASSERT_FALSE(first.empty());
    EXPECT_EQ(first.back(), (MouseEvent{dragged, {300, 100}}));
    // While it is looked at.
    input_.movePointer(310, 100);
    deliver();
    changeDevices();
    input_.movePointer(0, 120);
    const std::vector<MouseEvent> second = told();
    ASSERT_FALSE(second.empty());
    EXPECT_EQ(second.back(), (MouseEvent{dragged, {0, 120}}));
    input_.buttonUp();
    EXPECT_THAT(told(), ElementsAre(MouseEvent{up, {0, 120}}));
}

TEST_F(ChangedDevicesTest, leaveNoTimerWhereNobodyEnablesTheTapAgain) {
    input_.buttonDown();
    told();
    input_.movePointer(110, 100);
    deliver();
    ASSERT_EQ(runLoop_.timerCount(), 1U);
    changeDevices();
    deliver();
    EXPECT_EQ(runLoop_.timerCount(), 0U);
}

}  // namespace
}  // namespace lumatile::desktop
