#include "tests/desktop/sync/MirroredFolders.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <sstream>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/Environment.h"

namespace lumatile::desktop {

namespace {

Environment environmentIn(const std::filesystem::path& home) {
    Environment environment = inheritedEnvironment();
    environment["HOME"] = home;
    environment["STNOUPGRADE"] = "1";
    return environment;
}

std::string outputOf(std::vector<std::string> command, const std::filesystem::path& home) {
    const std::filesystem::path output = home / "answer";
    ChildProcess process({std::move(command), environmentIn(home), output});
    const auto exit = process.wait(Deadline::usual());
    if (!exit || exit->status != 0) {
        throw DesktopError("syncthing: " + readFile(output));
    }
    return readFile(output);
}

/// The one word that is as long as an identity; lines of a log may stand before it.
std::string identityIn(const std::string& output) {
    constexpr std::size_t length = 63;
    std::istringstream words(output);
    for (std::string word; words >> word;) {
        if (word.size() == length && word.find('-') != std::string::npos) {
            return word;
        }
    }
    throw DesktopError("syncthing has no identity: " + output);
}

}  // namespace

MirroredFolders::Port::Port() : descriptor_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    // The socket interface takes every kind of address through one base type.
    auto* base = reinterpret_cast<sockaddr*>(&address);  // NOLINT(*-reinterpret-cast)
    // Who asks for the port by its number, as the service does, may listen beside a socket that
    // does not; who asks for any is given another one.
    const int shared = 1;
    const bool isBound =
        descriptor_ >= 0 &&
        setsockopt(descriptor_, SOL_SOCKET, SO_REUSEADDR, &shared, sizeof shared) == 0 &&
        bind(descriptor_, base, length) == 0 && getsockname(descriptor_, base, &length) == 0;
    if (!isBound) {
        close(descriptor_);
        throw DesktopError("no free port");
    }
    number_ = ntohs(address.sin_port);
}

MirroredFolders::Port::~Port() { close(descriptor_); }

MirroredFolders::MirroredFolders() {
    for (std::size_t index = 0; index < sides_.size(); ++index) {
        Side& side = sides_[index];
        side.home = folder_.path() / ("home" + std::to_string(index));
        side.shared = side.home / "shared";
        std::filesystem::create_directories(side.shared);
        const std::string home = "--home=" + (side.home / "syncthing").string();
        outputOf({"syncthing", "generate", "--no-default-folder", "--skip-port-probing", home},
                 side.home);
        side.device = identityIn(outputOf({"syncthing", "serve", "--device-id", home}, side.home));
    }
    for (std::size_t index = 0; index < sides_.size(); ++index) {
        folder_.write(std::filesystem::relative(sides_[index].home / "syncthing" / "config.xml",
                                                folder_.path()),
                      configuration(sides_[index]));
        start(index);
    }
}

void MirroredFolders::start(std::size_t side) {
    const Side& own = sides_.at(side);
    sides_[side].process =
        ChildProcess({{"syncthing", "serve", "--no-browser", "--no-restart", "--no-upgrade",
                       "--home=" + (own.home / "syncthing").string()},
                      environmentIn(own.home),
                      own.home / "output"});
}

std::string MirroredFolders::output(std::size_t side) const {
    return readFile(sides_.at(side).home / "output");
}

std::string MirroredFolders::configuration(const Side& own) const {
    std::ostringstream text;
    text << "<configuration version=\"36\">\n"
         // Changes are looked for after a second and not after ten. What the service overlooked it
         // finds when it looks at everything; that is the only answer to some of its own races.
         << "<folder id=\"settings\" label=\"settings\" path=\"" << own.shared.string()
         << "\" type=\"sendreceive\" rescanIntervalS=\"20\" fsWatcherEnabled=\"true\""
         << " fsWatcherDelayS=\"1\">\n<filesystemType>basic</filesystemType>\n";
    for (const Side& side : sides_) {
        text << "<device id=\"" << side.device << "\"></device>\n";
    }
    // What could not be fetched because the file had changed is tried again at once.
    text << "<maxConflicts>10</maxConflicts>\n<pullerPauseS>1</pullerPauseS>\n</folder>\n";
    for (const Side& side : sides_) {
        text << "<device id=\"" << side.device << "\" name=\"" << side.port.number()
             << "\" compression=\"never\"><address>tcp://127.0.0.1:" << side.port.number()
             << "</address></device>\n";
    }
    text << "<gui enabled=\"false\"></gui>\n<options>\n"
         << "<listenAddress>tcp://127.0.0.1:" << own.port.number() << "</listenAddress>\n"
         << "<globalAnnounceEnabled>false</globalAnnounceEnabled>\n"
         << "<localAnnounceEnabled>false</localAnnounceEnabled>\n"
         << "<relaysEnabled>false</relaysEnabled>\n<natEnabled>false</natEnabled>\n"
         << "<reconnectionIntervalS>2</reconnectionIntervalS>\n<urAccepted>-1</urAccepted>\n"
         << "<crashReportingEnabled>false</crashReportingEnabled>\n"
         << "<autoUpgradeIntervalH>0</autoUpgradeIntervalH>\n"
         << "<startBrowser>false</startBrowser>\n</options>\n</configuration>\n";
    return text.str();
}

}  // namespace lumatile::desktop
