#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tests/desktop/support/Deadline.h"
#include "tests/desktop/support/Environment.h"

namespace lumatile::desktop {

/// A program of ours that ends with its owner: asked politely, then by force, always by its pid. It
/// dies with this process too, however that ends.
class ChildProcess {
public:
    struct Start {
        std::vector<std::string> command;  ///< Program (found along PATH) and its arguments.
        Environment environment;           ///< The whole environment.
        std::filesystem::path output;      ///< File for standard output and error; empty: dropped.
        std::optional<int> keptDescriptor = std::nullopt;  ///< Open in the child under its number.
    };

    /// How a program ended.
    struct Exit {
        std::optional<int> status;  ///< Exit status; absent when a signal ended it.
        int signal = 0;

        bool operator==(const Exit&) const = default;
    };

    ChildProcess() = default;

    /// @throws DesktopError when no process can be made. A program that cannot be found ends with
    ///         status 127.
    explicit ChildProcess(const Start& start);

    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess& operator=(ChildProcess&& other) noexcept;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    pid_t pid() const { return pid_; }
    bool isRunning();

    /// Whether some object here has started the process and will wait for it.
    static bool owns(pid_t pid);

    /// Readable once the program has ended; for poll(2).
    int descriptor() const { return descriptor_; }

    void signal(int number) const;

    /// Waits for the program to end by itself.
    /// @return absent when it still runs at the deadline
    std::optional<Exit> wait(Deadline deadline);

    /// Asks it to end, waits, ends it by force when it does not listen.
    /// @return how it ended; absent when there was no program
    std::optional<Exit> stop(std::chrono::milliseconds patience = std::chrono::seconds(10));

private:
    void reap(bool block);

    pid_t pid_ = -1;
    int descriptor_ = -1;
    std::optional<Exit> exit_;
};

}  // namespace lumatile::desktop
