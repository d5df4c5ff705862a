#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "commands/Axis.h"
#include "commands/Kind.h"

namespace lumatile {
namespace {

TEST(Axis, isTheOrientationUnderItsRawTexts) {
    EXPECT_EQ(static_cast<int>(Axis::horizontal), 0);
    EXPECT_EQ(static_cast<int>(Axis::vertical), 1);
    EXPECT_EQ(rawValue(Axis::horizontal), "horizontal");
    EXPECT_EQ(rawValue(Axis::vertical), "vertical");
    EXPECT_EQ(axisFromRawValue("horizontal"), Axis::horizontal);
    EXPECT_EQ(axisFromRawValue("vertical"), Axis::vertical);
    for (const std::string text : {"", "Horizontal", "vertical ", "0", "diagonal"}) {
        EXPECT_EQ(axisFromRawValue(text), std::nullopt) << text;
    }
}

TEST(Kind, hasItsCasesInOrderUnderTheirRawTexts) {
    const std::vector<std::pair<Kind, std::string>> kinds{
        {Kind::area, "area"},
        {Kind::center, "center"},
        {Kind::restore, "restore"},
        {Kind::nextDisplay, "nextDisplay"},
        {Kind::previousDisplay, "previousDisplay"},
    };
    int number = 0;
    for (const auto& [kind, text] : kinds) {
        EXPECT_EQ(static_cast<int>(kind), number++) << text;
        EXPECT_EQ(rawValue(kind), text);
        EXPECT_EQ(kindFromRawValue(text), kind);
    }
    for (const std::string text : {"", "maximize", "Area", "area ", "0"}) {
        EXPECT_EQ(kindFromRawValue(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace lumatile
