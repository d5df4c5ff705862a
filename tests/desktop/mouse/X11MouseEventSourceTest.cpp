#include <gmock/gmock.h>

#include <array>
#include <string>
#include <vector>

#include "tests/desktop/mouse/X11MouseTapTest.h"

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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
    EXPECT_THAT(told(), ElementsAre(MouseEvent{down, {100, 100}}, MouseEvent{dragged, {140, 100}},
                                    MouseEvent{up, {140, 100}}));
    window.roundTrip();
    EXPECT_EQ(window.presses, 1);
    EXPECT_EQ(window.motions, 2);
    EXPECT_EQ(window.releases, 1);
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

}  // namespace
}  // namespace lumatile::desktop
