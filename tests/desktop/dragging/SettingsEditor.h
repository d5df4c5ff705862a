#pragma once

#include <filesystem>
#include <string>

namespace lumatile::desktop {

/// Another program that changes the settings of the running one.
class SettingsEditor {
public:
    /// @param file the settings; their folder exists
    /// @throws DesktopError when the folder cannot be watched
    explicit SettingsEditor(std::filesystem::path file);
    SettingsEditor(const SettingsEditor&) = delete;
    SettingsEditor& operator=(const SettingsEditor&) = delete;
    ~SettingsEditor();

    /// Replaces the file by one that has this value under the key, and waits until the running
    /// program has read it. It has then taken it over before it deals with anything else.
    /// @param value as the file has it: "true", "false" …
    /// @return false when nobody reads it
    bool set(const std::string& key, const std::string& value);

private:
    bool wasRead();

    std::filesystem::path file_;
    int watch_;
    bool isReplaced_ = false;
    bool isRead_ = false;
};

}  // namespace lumatile::desktop
