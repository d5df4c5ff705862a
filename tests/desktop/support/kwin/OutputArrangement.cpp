#include "tests/desktop/support/kwin/OutputArrangement.h"

#include <kde-output-device-v2-client-protocol.h>
#include <kde-output-management-v2-client-protocol.h>
#include <wayland-client.h>

#include <algorithm>
#include <memory>
#include <optional>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/kwin/WaylandClient.h"

namespace lumatile::desktop {

namespace {

constexpr std::uint32_t managementVersion = 3;  // The first with an order of outputs.
constexpr std::uint32_t deviceVersion = 2;      // The first with names.

struct Device {
    kde_output_device_v2* device = nullptr;
    std::string name;
    std::vector<kde_output_device_mode_v2*> modes;  // Later events mention them.
};

struct DeviceNews {
    static void name(void* data, kde_output_device_v2* /*proxy*/, const char* name) {
        static_cast<Device*>(data)->name = name;
    }
    static void mode(void* data, kde_output_device_v2* /*proxy*/, kde_output_device_mode_v2* mode) {
        static_cast<Device*>(data)->modes.push_back(mode);
    }
    static void applied(void* answer, kde_output_configuration_v2* /*proxy*/) {
        *static_cast<std::optional<bool>*>(answer) = true;
    }
    static void failed(void* answer, kde_output_configuration_v2* /*proxy*/) {
        *static_cast<std::optional<bool>*>(answer) = false;
    }
    template <typename... Arguments>
    static void nothing(void* /*device*/, kde_output_device_v2* /*proxy*/,
                        Arguments... /*arguments*/) {}

    static constexpr kde_output_device_v2_listener device{.geometry = nothing,
                                                          .current_mode = nothing,
                                                          .mode = mode,
                                                          .done = nothing,
                                                          .scale = nothing,
                                                          .edid = nothing,
                                                          .enabled = nothing,
                                                          .uuid = nothing,
                                                          .serial_number = nothing,
                                                          .eisa_id = nothing,
                                                          .capabilities = nothing,
                                                          .overscan = nothing,
                                                          .vrr_policy = nothing,
                                                          .rgb_range = nothing,
                                                          .name = name};
    static constexpr kde_output_configuration_v2_listener configuration{applied, failed};
};

/// Lives for one arrangement: what is told afterwards would pile up on its connection.
class OutputArranger : public WaylandClient {
public:
    explicit OutputArranger(const std::string& socket);
    OutputArranger(const OutputArranger&) = delete;
    OutputArranger& operator=(const OutputArranger&) = delete;
    ~OutputArranger() override;

    void arrange(const std::vector<ArrangedOutput>& outputs, std::size_t primary);

private:
    kde_output_management_v2* management_;
    std::vector<std::unique_ptr<Device>> devices_;
};

OutputArranger::OutputArranger(const std::string& socket)
    : WaylandClient(socket),
      management_(static_cast<kde_output_management_v2*>(
          bindOnly(kde_output_management_v2_interface, managementVersion))) {
    for (const Global& global : globals(kde_output_device_v2_interface.name)) {
        auto device = std::make_unique<Device>();
        device->device = static_cast<kde_output_device_v2*>(
            bind(global, kde_output_device_v2_interface, deviceVersion));
        kde_output_device_v2_add_listener(device->device, &DeviceNews::device, device.get());
        devices_.push_back(std::move(device));
    }
    roundTrip();
    // "Virtual-0", "Virtual-1" …
    std::sort(devices_.begin(), devices_.end(),
              [](const auto& one, const auto& other) { return one->name < other->name; });
}

OutputArranger::~OutputArranger() {
    // Modes that have been read and not been told would never be freed.
    wl_display_dispatch_pending(display());
    for (const auto& device : devices_) {
        std::for_each(device->modes.begin(), device->modes.end(),
                      kde_output_device_mode_v2_destroy);
        kde_output_device_v2_destroy(device->device);
    }
    kde_output_management_v2_destroy(management_);
}

void OutputArranger::arrange(const std::vector<ArrangedOutput>& outputs, std::size_t primary) {
    if (outputs.size() != devices_.size()) {
        throw DesktopError("there are " + std::to_string(devices_.size()) + " outputs");
    }
    kde_output_configuration_v2* configuration =
        kde_output_management_v2_create_configuration(management_);
    std::optional<bool> answer;
    kde_output_configuration_v2_add_listener(configuration, &DeviceNews::configuration, &answer);
    std::uint32_t further = 2;
    for (std::size_t index = 0; index < outputs.size(); ++index) {
        const ArrangedOutput& output = outputs[index];
        kde_output_device_v2* device = devices_[index]->device;
        kde_output_configuration_v2_enable(configuration, device, output.enabled ? 1 : 0);
        kde_output_configuration_v2_transform(configuration, device,
                                              output.upright
                                                  ? KDE_OUTPUT_DEVICE_V2_TRANSFORM_90
                                                  : KDE_OUTPUT_DEVICE_V2_TRANSFORM_NORMAL);
        kde_output_configuration_v2_position(configuration, device, output.x, output.y);
        kde_output_configuration_v2_scale(configuration, device,
                                          wl_fixed_from_double(output.scale));
        kde_output_configuration_v2_set_priority(configuration, device,
                                                 index == primary ? 1 : further++);
    }
    kde_output_configuration_v2_apply(configuration);
    waitForEvents([&] { return answer.has_value(); });
    kde_output_configuration_v2_destroy(configuration);
    if (!answer.value_or(false)) {
        throw DesktopError("KWin refuses the arrangement of outputs");
    }
}

}  // namespace

void arrangeOutputs(const std::string& socket, const std::vector<ArrangedOutput>& outputs,
                    std::size_t primary) {
    OutputArranger(socket).arrange(outputs, primary);
}

}  // namespace lumatile::desktop
