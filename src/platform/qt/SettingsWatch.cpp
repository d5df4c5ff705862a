#include "platform/qt/SettingsWatch.h"

#include <QFileInfo>
#include <QStringList>

#include <utility>

namespace lumatile {

SettingsWatch::SettingsWatch(QString path, std::function<void()> changed) : path_(std::move(path)) {
    const auto notice = [this, changed = std::move(changed)] {
        watch();
        changed();
    };
    QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, notice);
    QObject::connect(&watcher_, &QFileSystemWatcher::fileChanged, notice);
    watch();
}

/// A file that is replaced is another file, which has to be watched anew. The folder tells of the
/// replacing, the file of being written to.
void SettingsWatch::watch() {
    QStringList wanted;
    for (const QString& file : {path_, QFileInfo(path_).canonicalFilePath()}) {
        if (!file.isEmpty()) {
            wanted << QFileInfo(file).absolutePath() << file;
        }
    }
    wanted.removeDuplicates();
    const QStringList watched = watcher_.files() + watcher_.directories();
    for (const QString& each : wanted) {
        if (!watched.contains(each) && QFileInfo::exists(each)) {
            watcher_.addPath(each);
        }
    }
}

}  // namespace lumatile
