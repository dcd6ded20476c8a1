#include "tessaro/browser/DialogLayout.h"

#include <gtest/gtest.h>

#include <map>

namespace {

std::string Text(const QRect& r) {
    return std::to_string(r.x()) + "," + std::to_string(r.y()) + "," + std::to_string(r.width()) + "," +
           std::to_string(r.height());
}

TEST(DialogLayout, EveryControlHasItsRectangle) {
    const std::map<std::string, std::string> expected{
        {"Preferences", "2,5,48,14"},      {"Close", "2,25,48,15"},
        {"schemeCombo", "55,5,77,91"},     {"Schemes", "55,25,45,15"},
        {"viewButton", "105,24,27,16"},    {"quickFindLabel", "132,5,38,12"},
        {"quickFind", "175,5,105,14"},     {"Help", "137,25,33,15"},
        {"Print", "175,25,50,15"},         {"EditDescrip.", "230,25,50,15"},
        {"scaleLabel", "280,5,30,20"},     {"scaleCombo", "315,5,45,51"},
        {"rotationLabel", "280,25,30,15"}, {"rotationCombo", "315,25,45,82"},
        {"Insert", "365,5,50,14"},         {"Open", "420,5,45,14"},
        {"Xref/A", "470,5,48,14"},         {"AmCatalog", "495,5,23,14"},
        {"Explode", "365,25,50,15"},       {"MultipleInsert", "420,25,45,15"},
        {"Repeat", "470,25,48,15"},        {"Localize", "470,25,48,15"},
        {"directoryList", "2,45,98,170"},  {"Add", "2,220,48,14"},
        {"Delete", "55,220,45,14"},        {"MoveUp", "2,240,48,14"},
        {"MoveDown", "55,240,45,14"},      {"itemPropertiesLabel", "2,260,98,8"},
        {"properties", "2,270,98,74"},     {"blockList", "105,45,413,299"},
        {"curtainList", "105,45,413,299"},
    };
    std::map<std::string, std::string> found;
    for (const auto& [name, units] : ControlPlaces())
        found[name] = Text(units);
    EXPECT_EQ(found, expected);
}

TEST(DialogLayout, AUnitIsAQuarterOfTheWidthAndAnEighthOfTheHeightOfACharacter) {
    const DialogUnits units(6, 13);
    EXPECT_EQ(Text(units.Pixels({0, 0, 4, 8})), "0,0,6,13");
    EXPECT_EQ(Text(units.Pixels({105, 45, 413, 299})), "158,73,619,486");
    const DialogLayout layout = LayOutDialog(units, 1920);
    EXPECT_EQ(layout.size, QSize(780, 562));
}

TEST(DialogLayout, AClosedComboBoxTakesOneLine) {
    const DialogLayout layout = LayOutDialog(DialogUnits(4, 8), 1920);
    for (const char* name : {"schemeCombo", "scaleCombo", "rotationCombo"})
        EXPECT_EQ(layout.places.at(name).height(), kClosedCombo) << name;
    EXPECT_EQ(Text(layout.places.at("Help")), "137,25,33,15");
}

TEST(DialogLayout, ADialogWiderThanTheScreenLosesExactlyTwentyPixels) {
    const DialogUnits units(8, 16);
    const DialogLayout wide = LayOutDialog(units, 1040);
    EXPECT_EQ(wide.size.width(), 1040) << "as wide as the desktop is not wider";
    for (const int desktop : {1039, 300}) {
        const DialogLayout narrow = LayOutDialog(units, desktop);
        EXPECT_EQ(narrow.size, wide.size - QSize(20, 0));
        for (const auto& [name, place] : wide.places) {
            const bool cut = name == "blockList" || name == "curtainList" || name == "Repeat" || name == "Xref/A" ||
                             name == "AmCatalog" || name == "Localize";
            EXPECT_EQ(Text(narrow.places.at(name)), Text(place.adjusted(0, 0, cut ? -20 : 0, 0))) << name;
        }
    }
}

} // namespace
