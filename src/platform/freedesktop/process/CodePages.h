#pragma once

#include <cstddef>

namespace lumatile {

/// The code of the program and its libraries as this process has it mapped.
class CodePages {
public:
    /// Takes the pages of code and constants out of this process's memory. They stay in the
    /// system's file cache, and those that are run or read again come back without a read from the
    /// disk; those that only the start needed are the first to go when memory is short.
    ///
    /// Nothing happens while the process is traced: a debugger's breakpoints lie in those pages.
    /// @return bytes of the segments let go, whether or not they were in memory
    static std::size_t release();
};

}  // namespace lumatile
