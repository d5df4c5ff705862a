#pragma once

#include <filesystem>
#include <string>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/Environment.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile::desktop {

/// What the programs of one private desktop share: an empty home, a run-time folder, a message bus
/// of their own. At the end every program that was started in it is gone, also those that the bus
/// or a window manager started by itself.
class PrivateSession {
public:
    /// @param display of the X server; empty: the session has none yet
    /// @throws DesktopError when the bus does not start
    explicit PrivateSession(const std::string& display = {});
    PrivateSession(const PrivateSession&) = delete;
    PrivateSession& operator=(const PrivateSession&) = delete;
    ~PrivateSession();

    const Environment& environment() const { return environment_; }
    /// For the programs that are started from now on.
    void setVariable(const std::string& name, const std::string& value) {
        environment_[name] = value;
    }
    const std::filesystem::path& folder() const { return folder_.path(); }
    std::filesystem::path home() const { return folder() / "home"; }
    std::filesystem::path configuration() const { return home() / ".config"; }

    /// A program in this session, its output in a file of the session's folder.
    ChildProcess start(const std::vector<std::string>& command, const std::string& name,
                       const Environment& further = {});

    /// Ends the bus without a word to anybody.
    void endBus() { bus_.stop(); }

    /// Starts a bus at the address of one that has ended.
    void startBus();

    /// What the program of this name has written so far.
    std::string output(const std::string& name) const;

    /// Ends the programs of this session that run the executable of this name.
    void endProgram(const std::string& executable) const;

private:
    TemporaryFolder folder_;
    std::string mark_;
    Environment environment_;
    ChildProcess bus_;
};

}  // namespace lumatile::desktop
