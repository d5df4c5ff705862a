#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/desktop/support/session/SessionDesk.h"

namespace lumatile::desktop {

/// A session on which the tables of cases run.
struct SessionKind {
    std::string name;  ///< Part of the tests' names: "openbox", "plasma" …
    /// Of `SessionDesk::open`. The first is framed, and moved by its title bar.
    std::vector<std::string> windowKinds;
    std::vector<std::string> titledKinds;  ///< Those of them that a title bar moves.
    /// How many more frames a dropped window takes where the desktop has tiled it by itself, which
    /// it does at every edge but the lower one: the way out of a tile of kwin's leads through being
    /// maximized and restored.
    std::size_t framesOutOfATile = 0;
    bool hasScales = false;  ///< Whether monitors can have a scale other than 1.
    /// The states out of which a snap takes a window.
    std::vector<SpecialState> leftStates;
    /// Types of windows that a snap places as any other, and types that it leaves alone: what the
    /// desktop itself consists of, and what gets no focus or can be moved by nobody there. Of
    /// `SessionDesk::openTyped`.
    std::vector<std::string> placedTypes;
    std::vector<std::string> leftTypes;
    std::vector<std::string> rolledUpKinds;  ///< Of `windowKinds`, those that can be rolled up.
    /// With and without a compositor, as far as there is a choice.
    std::vector<bool> compositings{false, true};
    std::vector<SessionProgram> programs;
    std::function<std::unique_ptr<SessionDesk>(const SessionDesk::Setup&)> start;
};

/// All of them: every window manager on an X server, then the Wayland sessions.
const std::vector<SessionKind>& sessionKinds();

/// A session as the parameter of a test suite; its name is part of the test's.
class OnEverySession : public testing::TestWithParam<SessionKind> {};

/// For messages of the test library.
std::ostream& operator<<(std::ostream& stream, const SessionKind& kind);

std::string nameOfSession(const testing::TestParamInfo<SessionKind>& kind);

}  // namespace lumatile::desktop
