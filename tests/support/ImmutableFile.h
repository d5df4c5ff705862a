#pragma once

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <filesystem>

namespace lumatile {

/// Makes a file immutable, as its owner may with `chattr +i`, for as long as it lives. Then nobody
/// may write, replace or remove it.
class ImmutableFile {
public:
    explicit ImmutableFile(const std::filesystem::path& path)
        // NOLINTNEXTLINE(*-vararg)
        : file_(open(path.c_str(), O_RDONLY | O_CLOEXEC)), isSo_(change(true)) {}

    ImmutableFile(const ImmutableFile&) = delete;
    ImmutableFile& operator=(const ImmutableFile&) = delete;

    ~ImmutableFile() {
        if (isSo_) {
            change(false);
        }
        close(file_);
    }

    /// False where the file system knows no such files, or the user may not make them.
    bool isSo() const { return isSo_; }

private:
    bool change(bool isImmutable) const {
        int flags = 0;
        // NOLINTNEXTLINE(*-vararg)
        if (ioctl(file_, FS_IOC_GETFLAGS, &flags) != 0) {
            return false;
        }
        flags = isImmutable ? flags | FS_IMMUTABLE_FL : flags & ~FS_IMMUTABLE_FL;
        // NOLINTNEXTLINE(*-vararg)
        return ioctl(file_, FS_IOC_SETFLAGS, &flags) == 0;
    }

    int file_;
    bool isSo_;
};

}  // namespace lumatile
