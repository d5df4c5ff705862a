#pragma once

#include <functional>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "tests/desktop/support/MockService.h"
#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/kwin/WindowState.h"

namespace lumatile::desktop {

/// A script of the tests' own inside a private KWin, which tells what becomes of windows and does
/// what a user would do to them. What is known here is fresh in `waitInSession`, and after a
/// `sync`.
class KWinProbe {
public:
    /// @throws DesktopError when KWin does not take the script
    explicit KWinProbe(const PrivateSession& session);
    KWinProbe(const KWinProbe&) = delete;
    KWinProbe& operator=(const KWinProbe&) = delete;
    ~KWinProbe() = default;

    /// Loads the script into a KWin that was started anew.
    void load();

    /// Returns when everything that KWin had done by now is known here.
    void sync() { order("sync", nlohmann::json::object()); }

    /// The text of the last order, as it went over the bus.
    const std::string& lastOrder() const { return next_; }

    /// All windows that KWin manages, by their ids.
    const std::map<std::string, WindowState>& windows() const { return windows_; }

    /// Absent when there is no such window.
    std::optional<WindowState> window(const std::string& id) const;
    /// The first whose condition holds.
    std::optional<WindowState> find(const std::function<bool(const WindowState&)>& isIt) const;
    std::optional<WindowState> active() const;

    /// The different frames that a window took since `forgetFrames`, the first of them where it
    /// was.
    const std::vector<Rect>& framesOf(const std::string& id);
    void forgetFrames();

    /// How many windows of a program have appeared so far.
    std::size_t appearancesOf(pid_t pid) const;

    struct Screen {
        Rect whole;
        Rect usable;  ///< Without panels, where a maximized window lies.
    };
    /// In KWin's order.
    std::vector<Screen> screens();

    /// The stacking, the focus and the virtual desktop that is shown, as text.
    std::string desk();

    /// What a user does. Each returns when KWin has begun to do it; what comes of it is to be
    /// waited for.
    void activate(const std::string& id);
    void place(const std::string& id, const Rect& frame);
    void maximize(const std::string& id, bool horizontally, bool vertically);
    void minimize(const std::string& id, bool on);
    void fullScreen(const std::string& id, bool on);
    void keepAbove(const std::string& id, bool on);
    void shade(const std::string& id, bool on);
    void sendToDesktop(const std::string& id, int desktop);
    void addDesktop();
    void close(const std::string& id);
    /// Runs one of KWin's own commands on the active window: "slotWindowQuickTileLeft" …
    void shortcut(const std::string& slot);

private:
    nlohmann::json order(const std::string& action, nlohmann::json arguments);
    void handle(const MockService::Call& call);
    void note(const nlohmann::json& window);

    MockService service_;
    std::map<std::string, WindowState> windows_;
    std::map<std::string, std::vector<Rect>> frames_;
    std::map<std::string, pid_t> everSeen_;  // Their programs.
    bool isLoaded_ = false;
    int serial_ = 0;
    std::string next_;
    std::optional<nlohmann::json> answer_;
};

}  // namespace lumatile::desktop
