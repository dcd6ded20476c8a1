// Sheets of the sample library and of real drawings, by the road a user takes, and what other programs find in them.
//
// Where TESSARO_SHEETS names a folder, the sheets and their first pages are left there to be looked at.
#include "tests/browser/PrintFixture.h"
#include "tests/printing/Pdf.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"

#include <QImage>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <tuple>

namespace fs = std::filesystem;

namespace {

constexpr int kRows = 0, kGrid = 1;
constexpr int kSeen = 60; ///< dots per inch at which a page is looked at
constexpr int kEnoughPages = 2;

/// Without blanks and line ends: names are broken where their column ends.
std::string Joined(std::string text) {
    std::erase_if(text, [](unsigned char c) { return std::isspace(c) != 0; });
    return text;
}

/// Pixels of a page that are neither white nor a grey.
int ColouredPixels(const QImage& page) {
    int count = 0;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x) {
            const QRgb pixel = page.pixel(x, y);
            count += qRed(pixel) != qGreen(pixel) || qGreen(pixel) != qBlue(pixel) ? 1 : 0;
        }
    return count;
}

/// Pixels that are no white.
int InkedPixels(const QImage& page) {
    int count = 0;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            count += (page.pixel(x, y) & 0xFFFFFF) != 0xFFFFFF ? 1 : 0;
    return count;
}

/// A folder's name and a layout.
using Sheet = std::tuple<std::string, int>;

class RealSheets : public PrintBrowser, public testing::WithParamInterface<Sheet> {
protected:
    void SetUp() override {
        if (!tests::hasPdfPrograms())
            GTEST_SKIP() << "no programs that read a PDF";
        const std::string& name = std::get<0>(GetParam());
        fs::path place = tests::sharedFolder("drawings");
        if (name == "2013") {
            if (place.empty())
                GTEST_SKIP() << "no real drawings beside the checkout";
            place /= name;
        } else {
            place = folder.path() / "samples" / name;
            const std::string make =
                "'" TESSARO_BIN_DIR "/tessaro-samples' '" + place.parent_path().string() + "' " + name;
            ASSERT_EQ(std::system((make + " > /dev/null").c_str()), 0);
        }
        directory = AddFolder(platform::FromNarrow(name), {});
        directory->path = place.wstring();
    }
    void ExpectNames(const std::string& text, int type) const {
        const auto has = [&text](const std::wstring& words) {
            return text.find(Joined(platform::ToNarrow(words))) != std::string::npos;
        };
        EXPECT_TRUE(has(L"3.9.10"));
        EXPECT_TRUE(has(directory->path));
        for (const Block* block : directory->blocks) {
            EXPECT_TRUE(has(block->name)) << platform::ToNarrow(block->name) << " in " << text;
            if (type == kRows) {
                EXPECT_TRUE(has(L"Size:" + std::to_wstring(block->status.m_size)));
                EXPECT_TRUE(has(block->description));
            }
        }
    }
    Directory* directory = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Sheets, RealSheets,
                         testing::Combine(testing::Values("furniture", "electrical", "mechanical", "2013"),
                                          testing::Values(kRows, kGrid)),
                         [](const testing::TestParamInfo<Sheet>& sheet) {
                             return "Of_" + std::get<0>(sheet.param) +
                                    (std::get<1>(sheet.param) == kRows ? "_Rows" : "_Grid");
                         });

/// The resolutions of the printed sheets.
constexpr int kResolutions[] = {300, 600};

TEST_P(RealSheets, HaveAllNamesInTheirTextAndPicturesOnTheirPages) {
    const auto [name, type] = GetParam();
    const char* const wanted = std::getenv("TESSARO_SHEETS");
    const fs::path place = wanted != nullptr ? fs::path(wanted) : folder.path();
    const std::string title = name + (type == kRows ? "-rows-" : "-grid-");
    printType = type;
    Run([&, sheets = place / title](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        for (const int dots : kResolutions)
            EXPECT_EQ(PrintTo(dlg, sheets.string() + std::to_string(dots) + ".pdf", dots),
                      QStringLiteral("Done Printing"));
    });
    ASSERT_GT(directory->blocks.size(), 3u);
    for (const int dots : kResolutions) {
        SCOPED_TRACE(dots);
        const fs::path file = (place / title).string() + std::to_string(dots) + ".pdf";
        ExpectNames(Joined(tests::pdfWrittenText(file)), type);
        const int pages = tests::pdfPageCount(file);
        EXPECT_GE(pages, 1);
        for (int page = 1; page <= (wanted != nullptr ? pages : std::min(pages, kEnoughPages)); ++page) {
            const QImage seen = tests::pdfPage(file, page, kSeen);
            ASSERT_FALSE(seen.isNull());
            EXPECT_GT(InkedPixels(seen), seen.width() * seen.height() / 100) << "page " << page;
            EXPECT_GT(ColouredPixels(seen), 100) << "the head's texts, and pictures; page " << page;
            if (wanted != nullptr)
                seen.save(QString::fromStdString(file.string() + "-" + std::to_string(page) + ".png"));
        }
    }
}

} // namespace
