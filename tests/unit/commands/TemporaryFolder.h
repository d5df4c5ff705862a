#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <stdlib.h>

namespace lumatile {

/// An empty folder of its own for one test, removed with it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "lumatile-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

    /// The names in the folder, sorted.
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    void write(const std::string& name, const std::string& text) const {
        std::ofstream(path_ / name, std::ios::binary) << text;
    }

    std::string read(const std::string& name) const {
        std::ostringstream text;
        text << std::ifstream(path_ / name, std::ios::binary).rdbuf();
        return text.str();
    }

private:
    std::filesystem::path path_;
};

}  // namespace lumatile
