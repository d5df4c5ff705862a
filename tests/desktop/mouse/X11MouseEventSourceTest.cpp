#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <xcb/xtest.h>

#include <array>
#include <atomic>
#include <memory>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/x11/X11MouseEventSource.h"
#include "tests/desktop/support/InputDriver.h"
#include "tests/desktop/support/PrivateServer.h"

namespace lumatile {

void PrintTo(const MouseEvent& event, std::ostream* stream) {
    *stream << static_cast<int>(event.type) << " at " << event.location.x << ","
            << event.location.y;
}

bool operator==(const MouseEvent& one, const MouseEvent& other) {
    return one.type == other.type && one.location == other.location;
}

namespace desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto down = MouseEventType::leftMouseDown;
constexpr auto up = MouseEventType::leftMouseUp;
constexpr auto dragged = MouseEventType::leftMouseDragged;

constexpr MouseEventSource::Mask everything =
    MouseEventSource::bit(down) | MouseEventSource::bit(up) | MouseEventSource::bit(dragged);

class X11MouseTapTest : public testing::Test {
protected:
    X11MouseTapTest() {
        tap_ = taps_.createTap(everything,
                               [this](const MouseEvent& event) { told_.push_back(event); });
        enable();
        input_.movePointer(100, 100);
        told();
    }

    /// The mouse speaks through another connection, so the server has to know of the tap first.
    void enable() {
        tap_->enable();
        connection_->synchronize();
    }

    /// What has been told since the last call. The server answers in the order of events, so
    /// everything that has happened by now is in it.
    std::vector<MouseEvent> told() {
        input_.roundTrip();
        // A press makes the tap ask for movements; what happens next is told from then on.
        connection_->synchronize();
        connection_->dispatch();
        connection_->synchronize();
        connection_->dispatch();
        rest();
        return std::exchange(told_, {});
    }

    /// What has happened by now, without any time that passes.
    void deliver() {
        input_.roundTrip();
        connection_->synchronize();
        connection_->dispatch();
        // What the tap has asked of the server meanwhile holds from now on.
        connection_->synchronize();
    }

    /// Whether the server has sent anything that would wake the program up.
    bool isAnythingToRead() const {
        pollfd descriptor{connection_->fileDescriptor(), POLLIN, 0};
        return poll(&descriptor, 1, 0) > 0;
    }

    /// Lets the time pass until the tap has seen that the pointer rests: a look that finds it
    /// elsewhere, one that finds it there, and one more.
    void rest() {
        for (int looks = 0; looks < 4; ++looks) {
            look();
        }
    }

    /// The next time that the tap looks at the pointer, if it does.
    void look() {
        runLoop_.advance(X11MouseEventSource::lookInterval);
        connection_->synchronize();
        connection_->dispatch();
        connection_->synchronize();
    }

    PrivateServer server_{MonitorLayout::landscape(), PrivateServer::Kind::virtualFramebuffer};
    InputDriver input_{server_.display()};
    std::unique_ptr<X11Connection> connection_ = X11Connection::open(server_.display());
    X11Monitors monitors_{*connection_};
    SimulatedClock clock_;
    SimulatedRunLoop runLoop_{clock_};
    X11MouseEventSource taps_{*connection_, monitors_, runLoop_};
    std::unique_ptr<MouseTap> tap_;
    std::vector<MouseEvent> told_;
};

TEST_F(X11MouseTapTest, tellsPressDragAndRelease) {
    input_.movePointer(300, 200);
    EXPECT_THAT(told(), IsEmpty()) << "no button, no event";
    input_.buttonDown();
    EXPECT_THAT(told(), ElementsAre(MouseEvent{down, {300, 200}}));
    input_.movePointer(310, 220);
    EXPECT_THAT(told(), ElementsAre(MouseEvent{dragged, {310, 220}}));
    input_.movePointer(0, 220);
    EXPECT_THAT(told(), ElementsAre(MouseEvent{dragged, {0, 220}}));
    input_.buttonUp();
    EXPECT_THAT(told(), ElementsAre(MouseEvent{up, {0, 220}}));
    input_.movePointer(50, 50);
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(X11MouseTapTest, otherButtonsAreNotTold) {
    for (const int button : {2, 3, 4, 5, 8}) {
        input_.buttonDown(static_cast<std::uint8_t>(button));
        input_.movePointer(200 + button, 300);
        input_.buttonUp(static_cast<std::uint8_t>(button));
        EXPECT_THAT(told(), IsEmpty()) << button;
    }
}

TEST_F(X11MouseTapTest, anotherButtonInMidDragChangesNothing) {
    input_.buttonDown();
    told();
    input_.buttonDown(3);
    input_.movePointer(120, 130);
    input_.buttonUp(3);
    EXPECT_THAT(told(), ElementsAre(MouseEvent{dragged, {120, 130}}));
    input_.buttonUp();
    EXPECT_THAT(told(), ElementsAre(MouseEvent{up, {120, 130}}));
}

TEST_F(X11MouseTapTest, leftIsWhatTheUserHasMadeLeft) {
    // A left-handed user's mouse; the first button of the device is the right one now.
    const std::array<std::uint8_t, 10> swapped{3, 2, 1, 4, 5, 6, 7, 8, 9, 10};
    auto* const mapping = xcb_get_pointer_mapping_reply(
        input_.connection(), xcb_get_pointer_mapping(input_.connection()), nullptr);
    const XReply<xcb_get_pointer_mapping_reply_t> owned(mapping);
    const auto count = static_cast<std::uint8_t>(xcb_get_pointer_mapping_map_length(mapping));
    ASSERT_LE(count, swapped.size());
    xcb_set_pointer_mapping(input_.connection(), count, swapped.data());
    told();
    input_.buttonDown(1);
    input_.buttonUp(1);
    EXPECT_THAT(told(), IsEmpty());
    input_.buttonDown(3);
    input_.buttonUp(3);
    EXPECT_THAT(told(), ElementsAre(MouseEvent{down, {100, 100}}, MouseEvent{up, {100, 100}}));
}

TEST_F(X11MouseTapTest, goesOnTellingWhileAnotherProgramHoldsThePointer) {
    XClient other(server_.display());
    const XReply<xcb_grab_pointer_reply_t> grab(xcb_grab_pointer_reply(
        other.connection(),
        xcb_grab_pointer(other.connection(), 1, other.root(),
                         XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_POINTER_MOTION,
                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE,
                         XCB_CURRENT_TIME),
        nullptr));
    ASSERT_EQ(grab->status, XCB_GRAB_STATUS_SUCCESS);
    input_.buttonDown();
    EXPECT_THAT(told(), ElementsAre(MouseEvent{down, {100, 100}}));
    input_.movePointer(5, 6);
    EXPECT_THAT(told(), ElementsAre(MouseEvent{dragged, {5, 6}}));
    input_.buttonUp();
    EXPECT_THAT(told(), ElementsAre(MouseEvent{up, {5, 6}}));
}

// The window below gets all that it would get without the tap.
class ClickedWindow : public XClient {
public:
    explicit ClickedWindow(const std::string& display) : XClient(display) {
        window_ = xcb_generate_id(connection());
        const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_BUTTON_PRESS |
                                                         XCB_EVENT_MASK_BUTTON_RELEASE |
                                                         XCB_EVENT_MASK_BUTTON_MOTION};
        xcb_create_window(connection(), XCB_COPY_FROM_PARENT, window_, root(), 0, 0, 400, 400, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, screen().root_visual,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
        xcb_map_window(connection(), window_);
        roundTrip();
    }

    int presses = 0;
    int releases = 0;
    int motions = 0;

protected:
    void handle(const xcb_generic_event_t& event) override {
        const int type = event.response_type & 0x7f;
        presses += type == XCB_BUTTON_PRESS ? 1 : 0;
        releases += type == XCB_BUTTON_RELEASE ? 1 : 0;
        motions += type == XCB_MOTION_NOTIFY ? 1 : 0;
    }

private:
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

TEST_F(X11MouseTapTest, takesNothingFromTheWindowBelow) {
    ClickedWindow window(server_.display());
    input_.buttonDown();
    input_.movePointer(120, 100);
    input_.movePointer(140, 100);
    input_.buttonUp();
    EXPECT_EQ(told().front(), (MouseEvent{down, {140, 100}})) << "where it is when it is told";
    window.roundTrip();
    EXPECT_EQ(window.presses, 1);
    EXPECT_EQ(window.motions, 2);
    EXPECT_EQ(window.releases, 1);
}

TEST_F(X11MouseTapTest, movementsThatArriveTogetherAreToldAsOne) {
    input_.buttonDown();
    told();
    for (int x = 100; x < 600; ++x) {
        input_.movePointer(x, 200);
    }
    input_.roundTrip();
    connection_->synchronize();
    connection_->dispatch();
    EXPECT_THAT(std::exchange(told_, {}), ElementsAre(MouseEvent{dragged, {599, 200}}));
    // Presses and releases are not, however fast.
    input_.buttonUp();
    for (int click = 0; click < 3; ++click) {
        input_.buttonDown();
        input_.buttonUp();
    }
    std::vector<MouseEventType> types;
    for (const MouseEvent& event : told()) {
        types.push_back(event.type);
    }
    EXPECT_THAT(types, ElementsAre(up, down, up, down, up, down, up));
}

TEST_F(X11MouseTapTest, theLastOfManyMovementsIsTold) {
    input_.buttonDown();
    told();
    // The mouse does not wait until the tap has looked: movements happen before, while and after
    // the server answers where the pointer is. The last one of a round has none behind it that
    // would make up for it.
    constexpr int rounds = 200;
    for (int round = 0; round < rounds; ++round) {
        const int y = 100 + round;
        std::atomic<bool> isOver{false};
        std::thread mouse([&] {
            xcb_connection_t* const hand = input_.connection();
            for (int x = 100; x <= 200; ++x) {
                xcb_test_fake_input(hand, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, input_.root(),
                                    static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
                xcb_flush(hand);
            }
            isOver = true;
        });
        while (!isOver) {
            // Time flies, so that looks and events take turns again and again.
            connection_->dispatch();
            runLoop_.advance(X11MouseEventSource::lookInterval);
        }
        mouse.join();
        const std::vector<MouseEvent> events = told();
        ASSERT_FALSE(events.empty());
        const MouseEvent last{dragged, {200, static_cast<double>(y)}};
        ASSERT_EQ(events.back(), last) << "round " << round;
    }
}

TEST_F(X11MouseTapTest, aFastMouseIsLookedAtByTheTimerOnly) {
    input_.buttonDown();
    told();
    input_.movePointer(110, 100);
    deliver();
    EXPECT_THAT(std::exchange(told_, {}), ElementsAre(MouseEvent{dragged, {110, 100}}))
        << "the first one at once";
    deliver();
    for (int x = 111; x < 400; ++x) {
        input_.movePointer(x, 100);
    }
    input_.roundTrip();
    EXPECT_FALSE(isAnythingToRead()) << "movements do not wake the program up";
    deliver();
    EXPECT_THAT(told_, IsEmpty());
    look();
    EXPECT_THAT(std::exchange(told_, {}), ElementsAre(MouseEvent{dragged, {399, 100}}));
    input_.movePointer(500, 100);
    input_.roundTrip();
    EXPECT_FALSE(isAnythingToRead());
    look();
    EXPECT_THAT(std::exchange(told_, {}), ElementsAre(MouseEvent{dragged, {500, 100}}));
    // It rests, and its next movement is told at once again.
    EXPECT_THAT(told(), IsEmpty());
    input_.movePointer(600, 100);
    deliver();
    EXPECT_THAT(told_, ElementsAre(MouseEvent{dragged, {600, 100}}));
}

TEST_F(X11MouseTapTest, theReleaseComesAtOnceAndAfterTheMovementThatLedToIt) {
    input_.buttonDown();
    input_.roundTrip();
    deliver();
    input_.movePointer(110, 100);
    deliver();
    deliver();
    told_.clear();
    input_.movePointer(400, 100);
    input_.movePointer(0, 220);
    input_.buttonUp();
    deliver();
    EXPECT_THAT(std::exchange(told_, {}),
                ElementsAre(MouseEvent{dragged, {0, 220}}, MouseEvent{up, {0, 220}}));
    input_.buttonDown();
    deliver();
    EXPECT_THAT(told_, ElementsAre(MouseEvent{down, {0, 220}}));
}

TEST_F(X11MouseTapTest, noTimerRunsWhileNothingMoves) {
    EXPECT_EQ(runLoop_.timerCount(), 0U);
    input_.buttonDown();
    deliver();
    EXPECT_EQ(runLoop_.timerCount(), 0U) << "held, but not moved";
    input_.movePointer(110, 100);
    deliver();
    EXPECT_EQ(runLoop_.timerCount(), 1U);
    rest();
    EXPECT_EQ(runLoop_.timerCount(), 0U) << "at rest";
    input_.movePointer(120, 100);
    deliver();
    EXPECT_EQ(runLoop_.timerCount(), 1U);
    input_.buttonUp();
    deliver();
    EXPECT_EQ(runLoop_.timerCount(), 0U) << "released";
    input_.buttonDown();
    deliver();
    input_.movePointer(130, 100);
    deliver();
    EXPECT_EQ(runLoop_.timerCount(), 1U);
    tap_.reset();
    EXPECT_EQ(runLoop_.timerCount(), 0U) << "nobody wants to know";
}

// A pointer that is pushed against the edge of the screen stays where it is. That the mouse still
// moves is what the user means.
TEST_F(X11MouseTapTest, pushingAgainstAnEdgeIsToldAsMovement) {
    input_.buttonDown();
    told();
    input_.movePointer(0, 100);
    EXPECT_THAT(told(), ElementsAre(MouseEvent{dragged, {0, 100}}));
    const MouseEvent pushed{dragged, {0, 100}};
    for (int push = 0; push < 3; ++push) {
        input_.movePointer(0, 100);
        EXPECT_THAT(told(), ElementsAre(pushed)) << push;
    }
    // Without a rest in between: the look after the first push asks for movements again.
    input_.movePointer(0, 100);
    deliver();
    look();
    told_.clear();
    input_.movePointer(0, 100);
    deliver();
    EXPECT_THAT(told_, IsEmpty()) << "the next look is soon enough";
    look();
    EXPECT_THAT(told_, ElementsAre(pushed));
}

TEST_F(X11MouseTapTest, locationsCountFromThePrimaryMonitor) {
    PrivateServer server(MonitorLayout::portraitAndPrimaryLandscape());
    InputDriver input(server.display());
    const auto connection = X11Connection::open(server.display());
    X11Monitors monitors(*connection);
    X11MouseEventSource taps(*connection, monitors, runLoop_);
    std::vector<MouseEvent> told;
    const auto tap =
        taps.createTap(everything, [&](const MouseEvent& event) { told.push_back(event); });
    tap->enable();
    connection->synchronize();
    const PixelRect primary = server.layout().primaryMonitor();
    ASSERT_GT(primary.x, 0);
    input.movePointer(primary.x - 10, primary.y + 20);
    input.buttonDown();
    input.roundTrip();
    connection->synchronize();
    connection->dispatch();
    EXPECT_THAT(told, ElementsAre(MouseEvent{down, {-10, 20}}));
}

TEST_F(X11MouseTapTest, tellsNothingBeforeItIsEnabledNorOnceItIsGone) {
    tap_.reset();
    tap_ = taps_.createTap(everything, [this](const MouseEvent& event) { told_.push_back(event); });
    input_.buttonDown();
    input_.buttonUp();
    EXPECT_THAT(told(), IsEmpty());
    enable();
    input_.buttonDown();
    EXPECT_THAT(told(), ElementsAre(MouseEvent{down, {100, 100}}));
    input_.buttonUp();
    input_.roundTrip();
    connection_->synchronize();
    tap_.reset();
    EXPECT_THAT(told(), IsEmpty()) << "also what had arrived";
}

TEST_F(X11MouseTapTest, tellsOnlyWhatTheMaskNames) {
    tap_ = taps_.createTap(MouseEventSource::bit(up),
                           [this](const MouseEvent& event) { told_.push_back(event); });
    enable();
    input_.buttonDown();
    input_.movePointer(10, 10);
    input_.buttonUp();
    EXPECT_THAT(told(), ElementsAre(MouseEvent{up, {10, 10}}));
}

TEST_F(X11MouseTapTest, aTapThatEndsItselfWhileItIsToldIsNoTrouble) {
    tap_ = taps_.createTap(everything, [this](const MouseEvent& event) {
        told_.push_back(event);
        tap_.reset();
    });
    enable();
    input_.buttonDown();
    input_.buttonUp();
    EXPECT_THAT(told(), testing::SizeIs(1));
}

TEST_F(X11MouseTapTest, withoutTheServerThereIsNoTap) {
    server_.stop();
    connection_->synchronize();
    EXPECT_EQ(taps_.createTap(everything, [](const MouseEvent&) {}), nullptr);
}

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
    EXPECT_EQ(runLoop_.timerCount(), 0U);
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
}  // namespace desktop
}  // namespace lumatile
