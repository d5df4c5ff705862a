#include "platform/freedesktop/sync_folder/MountTable.h"

#include <fcntl.h>
#include <unistd.h>

namespace lumatile {

// NOLINTNEXTLINE(*-vararg)
MountTable::MountTable() : descriptor_(open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC)) {}

MountTable::~MountTable() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

}  // namespace lumatile
