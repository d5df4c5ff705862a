#pragma once

#include <string>

namespace lumatile {

/// A name for the user's account on this computer: the same for every process and at every start,
/// and another one on every other computer, also where home folders are shared. Sixteen hexadecimal
/// digits, from which nothing can be told about the computer.
std::string computerMark();

}  // namespace lumatile
