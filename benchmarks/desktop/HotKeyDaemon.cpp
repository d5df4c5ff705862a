#include "benchmarks/desktop/HotKeyDaemon.h"

#include <filesystem>

namespace lumatile::benchmark {

HotKeyDaemon::HotKeyDaemon(desktop::PrivateSession& session,
                           const std::vector<Shortcut>& shortcuts) {
    std::string settings;
    for (const Shortcut& shortcut : shortcuts) {
        settings += shortcut.keys;
        settings += "\n    ";
        settings += shortcut.command;
        settings += "\n\n";
    }
    const std::filesystem::path file = folder_.write("sxhkdrc", settings);
    // The smallest shell there is, which is the daemon's best case.
    process_ = session.start({"sxhkd", "-c", file.string()}, "sxhkd", {{"SXHKD_SHELL", "/bin/sh"}});
}

}  // namespace lumatile::benchmark
