#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/Environment.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::desktop {

/// The program itself, running in a private session with settings of its own.
class LumatileProcess {
public:
    struct Settings {
        /// JSON text under "oledSettings"; absent: nothing is stored and the recommended ones
        /// apply. The default switches off everything that moves windows by itself or by the clock,
        /// so that targets are exact.
        std::optional<std::string> oledSettings =
            R"({"orbitEnabled":false,"jitterEnabled":false,"idleDimEnabled":false})";
        /// JSON text under "commands"; absent: the built-in ones.
        std::optional<std::string> commands = std::nullopt;
        Environment environment = {};  ///< Beside the session's.
        bool writableFolder = true;    ///< False: there is no folder that settings could be put in.
        /// The folder through which settings are shared; absent: none.
        std::optional<std::string> syncFolder = std::nullopt;
    };

    /// Returns when its shortcuts are registered.
    /// @param program the executable
    /// @throws DesktopError when it ends or does not get ready
    LumatileProcess(PrivateSession& session, const std::filesystem::path& program,
                    const Settings& settings);
    LumatileProcess(PrivateSession& session, const std::filesystem::path& program);
    LumatileProcess(const LumatileProcess&) = delete;
    LumatileProcess& operator=(const LumatileProcess&) = delete;
    ~LumatileProcess();

    bool isRunning() { return process_.isRunning(); }
    pid_t pid() const { return process_.pid(); }

    /// Where its settings are, if there is a folder for them.
    std::filesystem::path settingsFile() const;

    /// What it wrote to standard output and error.
    std::string output() const;

    /// Asks it to end.
    /// @return how it ended; sanitizers make the status of a faulty run their own
    std::optional<ChildProcess::Exit> stop();

    /// Waits for it to end by itself.
    std::optional<ChildProcess::Exit> wait(Deadline deadline = Deadline::usual());

    /// True for a program that ended by request and without complaint.
    static bool isClean(const std::optional<ChildProcess::Exit>& exit);

private:
    TemporaryFolder folder_;
    ChildProcess process_;
};

/// Asks the program to end.
/// @return what is wrong with how it ended; empty when nothing is
std::string complaintAboutEnd(LumatileProcess& program);

}  // namespace lumatile::desktop
