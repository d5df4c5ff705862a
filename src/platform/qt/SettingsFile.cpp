#include "platform/qt/SettingsFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QSettings>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include "platform/qt/PreferencesTexts.h"
#include "platform/qt/SettingsDraft.h"
#include "platform/qt/SettingsText.h"

namespace lumatile {

namespace {

// A list of the greatest length takes 1 MiB. A larger file would hold up the run loop.
constexpr off_t largestFile = off_t{5} * 1024 * 1024;

// Others hold the lock only while they write.
constexpr qint64 longestLockMilliseconds = 1000;

std::string errorText() { return std::generic_category().message(errno); }

QByteArray encoded(const QString& path) { return QFile::encodeName(path); }

SettingsFile::Values valuesIn(const QSettings& settings) {
    SettingsFile::Values values;
    for (const QString& key : settings.allKeys()) {
        if (!key.isEmpty()) {  // A damaged line; it could not be written either.
            values[key] = settings.value(key);
        }
    }
    return values;
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
        lock.lastModified().msecsTo(QDateTime::currentDateTime()) >= longestLockMilliseconds) {
        QFile::remove(path);
    }
}

/// The file that is replaced: people keep their settings elsewhere and link to them, also before
/// there are any.
QString fileBehind(const QString& path) {
    QString existing = QFileInfo(path).canonicalFilePath();
    if (!existing.isEmpty()) {
        return existing;
    }
    constexpr int mostLinks = 40;
    QString behind = path;
    for (int links = 0; links < mostLinks; ++links) {
        const QFileInfo info(behind);
        if (!info.isSymLink()) {
            return behind;
        }
        behind = info.symLinkTarget();
    }
    return path;
}

/// What a process that was killed has left beside the file behind.
QStringList leftovers(const QString& behind) {
    const QFileInfo info(behind);
    const QRegularExpression draft(QStringLiteral("^%1\\.\\d+\\.new(\\..*)?$")
                                       .arg(QRegularExpression::escape(info.fileName())));
    return info.dir().entryList(QDir::Files | QDir::Hidden).filter(draft);
}

/// Without asking whether it would work, as for the administrator it always would.
bool isWriteProtected(const QByteArray& path) {
    struct stat status {};
    return stat(path.constData(), &status) == 0 &&
           ((status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0 ||
            (access(path.constData(), W_OK) != 0 && (errno == EACCES || errno == EPERM)));
}

}  // namespace

QVariant SettingsFile::value(const QString& key) {
    if (refusal()) {
        return {};
    }
    const QSettings settings(path_, QSettings::NativeFormat);
    return settings.value(key);
}

std::optional<std::string> SettingsFile::refusal() {
    struct stat status {};
    if (stat(encoded(path_).constData(), &status) != 0) {
        // A link that leads nowhere as yet is no obstacle.
        const bool isMissing = errno == ENOENT || errno == ENOTDIR;
        return isMissing ? std::nullopt : std::optional(PreferencesTexts::unreadable(errorText()));
    }
    // What must not even be opened: a pipe would block for ever, an absurdly long file would take
    // all memory.
    if (S_ISDIR(status.st_mode)) {
        return std::string(PreferencesTexts::isFolder);
    }
    if (!S_ISREG(status.st_mode)) {
        return std::string(PreferencesTexts::isNoFile);
    }
    if (status.st_size > largestFile) {
        return std::string(PreferencesTexts::isTooLong);
    }
    std::string state = std::to_string(status.st_ino) + ' ' + std::to_string(status.st_size) + ' ' +
                        std::to_string(status.st_mtim.tv_sec) + '.' +
                        std::to_string(status.st_mtim.tv_nsec) + ' ' +
                        std::to_string(status.st_mode);
    if (state != inspectedState_) {
        verdict_ = inspect();
        inspectedState_ = std::move(state);
    }
    return verdict_;
}

std::optional<std::string> SettingsFile::inspect() {
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly)) {
        return PreferencesTexts::unreadable(errorText());
    }
    const QByteArray bytes = file.read(largestFile);
    switch (SettingsText::fault({bytes.constData(), static_cast<std::size_t>(bytes.size())})) {
        case SettingsText::Fault::none:
            break;
        case SettingsText::Fault::serialised:
            return std::string(PreferencesTexts::isSerialised);
        case SettingsText::Fault::tooManyValues:
            return std::string(PreferencesTexts::hasTooManyValues);
        case SettingsText::Fault::noise:
            return std::string(PreferencesTexts::isNoise);
    }
    return std::nullopt;
}

std::optional<std::string> SettingsFile::makeFolder() const {
    const PrivateFiles privateFiles;
    if (!QDir().mkpath(QFileInfo(path_).absolutePath())) {
        return errorText();
    }
    return std::nullopt;
}

SettingsFile::Outcome SettingsFile::store(const Values& changes, int patience) {
    using Kind = Outcome::Kind;
    if (auto reason = makeFolder()) {
        return {Kind::failed, *std::move(reason)};
    }
    // The lock that every settings object of this file takes when it writes.
    const PrivateFiles privateFiles;
    removeNamelessLock(lockPath());
    QLockFile lock(lockPath());
    if (!lock.tryLock(patience)) {
        if (lock.error() == QLockFile::LockFailedError) {
            return {Kind::locked, std::string(PreferencesTexts::isLocked)};
        }
        return {Kind::failed, errorText()};
    }
    if (auto reason = refusal()) {
        return {Kind::refused, *std::move(reason)};
    }
    const Values former = valuesIn(QSettings(path_, QSettings::NativeFormat));
    Values values = former;
    for (const auto& [key, value] : changes) {
        if (value.isValid()) {
            values[key] = value;
        } else {
            values.erase(key);
        }
    }
    if (values == former) {
        return {};
    }
    if (auto reason = write(values)) {
        return {Kind::failed, *std::move(reason)};
    }
    return {};
}

/// @return why it was not written
std::optional<std::string> SettingsFile::write(const Values& values) const {
    const QString target = fileBehind(path_);
    if (isWriteProtected(encoded(target))) {
        return std::string(PreferencesTexts::isWriteProtected);
    }
    const SettingsDraft draft(target);
    if (auto reason = draft.write(values)) {
        return reason;
    }
    if (QFileInfo(draft.path()).size() > largestFile) {
        // It could not be read again.
        return std::string(PreferencesTexts::wouldBeTooLong);
    }
    makeNewer(draft.path(), target);
    return draft.replaceTarget() ? std::nullopt : std::optional(errorText());
}

bool SettingsFile::tidy() {
    const QString behind = fileBehind(path_);
    const QByteArray name = encoded(behind);
    struct stat status {};
    constexpr mode_t nobodyElse = S_IRWXG | S_IRWXO;
    if (lstat(name.constData(), &status) == 0 && S_ISREG(status.st_mode) &&
        (status.st_mode & nobodyElse) != 0 && status.st_uid == geteuid()) {
        chmod(name.constData(), status.st_mode & ~nobodyElse & 07777);
    }
    if (!QFile::exists(lockPath()) && leftovers(behind).isEmpty()) {
        return true;
    }
    const PrivateFiles privateFiles;
    removeNamelessLock(lockPath());
    // Taking it does away with the lock of a process that is gone; while another one has it, the
    // drafts may be of that one.
    QLockFile lock(lockPath());
    if (!lock.tryLock(0)) {
        return false;
    }
    const QDir folder = QFileInfo(behind).dir();
    for (const QString& left : leftovers(behind)) {
        QFile::remove(folder.filePath(left));
    }
    return true;
}

std::optional<std::string> SettingsFile::setAside() const {
    const QString behind = fileBehind(path_);
    QString aside = behind + QStringLiteral(".set-aside");
    for (int number = 2; QFileInfo(aside).exists() || QFileInfo(aside).isSymLink(); ++number) {
        aside = behind + QStringLiteral(".set-aside-%1").arg(number);
    }
    if (std::rename(encoded(behind).constData(), encoded(aside).constData()) != 0) {
        return errorText();
    }
    return std::nullopt;
}

}  // namespace lumatile
