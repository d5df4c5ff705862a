#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/qt/QSettingsPreferences.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/platform/qt/RecordedLog.h"

namespace lumatile {

/// What another process, an editor for one, makes of the file.
inline void write(const std::filesystem::path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

/// Preferences beside which a second passes with each change.
class PatientPreferences {
public:
    PatientPreferences(SystemLog& log, const std::filesystem::path& file)
        : preferences_(log, runLoop_, file.string()) {}

    std::optional<Bytes> bytes(std::string_view key) { return preferences_.bytes(key); }
    std::optional<bool> boolean(std::string_view key) { return preferences_.boolean(key); }
    void setBytes(std::string_view key, const Bytes& value) {
        preferences_.setBytes(key, value);
        runLoop_.advance(1);
    }
    void setBoolean(std::string_view key, bool value) {
        preferences_.setBoolean(key, value);
        runLoop_.advance(1);
    }
    void remove(std::string_view key) {
        preferences_.remove(key);
        runLoop_.advance(1);
    }

    SimulatedRunLoop& runLoop() { return runLoop_; }
    QSettingsPreferences& impatient() { return preferences_; }

private:
    SimulatedClock clock_;
    SimulatedRunLoop runLoop_{clock_};
    QSettingsPreferences preferences_;
};

/// Preferences in a folder of their own.
class QSettingsPreferencesTest : public testing::Test {
protected:
    /// What is on the disk, as a process sees it that starts now: the toolkit remembers files by
    /// their names.
    QSettingsPreferences onDisk() {
        const std::filesystem::path copy = folder_ / ("copy" + std::to_string(++copies_) + ".conf");
        std::filesystem::copy_file(file_, copy);
        return {log_, preferences_.runLoop(), copy.string()};
    }

    /// A program that starts now.
    std::unique_ptr<PatientPreferences> started() {
        return std::make_unique<PatientPreferences>(log_, file_);
    }

    TemporaryFolder folder_;
    std::filesystem::path file_ = folder_ / "lumatile/lumatile.conf";
    RecordedLog log_;
    PatientPreferences preferences_{log_, file_};

private:
    int copies_ = 0;
};

}  // namespace lumatile
