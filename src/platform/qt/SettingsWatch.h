#pragma once

#include <QFileSystemWatcher>
#include <QString>

#include <functional>

#include "ports/Preferences.h"

namespace lumatile {

/// Tells when the settings file changes: replaced by this program or another one, edited in place,
/// made or taken away. Needs the folder to exist; without it nothing is told.
class SettingsWatch final : public PreferencesWatch {
public:
    /// @param path the file, which need not exist
    /// @param changed called from the run loop
    SettingsWatch(QString path, std::function<void()> changed);

private:
    void watch();

    QString path_;
    QFileSystemWatcher watcher_;
};

}  // namespace lumatile
