#include "platform/qt/QSettingsPreferences.h"

#include <QByteArray>
#include <QMetaType>
#include <QStandardPaths>

#include <utility>

#include "platform/qt/PreferencesTexts.h"
#include "platform/qt/SettingsWatch.h"

namespace lumatile {

namespace {

// At the end of the program there is no later: whoever holds the lock is waited for.
constexpr int lastPatienceMilliseconds = 1000;

// Another process that holds the lock is writing; one that holds it for so many tries is stuck.
constexpr int mostLockedTries = 10;

QString text(std::string_view key) {
    return QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}

/// The place where the settings of organisation and application "lumatile" belong. Asking a
/// settings object for it would read the file.
std::string usualPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString() +
           "/lumatile/lumatile.conf";
}

}  // namespace

QSettingsPreferences::QSettingsPreferences(SystemLog& log, RunLoop& runLoop)
    : QSettingsPreferences(log, runLoop, usualPath()) {}

QSettingsPreferences::QSettingsPreferences(SystemLog& log, RunLoop& runLoop,
                                           const std::string& path)
    : log_(log), runLoop_(runLoop), file_(QString::fromStdString(path)) {
    isTidy_ = file_.tidy();
    if (const auto refusal = file_.refusal()) {
        setTrouble(PreferencesTrouble{PreferencesTexts::refused(path, *refusal), true});
        log_.write("Preferences", trouble_->line);
    }
    if (!isTidy_ && !retrying_) {
        retrying_ = runLoop_.repeat(retrySeconds, [this] { tryAgain(); });
    }
}

QSettingsPreferences::~QSettingsPreferences() { storeNow(); }

void QSettingsPreferences::storeNow() {
    if (!unsaved_.empty()) {
        write(Patience::some);
    }
}

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
    file_.makeFolder();
    return std::make_unique<SettingsWatch>(file_.path(), std::move(changed));
}

ObserverList<>::Subscription QSettingsPreferences::observeTrouble(std::function<void()> changed) {
    return troubleObservers_.add(std::move(changed));
}

void QSettingsPreferences::setAside() {
    if (!trouble_ || !trouble_->canSetAside) {
        return;
    }
    if (file_.refusal()) {
        if (const auto reason = file_.setAside()) {
            setTrouble(PreferencesTrouble{
                PreferencesTexts::notSetAside(file_.path().toStdString(), *reason), true});
            return;
        }
    }
    write(Patience::none);
}

QVariant QSettingsPreferences::read(std::string_view key) {
    const QString wanted = text(key);
    const auto unsaved = unsaved_.find(wanted);
    return unsaved != unsaved_.end() ? unsaved->second : file_.value(wanted);
}

void QSettingsPreferences::change(std::string_view key, const QVariant& value) {
    unsaved_[text(key)] = value;
    isEdited_ = true;
    if (!collecting_) {
        collecting_ = runLoop_.repeat(collectingSeconds, [this] { writeEdits(); });
        runLoop_.post(lifeline_.guard([this] { writeEdits(); }));
    }
}

void QSettingsPreferences::writeEdits() {
    if (isEdited_ || lockedTries_ > 0) {
        write(Patience::none);
    } else {
        collecting_.reset();
    }
}

void QSettingsPreferences::write(Patience patience) {
    using Kind = SettingsFile::Outcome::Kind;
    const auto [kind, reason] =
        file_.store(unsaved_, patience == Patience::some ? lastPatienceMilliseconds : 0);
    if (kind == Kind::locked && patience == Patience::none && ++lockedTries_ < mostLockedTries) {
        return;
    }
    lockedTries_ = 0;
    const bool isTold = !std::exchange(isEdited_, false);
    if (kind == Kind::stored) {
        unsaved_.clear();
        setTrouble(std::nullopt);
        return;
    }
    const std::string path = file_.path().toStdString();
    const bool isRefused = kind == Kind::refused;
    setTrouble(PreferencesTrouble{isRefused ? PreferencesTexts::refused(path, reason)
                                            : PreferencesTexts::notStored(path, reason),
                                  isRefused});
    if (!isTold) {
        log_.write("Preferences", trouble_->line);
    }
}

void QSettingsPreferences::tryAgain() {
    isTidy_ = isTidy_ || file_.tidy();
    if (!unsaved_.empty()) {
        write(Patience::none);
    } else if (!file_.refusal()) {
        setTrouble(std::nullopt);
    }
}

void QSettingsPreferences::setTrouble(std::optional<PreferencesTrouble> trouble) {
    if (!trouble && isTidy_) {
        retrying_.reset();
    } else if (!retrying_) {
        retrying_ = runLoop_.repeat(retrySeconds, [this] { tryAgain(); });
    }
    if (trouble != trouble_) {
        trouble_ = std::move(trouble);
        troubleObservers_.notify();
    }
}

}  // namespace lumatile
