#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/Lifeline.h"
#include "base/ObserverList.h"
#include "platform/qt/SettingsFile.h"
#include "ports/Preferences.h"
#include "ports/RunLoop.h"
#include "ports/SystemLog.h"

namespace lumatile {

/// The user's settings in a `SettingsFile`. The first change is written when the present call has
/// returned to the run loop, those that follow are collected meanwhile.
class QSettingsPreferences final : public Preferences {
public:
    /// Changes are written this often at most, seconds.
    static constexpr double collectingSeconds = 0.5;

    /// What could not be stored is tried again this often, seconds.
    static constexpr double retrySeconds = 10;

    /// Settings in lumatile/lumatile.conf of the user's configuration folder. A file that is not
    /// read is told to the log at once.
    /// @param log outlives the preferences, as does the run loop
    QSettingsPreferences(SystemLog& log, RunLoop& runLoop);

    /// Settings in a file of one's own.
    QSettingsPreferences(SystemLog& log, RunLoop& runLoop, const std::string& path);

    QSettingsPreferences(const QSettingsPreferences&) = delete;
    QSettingsPreferences& operator=(const QSettingsPreferences&) = delete;

    /// Stores what is not stored yet.
    ~QSettingsPreferences() override;

    /// The same at once, for a process that ends without destroying anything.
    void storeNow();

    std::optional<Bytes> bytes(std::string_view key) override;
    std::optional<bool> boolean(std::string_view key) override;
    void setBytes(std::string_view key, const Bytes& value) override;
    void setBoolean(std::string_view key, bool value) override;
    void remove(std::string_view key) override;

    /// Makes the folder of the file, so that it can be watched.
    [[nodiscard]] std::unique_ptr<PreferencesWatch> observe(std::function<void()> changed) override;

    std::optional<PreferencesTrouble> trouble() const override { return trouble_; }
    ObserverList<>::Subscription observeTrouble(std::function<void()> changed) override;
    void setAside() override;

private:
    enum class Patience { none, some };

    QVariant read(std::string_view key);
    void change(std::string_view key, const QVariant& value);
    void writeEdits();
    void write(Patience patience);
    void tryAgain();
    void setTrouble(std::optional<PreferencesTrouble> trouble);

    SystemLog& log_;
    RunLoop& runLoop_;
    SettingsFile file_;
    SettingsFile::Values unsaved_;  // What is not on the disk yet; without a value: removed.
    bool isEdited_ = false;         // Since it was last tried to write.
    int lockedTries_ = 0;           // One after another.
    bool isTidy_ = true;
    std::optional<PreferencesTrouble> trouble_;
    ObserverList<> troubleObservers_;
    std::unique_ptr<RunLoopTimer> collecting_;  // After a change.
    std::unique_ptr<RunLoopTimer> retrying_;    // While there is trouble.
    Lifeline lifeline_;
};

}  // namespace lumatile
