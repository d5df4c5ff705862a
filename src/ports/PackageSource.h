#pragma once

#include <functional>
#include <optional>
#include <string>

namespace lumatile {

/// What the system's package service knows about the package that this program came in.
struct PackageAnswer {
    enum class State {
        upToDate,
        updateAvailable,
        noPackage,  ///< The running program belongs to no installed package.
        noService,  ///< There is no package service.
        failed,     ///< The service did not answer, or not usefully.
    };

    State state = State::failed;
    std::string newVersion;  ///< Where there is one; plain printable letters, at most 128.
    std::string reason;      ///< Why it failed, for a log line.

    bool operator==(const PackageAnswer&) const = default;
};

/// Port: the system's own source of updates. It downloads and installs; this program only asks.
class PackageSource {
public:
    virtual ~PackageSource() = default;

    /// Asks without waiting. `done` is called once from the run loop, after a bounded time also
    /// when nothing answers; never when the source is gone before, or when it is asked again.
    virtual void ask(std::function<void(const PackageAnswer&)> done) = 0;

    /// Whether a program that shows updates to the user is installed.
    virtual bool canOpenSoftwareCentre() = 0;

    /// @return false when nothing could be started
    virtual bool openSoftwareCentre() = 0;

    /// Lets the service install the update that the last answer told of; it asks for whatever
    /// permission it needs. `done` is called once from the run loop with why that failed, absent
    /// when the service has installed it.
    virtual void install(std::function<void(const std::optional<std::string>&)> done) = 0;
};

}  // namespace lumatile
