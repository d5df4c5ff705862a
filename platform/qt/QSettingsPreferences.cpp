#include "platform/qt/QSettingsPreferences.h"

#include <sys/stat.h>

#include <QByteArray>
#include <QFile>
#include <QMetaType>
#include <QSettings>
#include <QStandardPaths>

#include <cerrno>
#include <utility>

namespace lumatile {

namespace {

constexpr mode_t onlyForTheUser = S_IRUSR | S_IWUSR;
constexpr mode_t nobodyElse = S_IRWXG | S_IRWXO;

// The longest list of commands is 16 MiB; in the file a byte takes up to four characters.
constexpr off_t largestFile = off_t{128} * 1024 * 1024;

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

/// False for what must not even be opened: a pipe would block for ever, an absurdly long file would
/// take all memory.
bool mayBeOpened(const QString& path) {
    struct stat status {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0) {
        return errno == ENOENT;
    }
    return S_ISREG(status.st_mode) && status.st_size <= largestFile;
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
    const QVariant value = read(key);
    if (value.typeId() == QMetaType::Bool) {
        return value.toBool();
    }
    // The file does not tell a boolean from a text.
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

void QSettingsPreferences::setBoolean(std::string_view key, bool value) { change(key, value); }

QVariant QSettingsPreferences::read(std::string_view key) const {
    const auto unsaved = unsaved_.find(text(key));
    if (unsaved != unsaved_.end()) {
        return unsaved->second;
    }
    if (!mayBeOpened(path_)) {
        return {};
    }
    const QSettings settings(path_, QSettings::NativeFormat);
    return settings.value(text(key));
}

void QSettingsPreferences::change(std::string_view key, QVariant value) {
    unsaved_[text(key)] = std::move(value);
    if (store()) {
        unsaved_.clear();
        return;
    }
    log_.write("Preferences", path_.toStdString() +
                                  " cannot be written; the change holds for now and is written "
                                  "with the next one");
}

bool QSettingsPreferences::store() const {
    if (!mayBeOpened(path_)) {
        return false;
    }
    const PrivateFiles privateFiles;
    // A file with damaged lines reports the damage where the outcome of the writing would be told;
    // the second time nothing is left to read, and the outcome can be seen.
    for (int attempt = 0; attempt < 2; ++attempt) {
        QSettings settings(path_, QSettings::NativeFormat);
        for (const auto& [key, value] : unsaved_) {
            settings.setValue(key, value);
        }
        settings.sync();
        if (settings.status() == QSettings::NoError) {
            chmod(QFile::encodeName(path_).constData(), onlyForTheUser);
            return true;
        }
        if (settings.status() == QSettings::AccessError) {
            return false;
        }
    }
    return false;
}

}  // namespace lumatile
