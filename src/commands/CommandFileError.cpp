#include "commands/CommandFileError.h"

#include <utility>

namespace lumatile {

CommandFileError::CommandFileError(std::filesystem::path path, std::string reason)
    : std::runtime_error(path.string() + ": " + reason),
      path_(std::move(path)),
      reason_(std::move(reason)) {}

}  // namespace lumatile
