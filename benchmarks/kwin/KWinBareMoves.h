#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "geometry/Rect.h"
#include "tests/desktop/support/MockService.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::benchmark {

/// A script in KWin that does nothing but ask for the next window to move, move it and tell where
/// it is then: the least that a mover of windows over such a channel can do.
class KWinBareMoves {
public:
    /// @throws DesktopError when KWin does not take the script
    explicit KWinBareMoves(const desktop::PrivateSession& session);

    /// Moves the windows one after the other, each as soon as the one before has been read back.
    /// @param windows their ids and the corners they are to get
    /// @return microseconds
    /// @throws DesktopError when one does not get there
    double move(const std::vector<std::pair<std::string, Point>>& windows);

private:
    void handle(const desktop::MockService::Call& call);

    desktop::MockService service_;
    std::optional<desktop::MockService::Call> question_;
    std::optional<std::string> told_;  // With the last question.
};

}  // namespace lumatile::benchmark
