#include "platform/qt/QSettingsPreferences.h"

#include <sys/stat.h>

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QMetaType>
#include <QSettings>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <utility>

#include "platform/qt/SettingsText.h"
#include "platform/qt/SettingsWatch.h"

namespace lumatile {

namespace {

constexpr mode_t nobodyElse = S_IRWXG | S_IRWXO;

// The longest list of commands is 16 MiB; in the file a byte takes up to four characters.
constexpr off_t largestFile = off_t{128} * 1024 * 1024;

// Others hold the lock only while they write.
constexpr int lockPatienceMilliseconds = 1000;

/// What is made while this lives is the user's alone, folders as well, from the first moment on.
class PrivateFiles {
public:
    PrivateFiles() : former_(umask(nobodyElse)) {}
    PrivateFiles(const PrivateFiles&) = delete;
    PrivateFiles& operator=(const PrivateFiles&) = delete;
    ~PrivateFiles() { umask(former_); }

private:
    mode_t former_;
};

/// A file that exists for the time of one change under a name that was never used before: the
/// toolkit remembers what it read and wrote by the names of files.
class Draft {
public:
    explicit Draft(const QString& path)
        : path_(path + QLatin1Char('.') + QString::number(++count_) + QLatin1String(".new")) {
        remove();
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;
    ~Draft() {
        remove();
        // The toolkit forgets the values when it looks for the file again.
        const QSettings forgotten(path_, QSettings::NativeFormat);
    }

    const QString& path() const { return path_; }
    bool renameTo(const QString& path) const {
        return std::rename(QFile::encodeName(path_).constData(),
                           QFile::encodeName(path).constData()) == 0;
    }

private:
    /// A process that was killed may have left a draft of this name, and a lock of it for which the
    /// toolkit would wait.
    void remove() const {
        QFile::remove(path_);
        QFile::remove(path_ + QLatin1String(".lock"));
    }

    inline static quint64 count_ = 0;
    QString path_;
};

std::map<QString, QVariant> valuesIn(const QSettings& settings) {
    std::map<QString, QVariant> values;
    for (const QString& key : settings.allKeys()) {
        if (!key.isEmpty()) {  // A damaged line; it could not be written either.
            values[key] = settings.value(key);
        }
    }
    return values;
}

bool endsWithALine(const QString& path) {
    QFile file(path);
    char last = 0;
    return file.open(QIODevice::ReadOnly) && file.seek(file.size() - 1) && file.getChar(&last) &&
           last == '\n';
}

/// Writes a file whole. The toolkit takes a write that a full disk cut short for a success. A file
/// that was cut lacks a key or the end of its last line, so it is read back, under another name, of
/// which the toolkit remembers nothing.
bool write(const std::map<QString, QVariant>& values, const Draft& draft, const Draft& readBack) {
    if (values.empty()) {
        // The toolkit makes no file for nothing.
        QFile file(readBack.path());
        return file.open(QIODevice::WriteOnly);
    }
    {
        QSettings settings(draft.path(), QSettings::NativeFormat);
        for (const auto& [key, value] : values) {
            settings.setValue(key, value);
        }
        settings.sync();
        if (settings.status() != QSettings::NoError) {
            return false;
        }
    }
    if (!draft.renameTo(readBack.path())) {
        return false;
    }
    const QSettings settings(readBack.path(), QSettings::NativeFormat);
    const std::map<QString, QVariant> found = valuesIn(settings);
    return settings.status() == QSettings::NoError && endsWithALine(readBack.path()) &&
           std::equal(found.begin(), found.end(), values.begin(), values.end(),
                      [](const auto& one, const auto& other) { return one.first == other.first; });
}

/// The toolkit sees a change of a file by its size and its time in milliseconds.
void makeNewer(const QString& path, const QString& than) {
    QFile file(path);
    const QDateTime former = QFileInfo(than).lastModified();
    if (former.isValid() && QFileInfo(path).lastModified() <= former &&
        file.open(QIODevice::ReadWrite)) {
        file.setFileTime(former.addMSecs(1), QFileDevice::FileModificationTime);
    }
}

/// A process that was killed after it had made the lock and before it had written its name into it
/// leaves an empty one, of which nobody knows whose it is; the toolkit waits half a minute for it.
void removeNamelessLock(const QString& path) {
    const QFileInfo lock(path);
    if (lock.exists() && lock.size() == 0 &&
        lock.lastModified().msecsTo(QDateTime::currentDateTime()) >= lockPatienceMilliseconds) {
        QFile::remove(path);
    }
}

/// The file that is replaced: people keep their settings elsewhere and link to them.
QString fileBehind(const QString& path) {
    const QString behind = QFileInfo(path).canonicalFilePath();
    return behind.isEmpty() ? path : behind;  // Empty where there is no file yet.
}

QString text(std::string_view key) {
    return QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}

}  // namespace

// The place where the settings of organisation and application "lumatile" belong. Asking a settings
// object for it would read the file.
QSettingsPreferences::QSettingsPreferences(SystemLog& log)
    : log_(log),
      path_(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
            QStringLiteral("/lumatile/lumatile.conf")) {}

QSettingsPreferences::QSettingsPreferences(SystemLog& log, const std::string& path)
    : log_(log), path_(QString::fromStdString(path)) {}

std::optional<Bytes> QSettingsPreferences::bytes(std::string_view key) {
    const QVariant value = read(key);
    if (value.typeId() != QMetaType::QByteArray) {
        return std::nullopt;
    }
    return value.toByteArray().toStdString();
}

std::optional<bool> QSettingsPreferences::boolean(std::string_view key) {
    // The file does not tell a boolean from a text.
    const QVariant value = read(key);
    if (value.typeId() == QMetaType::QString) {
        if (value.toString() == QLatin1String("true")) {
            return true;
        }
        if (value.toString() == QLatin1String("false")) {
            return false;
        }
    }
    return std::nullopt;
}

void QSettingsPreferences::setBytes(std::string_view key, const Bytes& value) {
    change(key, QByteArray::fromStdString(value));
}

void QSettingsPreferences::setBoolean(std::string_view key, bool value) {
    // As the file gives it back.
    change(key, value ? QStringLiteral("true") : QStringLiteral("false"));
}

void QSettingsPreferences::remove(std::string_view key) { change(key, QVariant()); }

std::unique_ptr<PreferencesWatch> QSettingsPreferences::observe(std::function<void()> changed) {
    const PrivateFiles privateFiles;
    QDir().mkpath(QFileInfo(path_).absolutePath());
    return std::make_unique<SettingsWatch>(path_, std::move(changed));
}

QVariant QSettingsPreferences::read(std::string_view key) {
    const auto unsaved = unsaved_.find(text(key));
    if (unsaved != unsaved_.end()) {
        return unsaved->second;
    }
    if (!mayBeRead()) {
        return {};
    }
    const QSettings settings(path_, QSettings::NativeFormat);
    return settings.value(text(key));
}

/// False for what must not even be opened (a pipe would block for ever, an absurdly long file would
/// take all memory) and for a text that the toolkit would not survive.
bool QSettingsPreferences::mayBeRead() {
    struct stat status {};
    if (stat(QFile::encodeName(path_).constData(), &status) != 0) {
        return errno == ENOENT;
    }
    if (!S_ISREG(status.st_mode) || status.st_size > largestFile) {
        return false;
    }
    const std::string state = std::to_string(status.st_ino) + ' ' + std::to_string(status.st_size) +
                              ' ' + std::to_string(status.st_mtim.tv_sec) + '.' +
                              std::to_string(status.st_mtim.tv_nsec);
    if (state == checkedState_) {
        return true;
    }
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QByteArray bytes = file.read(largestFile);
    if (!SettingsText::isSafeToRead({bytes.constData(), static_cast<std::size_t>(bytes.size())})) {
        return false;
    }
    checkedState_ = state;
    return true;
}

void QSettingsPreferences::change(std::string_view key, QVariant value) {
    unsaved_[text(key)] = std::move(value);
    const std::optional<std::string> obstacle = store();
    if (!obstacle) {
        unsaved_.clear();
        return;
    }
    log_.write("Preferences", path_.toStdString() + ' ' + *obstacle +
                                  "; the change holds for now and is written with the next one");
}

std::optional<std::string> QSettingsPreferences::store() {
    const std::string unwritable = "cannot be written";
    const PrivateFiles privateFiles;
    if (!QDir().mkpath(QFileInfo(path_).absolutePath())) {
        return unwritable;
    }
    // The lock that every settings object of this file takes when it writes.
    const QString lockPath = path_ + QStringLiteral(".lock");
    removeNamelessLock(lockPath);
    QLockFile lock(lockPath);
    if (!lock.tryLock(lockPatienceMilliseconds)) {
        removeNamelessLock(lockPath);
        if (!lock.tryLock(0)) {
            return unwritable;
        }
    }
    if (!mayBeRead()) {
        return "holds what this program has not stored, and is left alone";
    }
    Values values = valuesIn(QSettings(path_, QSettings::NativeFormat));
    for (const auto& [key, value] : unsaved_) {
        if (value.isValid()) {
            values[key] = value;
        } else {
            values.erase(key);
        }
    }
    const QString target = fileBehind(path_);
    const Draft draft(target);
    const Draft readBack(target);
    if (!write(values, draft, readBack)) {
        return unwritable;
    }
    makeNewer(readBack.path(), target);
    return readBack.renameTo(target) ? std::nullopt : std::optional(unwritable);
}

}  // namespace lumatile
