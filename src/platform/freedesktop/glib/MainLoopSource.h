#pragma once

#include <glib-unix.h>

#include <functional>
#include <memory>
#include <utility>

namespace lumatile {

/// Something that the main loop of GLib calls again and again until this is destroyed, which may
/// happen inside the call.
class MainLoopSource {
public:
    MainLoopSource() = default;
    MainLoopSource(MainLoopSource&& other) noexcept : id_(std::exchange(other.id_, 0)) {}
    MainLoopSource& operator=(MainLoopSource&& other) noexcept {
        std::swap(id_, other.id_);
        return *this;
    }
    MainLoopSource(const MainLoopSource&) = delete;
    MainLoopSource& operator=(const MainLoopSource&) = delete;
    ~MainLoopSource() { stop(); }

    static MainLoopSource every(int milliseconds, std::function<void()> work) {
        MainLoopSource source;
        source.id_ = g_timeout_add_full(G_PRIORITY_DEFAULT, static_cast<guint>(milliseconds), call,
                                        kept(std::move(work)), release);
        return source;
    }

    /// Calls `work` when `descriptor`, which outlives this, has one of `conditions`.
    static MainLoopSource when(int descriptor, GIOCondition conditions,
                               std::function<void()> work) {
        MainLoopSource source;
        source.id_ = g_unix_fd_add_full(
            G_PRIORITY_DEFAULT, descriptor, conditions,
            [](gint, GIOCondition, gpointer data) { return call(data); }, kept(std::move(work)),
            release);
        return source;
    }

    /// Calls `work` once, from the loop. Nothing stops it any more.
    static void once(std::function<void()> work) {
        g_idle_add_full(
            G_PRIORITY_DEFAULT,
            [](gpointer data) -> gboolean {
                call(data);
                return G_SOURCE_REMOVE;
            },
            kept(std::move(work)), release);
    }

    bool isRunning() const { return id_ != 0; }

    void stop() {
        if (id_ != 0) {
            g_source_remove(std::exchange(id_, 0));
        }
    }

private:
    using Work = std::shared_ptr<const std::function<void()>>;

    static gpointer kept(std::function<void()> work) {
        return new Work(std::make_shared<const std::function<void()>>(std::move(work)));
    }
    static gboolean call(gpointer data) {
        // What is called may destroy the source, and with it `data`.
        const Work work = *static_cast<Work*>(data);
        (*work)();
        return G_SOURCE_CONTINUE;
    }
    static void release(gpointer data) { delete static_cast<Work*>(data); }

    guint id_ = 0;
};

}  // namespace lumatile
