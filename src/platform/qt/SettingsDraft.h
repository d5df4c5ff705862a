#pragma once

#include <sys/stat.h>

#include <QString>
#include <QVariant>

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace lumatile {

/// What is made while this lives is the user's alone, folders as well, from the first moment on.
class PrivateFiles {
public:
    PrivateFiles() : former_(umask(S_IRWXG | S_IRWXO)) {}
    PrivateFiles(const PrivateFiles&) = delete;
    PrivateFiles& operator=(const PrivateFiles&) = delete;
    ~PrivateFiles() { umask(former_); }

private:
    mode_t former_;
};

/// A file that exists for the time of one change beside the one that it is to replace, under a name
/// that was never used before: the toolkit remembers what it read and wrote by the names of files.
class SettingsDraft {
public:
    /// @param target the file that it is to replace
    explicit SettingsDraft(const QString& target);
    SettingsDraft(const SettingsDraft&) = delete;
    SettingsDraft& operator=(const SettingsDraft&) = delete;
    ~SettingsDraft();

    const QString& path() const { return path_; }

    /// Writes a file whole.
    /// @return why it was not
    std::optional<std::string> write(const std::map<QString, QVariant>& values) const;

    /// Has the file take the target's place.
    bool replaceTarget() const;

private:
    bool writeWithToolkit(const std::map<QString, QVariant>& values) const;
    bool isWhole(std::size_t keys) const;
    std::string reasonOf(const std::map<QString, QVariant>& values) const;
    void remove() const;

    inline static quint64 count_ = 0;
    QString target_;
    QString path_;
};

}  // namespace lumatile
