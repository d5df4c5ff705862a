#include "platform/wayland/WaylandOutputs.h"

#include <wayland-client.h>
#include <xdg-output-unstable-v1-client-protocol.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

namespace lumatile {

namespace {

constexpr std::uint32_t outputVersion = 4;
constexpr std::uint32_t managerVersion = 3;

// Since this version what the two objects tell of one output has one common end.
constexpr std::uint32_t commonEndVersion = 3;

// The compositor computes with scales in these steps; what follows from rounded sizes is a little
// off.
constexpr double scaleSteps = 120;

bool isUpright(int transform) {
    return transform == WL_OUTPUT_TRANSFORM_90 || transform == WL_OUTPUT_TRANSFORM_270 ||
           transform == WL_OUTPUT_TRANSFORM_FLIPPED_90 ||
           transform == WL_OUTPUT_TRANSFORM_FLIPPED_270;
}

}  // namespace

/// One output: what has been told of it since the last end, and what held at that.
class WaylandOutputs::Entry {
public:
    Entry(std::uint32_t global, WaylandHandle<wl_output> output, std::function<void()> changed)
        : global_(global), changed_(std::move(changed)), output_(std::move(output)) {
        listen();
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;
    ~Entry() = default;

    std::uint32_t global() const { return global_; }

    /// Nothing until the compositor has told all of it.
    const WaylandOutput* described() const {
        return described_.object != nullptr ? &described_ : nullptr;
    }

    bool hasDescription() const { return description_ != nullptr; }

    void describe(zxdg_output_manager_v1* manager);

private:
    struct Listeners;

    void listen();

    void end() {
        const double pixels = isUpright(transform_) ? mode_.height : mode_.width;
        if (!(told_.frame.width > 0 && told_.frame.height > 0 && pixels > 0)) {
            return;
        }
        told_.object = output_.get();
        told_.scale = std::round(pixels / told_.frame.width * scaleSteps) / scaleSteps;
        if (told_ != described_) {
            described_ = told_;
            changed_();
        }
    }

    std::uint32_t global_;
    std::function<void()> changed_;
    int transform_ = WL_OUTPUT_TRANSFORM_NORMAL;
    Size mode_;
    WaylandOutput told_;
    WaylandOutput described_;
    WaylandHandle<wl_output> output_;
    WaylandHandle<zxdg_output_v1> description_;
};

struct WaylandOutputs::Entry::Listeners {
    static Entry& of(void* data) { return *static_cast<Entry*>(data); }

    static constexpr wl_output_listener output = {
        .geometry = [](void* data, wl_output* /*output*/, int /*x*/, int /*y*/, int /*width*/,
                       int /*height*/, int /*subpixel*/, const char* /*make*/,
                       const char* /*model*/, int transform) { of(data).transform_ = transform; },
        .mode =
            [](void* data, wl_output* /*output*/, std::uint32_t flags, int width, int height,
               int /*refresh*/) {
                if ((flags & WL_OUTPUT_MODE_CURRENT) != 0) {
                    of(data).mode_ = {static_cast<double>(width), static_cast<double>(height)};
                }
            },
        .done = [](void* data, wl_output* /*output*/) { of(data).end(); },
        .scale = [](void* /*data*/, wl_output* /*output*/, int /*factor*/) {},
        .name = [](void* data, wl_output* /*output*/,
                   const char* name) { of(data).told_.name = name; },
        .description = [](void* /*data*/, wl_output* /*output*/, const char* /*text*/) {},
    };

    static constexpr zxdg_output_v1_listener description = {
        .logical_position =
            [](void* data, zxdg_output_v1* /*description*/, int x, int y) {
                of(data).told_.frame.x = x;
                of(data).told_.frame.y = y;
            },
        .logical_size =
            [](void* data, zxdg_output_v1* /*description*/, int width, int height) {
                of(data).told_.frame.width = width;
                of(data).told_.frame.height = height;
            },
        .done =
            [](void* data, zxdg_output_v1* description) {
                if (zxdg_output_v1_get_version(description) < commonEndVersion) {
                    of(data).end();
                }
            },
        .name =
            [](void* data, zxdg_output_v1* /*description*/, const char* name) {
                if (of(data).told_.name.empty()) {
                    of(data).told_.name = name;
                }
            },
        .description = [](void* /*data*/, zxdg_output_v1* /*description*/, const char* /*text*/) {},
    };
};

void WaylandOutputs::Entry::listen() {
    wl_output_add_listener(output_.get(), &Listeners::output, this);
}

void WaylandOutputs::Entry::describe(zxdg_output_manager_v1* manager) {
    description_.reset(zxdg_output_manager_v1_get_xdg_output(manager, output_.get()));
    zxdg_output_v1_add_listener(description_.get(), &Listeners::description, this);
}

WaylandOutputs::WaylandOutputs(WaylandConnection& connection)
    : connection_(connection),
      appearing_(connection.observeAppearing([this](const WaylandGlobal& global) { add(global); })),
      vanishing_(
          connection.observeVanishing([this](const WaylandGlobal& global) { remove(global); })) {
    for (const WaylandGlobal& global : connection.globals()) {
        add(global);
    }
}

WaylandOutputs::~WaylandOutputs() = default;

std::vector<WaylandOutput> WaylandOutputs::list() const {
    std::vector<WaylandOutput> result;
    for (const std::unique_ptr<Entry>& entry : entries_) {
        if (const WaylandOutput* const output = entry->described()) {
            result.push_back(*output);
        }
    }
    return result;
}

WaylandOutputs::Observers::Subscription WaylandOutputs::observe(Observers::Observer observer) {
    return observers_.add(std::move(observer));
}

void WaylandOutputs::add(const WaylandGlobal& global) {
    if (global.interface == zxdg_output_manager_v1_interface.name && !manager_) {
        manager_ = connection_.bind<zxdg_output_manager_v1>(
            global, zxdg_output_manager_v1_interface, managerVersion);
        for (const std::unique_ptr<Entry>& entry : entries_) {
            describe(*entry);
        }
    } else if (global.interface == wl_output_interface.name) {
        entries_.push_back(std::make_unique<Entry>(
            global.name, connection_.bind<wl_output>(global, wl_output_interface, outputVersion),
            [this] { observers_.notify(); }));
        describe(*entries_.back());
    }
}

void WaylandOutputs::remove(const WaylandGlobal& global) {
    const auto gone = std::find_if(entries_.begin(), entries_.end(), [&](const auto& entry) {
        return entry->global() == global.name;
    });
    if (gone == entries_.end()) {
        return;
    }
    // Whoever is told may still give back what lies on the output.
    const std::unique_ptr<Entry> last = std::move(*gone);
    entries_.erase(gone);
    if (last->described() != nullptr) {
        observers_.notify();
    }
}

void WaylandOutputs::describe(Entry& entry) {
    if (manager_ && !entry.hasDescription()) {
        entry.describe(manager_.get());
    }
}

}  // namespace lumatile
