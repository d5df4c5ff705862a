#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "commands/Shortcut.h"
#include "tests/desktop/hotkeys/HotKeyDesk.h"
#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/InputDriver.h"
#include "tests/desktop/support/PrivateServer.h"

namespace lumatile::desktop {

using Keys = std::vector<std::uint8_t>;

inline constexpr std::uint32_t controlOption = ClassicModifier::control | ClassicModifier::option;
inline constexpr std::uint32_t leftArrow = 123;
inline constexpr std::uint32_t rightArrow = 124;
inline constexpr std::uint32_t letterU = 32;
inline constexpr std::uint32_t letterI = 34;
inline constexpr std::uint32_t letterJ = 38;
inline constexpr std::uint32_t letterK = 40;

inline constexpr unsigned controlAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
inline constexpr std::array<unsigned, 4> lockStates = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2,
                                                       XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};

inline const Keys controlAltKeys = {KeyPosition::leftControl, KeyPosition::leftAlt};

/// Hot keys on a server without a window manager.
class HotKeyTest : public testing::Test {
protected:
    /// Runs a program of the server to its end.
    void run(std::vector<std::string> command) {
        ChildProcess::Start start;
        start.command = std::move(command);
        start.environment = inheritedEnvironment();
        start.environment["DISPLAY"] = server_.display();
        start.output = folder_.path() / "output";
        const auto exit = ChildProcess(start).wait(Deadline::usual());
        ASSERT_EQ(exit, (ChildProcess::Exit{0, 0})) << readFile(start.output);
    }

    /// The same, and then the hot keys have followed the change of the keyboard.
    void changeKeyboard(std::vector<std::string> command) {
        desk_.presses();
        desk_.keyboardChanged();
        run(std::move(command));
        ASSERT_TRUE(desk_.runUntil([&] { return desk_.keyboardChanged(); }));
        desk_.presses();
    }

    PrivateServer server_{MonitorLayout::landscape(), PrivateServer::Kind::virtualFramebuffer};
    TemporaryFolder folder_;
    InputDriver input_{server_.display()};
    HotKeyDesk desk_{server_.display()};
};

}  // namespace lumatile::desktop
