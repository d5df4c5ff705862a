#pragma once

namespace lumatile {

/// The kernel's list of mounts.
class MountTable {
public:
    MountTable();
    MountTable(const MountTable&) = delete;
    MountTable& operator=(const MountTable&) = delete;
    ~MountTable();

    /// Urgent (G_IO_PRI) when something was mounted or unmounted; negative where the kernel does
    /// not tell.
    int descriptor() const { return descriptor_; }

private:
    int descriptor_;
};

}  // namespace lumatile
