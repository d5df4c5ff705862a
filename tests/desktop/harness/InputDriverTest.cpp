#include "tests/desktop/support/InputDriver.h"

#include <gtest/gtest.h>

#include <optional>

#include "tests/desktop/support/PrivateServer.h"

namespace lumatile::desktop {
namespace {

// Grabs one key and remembers the state of the keyboard in which it came.
class KeyListener : public XClient {
public:
    KeyListener(const std::string& display, std::uint8_t key) : XClient(display) {
        xcb_grab_key(connection(), 0, root(), XCB_MOD_MASK_ANY, key, XCB_GRAB_MODE_ASYNC,
                     XCB_GRAB_MODE_ASYNC);
        roundTrip();
    }

    std::optional<std::uint16_t> state;

protected:
    void handle(const xcb_generic_event_t& event) override {
        if ((event.response_type & 0x7f) == XCB_KEY_PRESS) {
            state = reinterpret_cast<const xcb_key_press_event_t&>(event).state;
        }
    }
};

class InputDriverTest : public testing::Test {
protected:
    PrivateServer server_{MonitorLayout::landscape()};
    InputDriver input_{server_.display()};
};

TEST_F(InputDriverTest, pressesACombination) {
    KeyListener listener(server_.display(), KeyPosition::left);
    input_.press({KeyPosition::leftControl, KeyPosition::leftAlt}, KeyPosition::left);
    ASSERT_TRUE(XClient::waitUntil([&] { return listener.state.has_value(); }));
    EXPECT_EQ(*listener.state, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1);
}

TEST_F(InputDriverTest, turnsLocksOnAndOff) {
    for (const bool on : {true, true, false, false}) {
        EXPECT_TRUE(input_.setLock(KeyPosition::capsLock, on));
        EXPECT_TRUE(input_.setLock(KeyPosition::numLock, on));
        KeyListener listener(server_.display(), KeyPosition::u);
        input_.press({}, KeyPosition::u);
        ASSERT_TRUE(XClient::waitUntil([&] { return listener.state.has_value(); }));
        EXPECT_EQ((*listener.state & XCB_MOD_MASK_LOCK) != 0, on);
        EXPECT_EQ((*listener.state & XCB_MOD_MASK_2) != 0, on);
    }
}

TEST_F(InputDriverTest, movesThePointer) {
    input_.movePointer(321, 123);
    const XReply<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
        input_.connection(), xcb_query_pointer(input_.connection(), input_.root()), nullptr));
    EXPECT_EQ(pointer->root_x, 321);
    EXPECT_EQ(pointer->root_y, 123);
}

}  // namespace
}  // namespace lumatile::desktop
