#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile::desktop {

/// Two folders that a pair of Syncthing processes keeps the same, as on two computers. They know
/// only each other and speak over the loopback device.
class MirroredFolders {
public:
    /// Both processes run; that they have met shows in what they do.
    /// @throws DesktopError when they cannot be set up
    MirroredFolders();

    const std::filesystem::path& path(std::size_t side) const { return sides_.at(side).shared; }

    /// Ends the process of one side; its folder is on its own until it is started again.
    void stop(std::size_t side) { sides_.at(side).process.stop(); }
    void start(std::size_t side);

    /// What the process of a side wrote.
    std::string output(std::size_t side) const;

private:
    /// A port of the loopback device, kept from everybody who does not ask for its number.
    class Port {
    public:
        Port();
        Port(const Port&) = delete;
        Port& operator=(const Port&) = delete;
        ~Port();

        int number() const { return number_; }

    private:
        int descriptor_;
        int number_ = 0;
    };

    struct Side {
        std::filesystem::path home;
        std::filesystem::path shared;
        std::string device;
        Port port;
        ChildProcess process;
    };

    std::string configuration(const Side& own) const;

    TemporaryFolder folder_;
    std::array<Side, 2> sides_;
};

}  // namespace lumatile::desktop
