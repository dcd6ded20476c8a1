// The dialog on screens of other sizes and scales, in a process of its own each.
#include "tessaro/browser/DialogLayout.h"
#include "tests/support/Shell.h"
#include "tests/support/TemporaryFolder.h"

#include <QImage>

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace {

struct Screen : testing::Test {
    Screen() {
        for (const char* name : {"chair", "desk", "lamp"})
            folder.write(std::string("furniture/") + name + ".dwg", "AC1015" + std::string(200, '\0'));
    }
    /// Takes the portrait with those options; what stands where.
    std::map<std::string, QRect> Take(const std::string& options) {
        const std::string out = tests::quoted(folder.path().string());
        const tests::ShellRun portrait = tests::runShell("timeout 60 " TESSARO_BIN_DIR "/browser_portrait " + out +
                                                         " " + options + " " + out + "/furniture");
        EXPECT_EQ(portrait.status, 0) << portrait.output;
        std::map<std::string, QRect> places;
        std::ifstream in(folder.path() / "controls.txt");
        std::string name;
        for (int x = 0, y = 0, width = 0, height = 0; in >> name >> x >> y >> width >> height;)
            places[name] = {x, y, width, height};
        return places;
    }
    QImage Picture(const char* name) const { return QImage(QString::fromStdString((folder.path() / name).string())); }
    tests::TemporaryFolder folder;
};

TEST_F(Screen, ADialogWiderThanTheScreenLosesExactlyTwentyPixels) {
    const auto wide = Take("--only none");
    ASSERT_TRUE(wide.contains("window"));
    const int width = wide.at("window").width();
    const auto fitting = Take("--only none --width " + std::to_string(width));
    for (const auto& [name, place] : wide)
        EXPECT_EQ(fitting.at(name).size(), place.size()) << name << ": not wider than the screen";
    for (const int screen : {width - 1, width / 2}) {
        const auto narrow = Take("--only none --height 300 --width " + std::to_string(screen));
        for (const auto& [name, place] : wide) {
            const bool cut = name == "window" || name == "blockList" || name == "curtainList" || name == "Repeat" ||
                             name == "Xref/A" || name == "AmCatalog" || name == "Localize";
            ASSERT_TRUE(narrow.contains(name)) << name;
            EXPECT_EQ(narrow.at(name).size(), place.size() - QSize(cut ? 20 : 0, 0)) << name << " on " << screen;
        }
    }
}

TEST_F(Screen, TheStartIsLoggedStepByStep) {
    std::filesystem::create_directory(folder.path() / "Log");
    Take("--only none");
    std::string lines;
    for (const auto& file : std::filesystem::directory_iterator(folder.path() / "Log")) {
        std::istringstream in(tests::readFile(file.path()));
        for (std::string line; std::getline(in, line);)
            for (const char* step : {"SetupDlg", "Grab scale", "Check TESSAROAdmin", "Begin Thread", "ValidateDirs\r"})
                if (line.starts_with(step))
                    lines += line.substr(0, line.find('\r')) + "; ";
    }
    EXPECT_EQ(lines, "SetupDlg; Grab scale from userr4; Check TESSAROAdmin; Begin Thread for LoadDir; ValidateDirs; "
                     "SetupDlg return; ");
}

TEST_F(Screen, TheDialogStandsInTheMiddle) {
    const QRect window = Take("--only none").at("window");
    // Less what the window system may put around it.
    EXPECT_NEAR(window.center().x(), 960, 20);
    EXPECT_NEAR(window.center().y(), 600, 50);
}

TEST_F(Screen, AtTwiceTheScaleEveryPixelOfAPictureIsASquareOfFour) {
    const auto places = Take("--only report --scale 2");
    const QImage seen = Picture("report.png");
    ASSERT_EQ(seen.size(), places.at("window").size() * 2);
    // The view button's artwork stands at (2, 2), the first row's picture at (2, 2) below the headings.
    const auto squares = [&](QRect area) {
        for (int y = area.top(); y < area.bottom(); y += 2)
            for (int x = area.left(); x < area.right(); x += 2)
                for (const QPoint neighbour : {QPoint(1, 0), QPoint(0, 1), QPoint(1, 1)})
                    if (seen.pixel(x, y) != seen.pixel(QPoint(x, y) + neighbour))
                        return false;
        return true;
    };
    const QPoint list = places.at("blockList").topLeft() * 2;
    int found = 0;
    for (int y = 0; y < 120; ++y) {
        const QRect picture(list + QPoint(6, y), QSize(132, 98));
        const QRgb frame = seen.pixel(picture.topLeft());
        const QRgb inside = seen.pixel(picture.topLeft() + QPoint(66, 10));
        if (frame != inside && seen.pixel(picture.topRight()) == frame && seen.pixel(picture.bottomRight()) == frame &&
            squares(picture)) {
            ++found;
            break;
        }
    }
    EXPECT_EQ(found, 1) << "a placeholder's frame and diagonals, doubled";
}

TEST_F(Screen, AtOneAndAHalfTheWindowIsPaintedWhole) {
    const auto places = Take("--scale 1.5");
    const QSize expected(qRound(places.at("window").width() * 1.5), qRound(places.at("window").height() * 1.5));
    for (const char* name : {"report.png", "large.png", "small.png", "list.png", "selected.png", "menu.png"})
        EXPECT_EQ(Picture(name).size(), expected) << name;
}

} // namespace
