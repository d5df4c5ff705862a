#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/qt/QSettingsPreferences.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/platform/qt/RecordedLog.h"

namespace lumatile {

/// What another process, an editor for one, makes of the file.
inline void write(const std::filesystem::path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

/// Preferences in a folder of their own.
class QSettingsPreferencesTest : public testing::Test {
protected:
    /// What is on the disk, as a process sees it that starts now: the toolkit remembers files by
    /// their names.
    QSettingsPreferences onDisk() {
        const std::filesystem::path copy = folder_ / ("copy" + std::to_string(++copies_) + ".conf");
        std::filesystem::copy_file(file_, copy);
        return {log_, copy.string()};
    }

    TemporaryFolder folder_;
    std::filesystem::path file_ = folder_ / "lumatile/lumatile.conf";
    RecordedLog log_;
    QSettingsPreferences preferences_{log_, file_.string()};

private:
    int copies_ = 0;
};

}  // namespace lumatile
