#pragma once

#include <QString>
#include <QVariant>

#include <map>
#include <optional>
#include <string>

namespace lumatile {

/// A file of key and value lines, which only the user can read. Every reading looks at the file, so
/// a change that another process made is seen; every change is merged into what the file holds at
/// that moment, and the file is replaced whole or not at all. What is no such file, or what the
/// toolkit would not survive, is neither read nor written.
class SettingsFile {
public:
    using Values = std::map<QString, QVariant>;

    /// What became of a change.
    struct Outcome {
        enum class Kind { stored, locked, refused, failed };
        Kind kind = Kind::stored;
        std::string reason;  ///< Of a refusal, behind the name of the file; of a failure.
    };

    explicit SettingsFile(QString path) : path_(std::move(path)) {}

    const QString& path() const { return path_; }

    /// Invalid where there is no such value, and while the file is refused.
    QVariant value(const QString& key);

    /// Why the file is not read, behind its name; absent where there is no file, or one that is.
    std::optional<std::string> refusal();

    /// @param changes a value that is not valid is removed
    /// @param patience milliseconds for which another process's lock is waited for
    Outcome store(const Values& changes, int patience);

    /// Clears away what a process that was killed has left beside the file, and takes the file from
    /// others' eyes.
    /// @return false while some of that has to wait
    bool tidy();

    /// Makes the folder of the file, where there is none.
    /// @return why it cannot be made
    std::optional<std::string> makeFolder() const;

    /// Gives what lies there another name beside it.
    /// @return why it cannot be
    std::optional<std::string> setAside() const;

private:
    std::optional<std::string> inspect();
    std::optional<std::string> write(const Values& values) const;
    QString lockPath() const { return path_ + QStringLiteral(".lock"); }

    QString path_;
    std::string inspectedState_;          // Of the file, when it was last looked into.
    std::optional<std::string> verdict_;  // What came of that.
};

}  // namespace lumatile
