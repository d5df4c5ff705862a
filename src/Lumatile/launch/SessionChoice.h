#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "ports/PresentSession.h"

namespace lumatile {

/// One kind of session that the program can run in.
struct SessionKind {
    std::unique_ptr<PresentSession> (*find)();  ///< Null where it is not present.
    std::string_view absence;                   ///< The sentence for the log when no kind is.
};

/// Asks the kinds in turn; those after the first that is present are not asked. The log gets a line
/// for each kind where there is none.
/// @return null when none is present
std::unique_ptr<PresentSession> firstPresent(std::span<const SessionKind> kinds, SystemLog& log);

/// Writes a line for everything that cannot be done in a session.
void sayShortcomings(const SessionFacts& facts, SystemLog& log);

}  // namespace lumatile
