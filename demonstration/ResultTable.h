#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tests/desktop/support/PixelRect.h"

namespace lumatile::demonstration {

/// One pressed shortcut and what came of it.
struct Result {
    std::string keys;
    std::string command;
    std::string screen;
    std::optional<desktop::PixelRect> asked;  ///< Of the window manager; absent: nothing.
    desktop::PixelRect became;                ///< What the window became.
    desktop::PixelRect wanted;                ///< What it should become.

    /// Nothing has to be asked for a window that is where it should be.
    bool isRight() const { return became == wanted && (!asked || *asked == wanted); }
};

/// Prints results one below the other as they come, and counts the wrong ones.
class ResultTable {
public:
    void printHead() const;
    void add(const Result& result);

    std::size_t rows() const { return rows_; }
    std::size_t wrongRows() const { return wrongRows_; }

private:
    std::size_t rows_ = 0;
    std::size_t wrongRows_ = 0;
};

}  // namespace lumatile::demonstration
