#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "commands/SnapCommand.h"

namespace lumatile {
namespace {

struct Known {
    std::string nameKey;
    Axis axis;
    std::string id;
};

// Computed once by another program. Stored lists on every machine hold these, so they never change.
const std::vector<Known> known{
    {"command.left", Axis::horizontal, "13FC61D1-07A7-4023-AA52-EBD746ABF208"},
    {"command.right", Axis::horizontal, "08D0986B-E3D8-472A-A686-A84688573EE7"},
    {"command.top", Axis::horizontal, "B5A8045C-3737-4BDD-A8B6-6901884218D4"},
    {"command.bottom", Axis::horizontal, "37A491EB-AACC-4D95-A084-0396E069ED82"},
    {"command.topLeft", Axis::horizontal, "91502779-89A5-4B1A-A7CB-6F0994877AAF"},
    {"command.topRight", Axis::horizontal, "C18148F7-A3B8-40D1-ABD2-2FC894AB5CBE"},
    {"command.bottomLeft", Axis::horizontal, "9D4E38F5-4E2D-4542-A1AD-E4AA0C38BEB1"},
    {"command.bottomRight", Axis::horizontal, "5FE4ABE9-04E6-4AB9-A87B-E5E4CAF77B20"},
    {"command.leftThird", Axis::horizontal, "4F9EE777-40D4-470A-A458-9B4BFE930873"},
    {"command.centerThird", Axis::horizontal, "F0970160-954A-4B52-A483-39E161A1D527"},
    {"command.rightThird", Axis::horizontal, "51D8F006-8611-4BFD-AEE6-4483B68C6306"},
    {"command.leftTwoThirds", Axis::horizontal, "E288A6C3-3E52-44B9-A577-32F1DB805D30"},
    {"command.centerTwoThirds", Axis::horizontal, "6EA5ECAD-EF1A-4FD1-A2BE-4A634AD47DAC"},
    {"command.rightTwoThirds", Axis::horizontal, "A699BD53-8754-488E-A57F-8510BBA85BDD"},
    {"command.maximize", Axis::horizontal, "17BBA681-F4B0-4552-A960-A8977A129969"},
    {"command.center", Axis::horizontal, "EED7FE55-B8A6-4DFB-AF04-57C0B04C2B44"},
    {"command.restore", Axis::horizontal, "3EDA3CC4-07C3-481A-A08D-1D4374876E0B"},
    {"command.nextDisplay", Axis::horizontal, "20A4CFA4-4938-403B-AAE2-52D39511FE2E"},
    {"command.previousDisplay", Axis::horizontal, "399C4A21-1740-4E27-AA08-CB116B52BA16"},
    {"command.left", Axis::vertical, "4954A0C5-46A9-4C8D-A642-4E979404DC02"},
    {"command.right", Axis::vertical, "C171CCE3-AA44-423C-AD03-FC84129C4929"},
    {"command.top", Axis::vertical, "EEA44D12-9D7C-48D7-A546-F5263D90DA76"},
    {"command.bottom", Axis::vertical, "8D1B5D23-2B66-4E5F-A483-D14833A3D844"},
    {"command.topLeft", Axis::vertical, "7A3FB9E8-564E-472C-AF53-59E5A99BCE81"},
    {"command.topRight", Axis::vertical, "D36E46CA-F4EB-4E73-A2CE-3EE37F9A3C78"},
    {"command.bottomLeft", Axis::vertical, "C871CAB4-BDD5-4304-AB7C-50273E03EA53"},
    {"command.bottomRight", Axis::vertical, "30DA3119-675B-4EAB-AFE5-317BD30BC80A"},
    {"command.leftThird", Axis::vertical, "71E438F1-5F38-4C1C-AE79-ECB626D83F5D"},
    {"command.centerThird", Axis::vertical, "9FD03888-7190-4ED4-A101-6274F8CE9D69"},
    {"command.rightThird", Axis::vertical, "66E55D09-FFE5-40F7-A655-A6D8306D2590"},
    {"command.leftTwoThirds", Axis::vertical, "64DA09D8-0620-48AB-A542-7AFC0C1FC25A"},
    {"command.centerTwoThirds", Axis::vertical, "5E3C09EB-4ED3-4573-A2F8-605D14FDA69E"},
    {"command.rightTwoThirds", Axis::vertical, "070D63BB-E584-4A48-AB2B-AB86CB3F98D7"},
    {"command.maximize", Axis::vertical, "8F4750B9-8E0F-48D4-A7A4-C19651FD5BDB"},
    {"custom.x", Axis::vertical, "A4CFBA1B-503A-4836-A3D4-CA1343D42AE9"},
    {"", Axis::horizontal, "E1FEE1F8-ECA5-4A53-AB4E-B983B76D3158"},
    {"command.äö", Axis::horizontal, "177A7DC4-3704-4D96-AA7F-7625BE05DD41"},
};

TEST(DerivedId, isTheSameOnEveryMachineAndInEveryVersion) {
    for (const Known& each : known) {
        EXPECT_EQ(SnapCommand::derivedId(each.nameKey, each.axis).text(), each.id)
            << each.nameKey << " " << rawValue(each.axis);
    }
}

TEST(DerivedId, differsBetweenTheAxes) {
    EXPECT_NE(SnapCommand::derivedId("command.left", Axis::horizontal),
              SnapCommand::derivedId("command.left", Axis::vertical));
}

TEST(DerivedId, isMarkedAsVersionFourAndVariantOne) {
    for (const Known& each : known) {
        const std::string text = SnapCommand::derivedId(each.nameKey, each.axis).text();
        EXPECT_EQ(text[14], '4') << text;
        EXPECT_EQ(text[19], 'A') << text;
    }
}

}  // namespace
}  // namespace lumatile
