#include "platform/freedesktop/sync_folder/ComputerMark.h"

#include <glib.h>
#include <unistd.h>

#include <memory>

#include "base/AtomicFile.h"

namespace lumatile {

std::string computerMark() {
    constexpr std::size_t mostBytes = 4096;
    constexpr std::size_t digits = 16;
    std::string text;
    // Absent where no service manager ran ever; the host's name has to do then.
    if (AtomicFile::read("/etc/machine-id", mostBytes, text)) {
        text.clear();
    }
    text += std::string("\n") + g_get_host_name() + "\nlumatile\n" + std::to_string(geteuid());
    const std::unique_ptr<gchar, decltype(&g_free)> sum(
        g_compute_checksum_for_data(
            // NOLINTNEXTLINE(*-reinterpret-cast): the library takes bytes.
            G_CHECKSUM_SHA256, reinterpret_cast<const guchar*>(text.data()), text.size()),
        &g_free);
    return std::string(sum.get()).substr(0, digits);
}

}  // namespace lumatile
