#include "tests/desktop/support/TemporaryFolder.h"

#include <stdlib.h>

#include <fstream>
#include <sstream>
#include <string>
#include <system_error>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "lumatile-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw DesktopError("no temporary folder at " + pattern);
    }
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TemporaryFolder::write(const std::filesystem::path& relative,
                                             std::string_view text) const {
    std::filesystem::path file = path_ / relative;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    stream.close();
    if (!stream) {
        throw DesktopError("cannot write " + file.string());
    }
    return file;
}

std::string readFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

}  // namespace lumatile::desktop
