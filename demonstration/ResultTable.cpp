#include "demonstration/ResultTable.h"

#include <iomanip>
#include <iostream>

namespace lumatile::demonstration {
namespace {

constexpr int keysWidth = 22;
constexpr int commandWidth = 17;
constexpr int screenWidth = 11;
constexpr int frameWidth = 20;

void printRow(const std::string& keys, const std::string& command, const std::string& screen,
              const std::string& asked, const std::string& became, const std::string& verdict) {
    std::cout << std::left << std::setw(keysWidth) << keys << std::setw(commandWidth) << command
              << std::setw(screenWidth) << screen << std::setw(frameWidth) << asked
              << std::setw(frameWidth) << became << verdict << std::endl;
}

}  // namespace

void ResultTable::printHead() const {
    std::cout << '\n';
    printRow("Shortcut", "Command", "Screen", "Asked", "Became", "");
    std::cout << std::string(keysWidth + commandWidth + screenWidth + 2 * frameWidth + 5, '-')
              << std::endl;
}

void ResultTable::add(const Result& result) {
    ++rows_;
    std::string verdict = "ok";
    if (!result.isRight()) {
        ++wrongRows_;
        verdict = "WRONG, should be " + toString(result.wanted);
    }
    printRow(result.keys, result.command, result.screen,
             result.asked ? toString(*result.asked) : "nothing", toString(result.became), verdict);
}

}  // namespace lumatile::demonstration
