// The tour is played, and leaves what it tells of.
#include "tests/documents/Documents.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char* kFolders[] = {"doors",    "electrical",   "furniture", "mechanical",
                                    "sanitary", "title-blocks", "windows"};

class Tour : public testing::Test {
protected:
    Tour() {
        const std::string where = place.path().string();
        std::string paths = "[Paths]\nNumPaths=7\n", sections;
        int number = 0;
        for (const std::string name : kFolders) {
            const std::string folder = where + "/library/" + name;
            std::string shown = name == "title-blocks" ? "title blocks" : name;
            shown[0] = static_cast<char>(shown[0] - 'a' + 'A');
            paths += "Path" + std::to_string(++number) + "=" + folder + "\n";
            sections += "[" + folder + "]\nDescription=" + shown +
                        "\nScale=1-to-1\nRotation=0\nView=3\nSortStyle=Name\nCurrentScheme=<None>\n";
        }
        place.write("library/tessaro35.ini", paths + sections);
        place.write("tour.scr", script());
    }

    /// The tour without its rests, which are for the pictures only.
    static std::string script() {
        std::istringstream in(tests::documentText("samples/tour.scr"));
        std::string text;
        for (std::string line; std::getline(in, line);)
            if (line != "> wait-until idle")
                text += line + "\n";
        return text;
    }
    tests::ShellRun run(const std::string& command) const {
        const std::string where = place.path().string();
        return tests::runShell("cd '" + where + "' && PATH='" TESSARO_BIN_DIR ":'\"$PATH\" env -u DISPLAY -u " +
                               "WAYLAND_DISPLAY -u XDG_DATA_HOME -u XDG_DOCUMENTS_DIR HOME='" + where +
                               "' QT_QPA_PLATFORM=offscreen timeout 250 " + command);
    }

    /// What did not work, ahead of all that did.
    static std::string faultsFirst(const std::string& transcript) {
        std::istringstream in(transcript);
        std::string faults;
        for (std::string line; std::getline(in, line);)
            if (line.starts_with("! "))
                faults += line + "\n";
        return faults + transcript;
    }

    const tests::TemporaryFolder place;
};

TEST_F(Tour, IsCarriedOutAndLeavesDrawingsASheetAndPictures) {
    ASSERT_EQ(run("tessaro-samples library").status, 0);
    const auto [status, transcript] = run("tessaro-editor --batch --script tour.scr library/Flat.dwg");
    ASSERT_EQ(status, 0) << faultsFirst(transcript);

    EXPECT_THAT(transcript, HasSubstr("\"Round-Table-4\"  Attach  Loaded"));
    EXPECT_THAT(transcript, HasSubstr("BLOCK REFERENCE  Layer: \"A-DOOR\""));
    EXPECT_THAT(tests::readFile(place.path() / "furniture.pdf"), StartsWith("%PDF"));
    for (const char* const picture :
         {"furniture-report", "furniture-large", "large-picture", "properties", "description", "help", "preferences",
          "scheme-type", "new-map", "schemes", "editor"})
        EXPECT_THAT(tests::readFile(place.path() / (std::string(picture) + ".png")), HasSubstr("PNG")) << picture;

    const auto placed = run("drawing-facts Placed.dwg");
    EXPECT_EQ(placed.status, 0);
    EXPECT_THAT(placed.output, HasSubstr("\"AC1015\""));
    for (const char* const layer : {"A-FURN", "A-DOOR", "A-NOTE"})
        EXPECT_THAT(placed.output, HasSubstr("\"" + std::string(layer) + "\"")) << layer;
    for (const char* const block : {"Sofa-3", "Bookshelf", "Stool", "Dining-Table-6", "Door-900", "Round-Table-4"})
        EXPECT_THAT(placed.output, HasSubstr("\"" + std::string(block) + "\"")) << block;
    EXPECT_THAT(run("drawing-facts Placed-2018.dwg").output, HasSubstr("\"AC1032\""));
    EXPECT_THAT(run("tessaro-examine library/title-blocks/North-Arrow.dwg").output, HasSubstr("turns with the plan"));
    const std::string settings = tests::readFile(place.path() / "library/tessaro35.ini");
    for (const char* const kept : {"Plants", "Office", "Openings", "A-FURN"})
        EXPECT_THAT(settings, HasSubstr(kept)) << kept;
}

TEST(TourScript, UsesEveryButtonAndBoxOfTheBrowser) {
    const std::string tour = tests::documentText("samples/tour.scr");
    for (const char* const control :
         {"click Add", "click Insert", "click Xref/A", "click Open", "click Print", "click EditDescrip.", "click Help",
          "click Schemes", "click Preferences", "click viewButton", "click Properties", "key Space", "set quickFind",
          "set scaleCombo", "set rotationCombo", "set Explode", "set \"Multiple Insert\"", "set Repeat"})
        EXPECT_THAT(tour, HasSubstr(control));
    EXPECT_THAT(tour, Not(HasSubstr("> wait "))) << "it waits for what it needs, never for a time";
}

} // namespace
