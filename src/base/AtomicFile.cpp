#include "base/AtomicFile.h"

#include <array>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/UUID.h"

namespace lumatile {

namespace {

std::error_code lastError() { return {errno, std::generic_category()}; }

/// Owns a file descriptor.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }

    int get() const { return number_; }
    bool isOpen() const { return number_ >= 0; }

    /// Some file systems tell only here that the bytes did not arrive.
    std::error_code close() {
        return ::close(std::exchange(number_, -1)) == 0 ? std::error_code{} : lastError();
    }

private:
    int number_;
};

std::string temporaryPrefix(std::string_view writer) {
    std::string prefix = ".lumatile-";
    if (!writer.empty()) {
        prefix.append(writer).push_back('-');
    }
    return prefix;
}

/// A temporary file in an open folder, removed unless it takes its final name.
class TemporaryFile {
public:
    TemporaryFile(int folder, std::string_view writer)
        : folder_(folder),
          // Of its own length, so that a long final name cannot make this one too long.
          name_(temporaryPrefix(writer) + UUID::random().lowercaseText()),
          // NOLINTNEXTLINE(*-vararg)
          file_(
              ::openat(folder, name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, ownerOnly)) {
        if (!file_.isOpen()) {
            error_ = lastError();
            // Nothing was made, or it is not ours to remove.
            name_.clear();
        } else if (::flock(file_.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            // Taken for a leftover in this very moment.
            error_ = lastError();
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!name_.empty()) {
            ::unlinkat(folder_, name_.c_str(), 0);
        }
    }

    /// The bytes on the disk, the file closed.
    std::error_code write(std::string_view bytes) {
        if (error_) {
            return error_;
        }
        // The mask of new files may have taken more away.
        if (::fchmod(file_.get(), ownerOnly) != 0) {
            return lastError();
        }
        while (!bytes.empty()) {
            const ssize_t written = ::write(file_.get(), bytes.data(), bytes.size());
            if (written >= 0) {
                bytes.remove_prefix(static_cast<std::size_t>(written));
            } else if (errno != EINTR) {
                return lastError();
            }
        }
        if (::fsync(file_.get()) != 0) {
            return lastError();
        }
        return file_.close();
    }

    std::error_code rename(const std::string& name) {
        if (::renameat(folder_, name_.c_str(), folder_, name.c_str()) != 0) {
            return lastError();
        }
        name_.clear();
        return {};
    }

private:
    static constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;

    int folder_;
    std::string name_;
    Descriptor file_;
    std::error_code error_;
};

/// Renaming onto a device or a pipe would silently do away with it.
std::error_code checkReplaceable(int folder, const std::string& name) {
    struct stat status {};
    if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return errno == ENOENT ? std::error_code{} : lastError();
    }
    if (S_ISDIR(status.st_mode)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    if (!S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode)) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    return {};
}

std::filesystem::path withLinksFollowed(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path target = std::filesystem::canonical(path, error);
    // There is no such file yet, or nothing to follow.
    return error ? path : target;
}

}  // namespace

std::error_code AtomicFile::replace(const std::filesystem::path& path, std::string_view bytes,
                                    std::string_view writer) {
    const std::filesystem::path target = withLinksFollowed(path);
    const std::string name = target.filename().string();
    const std::filesystem::path parent = target.has_parent_path() ? target.parent_path() : ".";
    if (name.empty()) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    // NOLINTNEXTLINE(*-vararg)
    const Descriptor folder(::open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen()) {
        return lastError();
    }
    if (const auto error = checkReplaceable(folder.get(), name)) {
        return error;
    }
    TemporaryFile temporary(folder.get(), writer);
    if (const auto error = temporary.write(bytes)) {
        return error;
    }
    if (const auto error = temporary.rename(name)) {
        return error;
    }
    // A file system that cannot flush folders says EINVAL; there is nothing more to be done there.
    if (::fsync(folder.get()) != 0 && errno != EINVAL) {
        return lastError();
    }
    return {};
}

void AtomicFile::removeLeftovers(const std::filesystem::path& folder, std::string_view writer) {
    const std::string prefix = temporaryPrefix(writer);
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (!entry->path().filename().native().starts_with(prefix)) {
            continue;
        }
        // Who writes it holds the lock; that of a process which was killed is free.
        const Descriptor file(
            // NOLINTNEXTLINE(*-vararg)
            ::open(entry->path().c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (file.isOpen() && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0) {
            ::unlink(entry->path().c_str());
        }
    }
}

std::error_code AtomicFile::read(const std::filesystem::path& path, std::size_t maxBytes,
                                 std::string& bytes) {
    // Without waiting: to open a pipe is otherwise to wait for its writer.
    // NOLINTNEXTLINE(*-vararg)
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.isOpen()) {
        return lastError();
    }
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) {
        return lastError();
    }
    if (S_ISDIR(status.st_mode)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    if (!S_ISREG(status.st_mode)) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    bytes.clear();
    std::array<char, 65536> buffer{};
    while (true) {
        const ssize_t count = ::read(file.get(), buffer.data(), buffer.size());
        if (count == 0) {
            return {};
        }
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            return lastError();
        }
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
        // Checked on what was read, since a file may grow meanwhile.
        if (bytes.size() > maxBytes) {
            return std::make_error_code(std::errc::file_too_large);
        }
    }
}

}  // namespace lumatile
