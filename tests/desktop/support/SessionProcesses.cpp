#include "tests/desktop/support/SessionProcesses.h"

#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <charconv>
#include <filesystem>
#include <sstream>
#include <system_error>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace lumatile::desktop {
namespace {

std::filesystem::path processFolder(pid_t pid) { return "/proc/" + std::to_string(pid); }

std::vector<pid_t> allProcesses() {
    std::vector<pid_t> result;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
        const std::string name = entry.path().filename().string();
        const char* const last = name.data() + name.size();
        pid_t pid = 0;
        const auto [end, failure] = std::from_chars(name.data(), last, pid);
        if (failure == std::errc{} && end == last && pid != getpid()) {
            result.push_back(pid);
        }
    }
    return result;
}

bool carries(pid_t pid, const std::string& mark) {
    // Variables end with a zero byte.
    const std::string wanted = std::string(sessionMark) + "=" + mark + '\0';
    return readFile(processFolder(pid) / "environ").find(wanted) != std::string::npos;
}

bool runs(pid_t pid, const std::string& executable) {
    std::error_code gone;
    const auto program = std::filesystem::read_symlink(processFolder(pid) / "exe", gone);
    return !gone && program.filename() == executable;
}

pid_t parentOf(pid_t pid) {
    const std::string text = readFile(processFolder(pid) / "stat");
    // The program's name stands in brackets and may hold anything.
    const std::size_t name = text.rfind(')');
    if (name == std::string::npos) {
        return 0;
    }
    std::istringstream rest(text.substr(name + 1));
    std::string state;
    pid_t parent = 0;
    rest >> state >> parent;
    return parent;
}

bool waitForEnd(int descriptor, int milliseconds) {
    pollfd ended{descriptor, POLLIN, 0};
    return poll(&ended, 1, milliseconds) > 0;
}

void end(pid_t pid) {
    const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
    if (descriptor < 0) {
        return;
    }
    kill(pid, SIGTERM);
    kill(pid, SIGCONT);
    if (!waitForEnd(descriptor, 2000)) {
        kill(pid, SIGKILL);
        waitForEnd(descriptor, 2000);
    }
    close(descriptor);
}

}  // namespace

void endProcessesOfSession(const std::string& mark, const std::string& executable) {
    for (const pid_t pid : allProcesses()) {
        if (carries(pid, mark) && (executable.empty() || runs(pid, executable))) {
            end(pid);
        }
    }
}

void reapOrphans(const std::function<bool(pid_t)>& isOurs) {
    for (const pid_t pid : allProcesses()) {
        if (parentOf(pid) != getpid() || isOurs(pid)) {
            continue;
        }
        // A program without an environment is about to end: it has given up its memory.
        if (readFile(processFolder(pid) / "environ").empty()) {
            const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
            if (descriptor >= 0) {
                waitForEnd(descriptor, 1000);
                close(descriptor);
            }
            waitpid(pid, nullptr, WNOHANG);
        }
    }
}

}  // namespace lumatile::desktop
