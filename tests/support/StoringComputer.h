#pragma once

#include <glib.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/freedesktop/sync_folder/SharedFolderStore.h"
#include "platform/simulated/SimulatedLog.h"
#include "platform/simulated/SimulatedPreferences.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "preference_sync/SharedSetCodec.h"
#include "preference_sync/SyncTimestamp.h"

namespace lumatile {

inline SharedSet setOf(double time, const Bytes& commands) {
    return {{"__ts", SyncTimestamp::encode(time)}, {"commands", commands}};
}

inline std::string textOf(double time, const Bytes& commands) {
    return SharedSetCodec::print(setOf(time, commands)).value();
}

/// Replaces a file as services do: by another one of which nobody has seen a part.
inline void replaceFile(const std::filesystem::path& path, const std::string& text) {
    const std::filesystem::path draft = path.parent_path() / ".arriving";
    std::ofstream(draft, std::ios::binary) << text;
    std::filesystem::rename(draft, path);
}

/// Runs the main loop of GLib until `holds`.
/// @return whether it came to hold within a minute; services take their time on a busy machine
inline bool runUntil(const std::function<bool()>& holds) {
    bool isOver = false;
    constexpr guint patience = 60'000;
    const guint timer = g_timeout_add(
        patience,
        [](gpointer over) -> gboolean {
            *static_cast<bool*>(over) = true;
            return G_SOURCE_CONTINUE;
        },
        &isOver);
    while (!holds() && !isOver) {
        g_main_context_iteration(nullptr, TRUE);
    }
    g_source_remove(timer);
    return holds();
}

/// A store with settings of its own, as on one computer.
class StoringComputer {
public:
    StoringComputer() : runLoop(clock), preferences(log, runLoop) {}
    StoringComputer(const StoringComputer&) = delete;
    StoringComputer& operator=(const StoringComputer&) = delete;
    ~StoringComputer() = default;

    /// The program starts, for the first time or anew.
    void start() {
        watch.reset();
        told.clear();
        store = std::make_unique<SharedFolderStore>(preferences, log, pace);
        watch = store->observe([this](const SharedStoreChange& change) {
            if (change.reasonCode) {
                told.push_back(*change.reasonCode);
            }
        });
    }

    /// Starts with a folder that the user has just named.
    void start(const std::filesystem::path& folder) {
        start();
        store->setLocation(folder.string());
        settle();
    }

    void change(double time, const Bytes& commands) {
        store->set(commands, "commands");
        store->set(SyncTimestamp::encode(time), "__ts");
        store->synchronize();
    }

    /// Handles everything that has happened, and what follows from it.
    void settle() {
        const bool isQuiet = runUntil([this] {
            while (g_main_context_iteration(nullptr, FALSE) != 0) {
            }
            return !store->isVisiting();
        });
        ASSERT_TRUE(isQuiet) << "the visits have no end";
    }

    SharedStoreStatus::Condition condition() { return store->status().condition; }

    /// Nobody here minds a file that is written the moment it has arrived.
    static SharedFolderStore::Pace hurrying() {
        SharedFolderStore::Pace pace;
        pace.restMilliseconds = 0;
        return pace;
    }

    SimulatedLog log;
    SimulatedClock clock;
    SimulatedRunLoop runLoop;
    SimulatedPreferences preferences;
    SharedFolderStore::Pace pace = hurrying();
    std::unique_ptr<SharedFolderStore> store;
    std::vector<int> told;
    SharedStoreWatch watch;
};

}  // namespace lumatile
