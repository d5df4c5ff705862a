#include "platform/qt/SettingsDraft.h"

#include <fcntl.h>
#include <unistd.h>

#include <QByteArray>
#include <QFile>
#include <QSettings>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <string_view>
#include <system_error>

#include "platform/qt/PreferencesTexts.h"
#include "platform/qt/SettingsText.h"

namespace lumatile {

SettingsDraft::SettingsDraft(const QString& target)
    : target_(target),
      path_(target + QLatin1Char('.') + QString::number(++count_) + QLatin1String(".new")) {
    remove();
}

SettingsDraft::~SettingsDraft() {
    remove();
    // The toolkit forgets the values when it looks for the file again.
    const QSettings forgotten(path_, QSettings::NativeFormat);
}

/// A process that was killed may have left a draft of this name, and a lock of it for which the
/// toolkit would wait.
void SettingsDraft::remove() const {
    QFile::remove(path_);
    QFile::remove(path_ + QLatin1String(".lock"));
}

bool SettingsDraft::replaceTarget() const {
    return std::rename(QFile::encodeName(path_).constData(),
                       QFile::encodeName(target_).constData()) == 0;
}

std::optional<std::string> SettingsDraft::write(const std::map<QString, QVariant>& values) const {
    if (values.empty()) {
        // The toolkit makes no file for nothing.
        QFile file(path_);
        return file.open(QIODevice::WriteOnly) ? std::nullopt : std::optional(reasonOf(values));
    }
    return writeWithToolkit(values) && isWhole(values.size()) ? std::nullopt
                                                              : std::optional(reasonOf(values));
}

bool SettingsDraft::writeWithToolkit(const std::map<QString, QVariant>& values) const {
    QSettings settings(path_, QSettings::NativeFormat);
    for (const auto& [key, value] : values) {
        settings.setValue(key, value);
    }
    settings.sync();
    return settings.status() == QSettings::NoError;
}

/// The toolkit takes a write that a full disk cut short for a success. A file that was cut lacks a
/// key or the end of its last line.
bool SettingsDraft::isWhole(std::size_t keys) const {
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QByteArray bytes = file.readAll();
    return bytes.endsWith('\n') &&
           SettingsText::keyCount({bytes.constData(), static_cast<std::size_t>(bytes.size())}) ==
               keys;
}

/// The toolkit does not tell what went wrong. The system does when it is asked for as much again.
std::string SettingsDraft::reasonOf(const std::map<QString, QVariant>& values) const {
    std::string bytes;
    for (const auto& [key, value] : values) {
        bytes += key.toStdString() + '=' + value.toByteArray().toStdString() + '\n';
    }
    std::string_view left(bytes);
    const QByteArray path = QFile::encodeName(path_);
    // NOLINTNEXTLINE(*-vararg)
    const int file = open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR);
    int error = file < 0 ? errno : 0;
    while (error == 0 && !left.empty()) {
        const ssize_t written = ::write(file, left.data(), left.size());
        error = written < 0 ? errno : 0;
        left.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    if (file >= 0) {
        error = fsync(file) != 0 && error == 0 ? errno : error;
        close(file);
    }
    return error != 0 ? std::generic_category().message(error)
                      : std::string(PreferencesTexts::isCut);
}

}  // namespace lumatile
