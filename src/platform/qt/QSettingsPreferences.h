#pragma once

#include <QString>
#include <QVariant>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "ports/Preferences.h"
#include "ports/SystemLog.h"

namespace lumatile {

/// The user's settings in one file of key and value lines, which only the user can read. Every
/// reading looks at the file, so a change that another process made is seen; every change is merged
/// into what the file holds at that moment, and the file is replaced whole or not at all.
class QSettingsPreferences final : public Preferences {
public:
    /// Settings in lumatile/lumatile.conf of the user's configuration folder.
    /// @param log outlives the preferences
    explicit QSettingsPreferences(SystemLog& log);

    /// Settings in a file of one's own.
    QSettingsPreferences(SystemLog& log, const std::string& path);

    std::optional<Bytes> bytes(std::string_view key) override;
    std::optional<bool> boolean(std::string_view key) override;
    void setBytes(std::string_view key, const Bytes& value) override;
    void setBoolean(std::string_view key, bool value) override;
    void remove(std::string_view key) override;

    /// Makes the folder of the file, so that it can be watched.
    [[nodiscard]] std::unique_ptr<PreferencesWatch> observe(std::function<void()> changed) override;

private:
    using Values = std::map<QString, QVariant>;

    QVariant read(std::string_view key);
    void change(std::string_view key, QVariant value);
    /// @return what stood in the way; absent when all is stored
    std::optional<std::string> store();
    bool mayBeRead();

    SystemLog& log_;
    QString path_;
    Values unsaved_;            // What the disk has refused so far; without a value: removed.
    std::string checkedState_;  // Of the file, when it was last found safe to read.
};

}  // namespace lumatile
