// Real drawings as a catalogue of their folders, read by whole passes with the real helper.

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Bridge.h"
#include "tessaro/reading/DrawingType.h"
#include "tessaro/reading/Examine.h"
#include "tessaro/reading/Loader.h"
#include "tests/reading/HelperFixture.h"
#include "tests/support/RecorderWindow.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <set>

using namespace tests;

namespace {

constexpr int kFirstTypeWithSection = 14;
constexpr int kPictureWidth = 200, kPictureHeight = 100;

class CatalogueFacts : public testing::Test {
protected:
    CatalogueFacts() {
        ForgetServices();
        LocalPath = platform::FromNarrow(TESSARO_BIN_DIR);
        theBlockDlg = &window;
        dialogOpen = true;
    }
    ~CatalogueFacts() override {
        theBlockDlg = nullptr;
        dialogOpen = false;
        for (const Directory* directory : directories)
            delete directory;
        directories.clear();
        ForgetServices();
        LocalPath.clear();
    }

    /// A Directory for each folder that has a fact, read in one pass.
    void ReadFolders() {
        std::set<std::filesystem::path> folders;
        for (const QString& name : facts.keys())
            folders.insert((drawings / name.toStdString()).parent_path());
        for (const auto& folder : folders) {
            auto* const directory = new Directory;
            directory->path = platform::FromNarrow(folder.native());
            directory->cacheFile = platform::FromNarrow(
                (scratch.path() / ("path" + std::to_string(directories.size() + 1) + "_35.cache")).native());
            if (folder.filename().empty())
                directory->path.pop_back();
            directory->listIndex = window.InsertDirectoryRow(directory->path, directory);
            directories.push_back(directory);
            EXPECT_EQ(LoadDir(directory), 123) << folder;
        }
    }
    const Block* Find(const std::filesystem::path& file) const {
        for (const Directory* directory : directories)
            for (const Block* block : directory->blocks)
                if (std::filesystem::path(directory->path) / (block->name + L".dwg") == file)
                    return block;
        return nullptr;
    }
    static std::int32_t TypeOf(const QJsonObject& fact) {
        std::array<std::uint8_t, kMagicSize> magic{};
        const std::string text = fact["magic"].toString().toStdString();
        std::copy_n(text.begin(), std::min(text.size(), magic.size()), magic.begin());
        return DrawingType(magic);
    }
    /// Whether the section has an image that is looked at.
    static bool HasImage(const QJsonObject& fact) {
        for (const QJsonValue entry : fact["imageSection"].toObject()["entries"].toArray())
            if (const int code = entry.toObject()["code"].toInt(); code == 2 || code == 6)
                return TypeOf(fact) >= kFirstTypeWithSection;
        return false;
    }
    /// Nothing where the drawing has no possible date.
    static std::optional<platform::Time> DateOf(const QJsonObject& fact) {
        const QJsonArray stored = fact["header"].toObject()["TDUUPDATE"].toArray();
        const auto day = static_cast<std::int64_t>(stored.at(0).toDouble());
        if (stored.size() != 2 || day < 2440588)
            return std::nullopt;
        return (day - 2440588) * 86400 + static_cast<std::int64_t>(stored.at(1).toDouble()) / 1000;
    }
    /// Where the insertion point lies in a picture of the view, by the projection's own lines.
    static std::optional<MarkPoints> PointsOf(const QJsonObject& fact, double enlarged = 1) {
        const QJsonObject view = fact["activeView"].toObject();
        const QJsonArray base = fact["header"].toObject()["INSBASE"].toArray();
        if (view.isEmpty() || base.size() != 3)
            return std::nullopt;
        const auto at = [&](const char* name, int place) {
            return view[QLatin1String(name)].toArray().at(place).toDouble();
        };
        const std::vector<double> record{base.at(0).toDouble(),
                                         base.at(1).toDouble(),
                                         base.at(2).toDouble(),
                                         0,
                                         0,
                                         1,
                                         1,
                                         at("view_target", 0),
                                         at("view_target", 1),
                                         at("view_target", 2),
                                         at("VIEWDIR", 0),
                                         at("VIEWDIR", 1),
                                         at("VIEWDIR", 2),
                                         view["view_width"].toDouble() * enlarged,
                                         view["VIEWSIZE"].toDouble() * enlarged,
                                         view["VIEWTWIST"].toDouble(),
                                         at("VIEWCTR", 0),
                                         at("VIEWCTR", 1)};
        MarkPoints points;
        ProjectInsertionPoint(record, kPictureWidth, kPictureHeight, points);
        return points;
    }

    const std::filesystem::path drawings = sharedFolder("drawings");
    const QJsonObject facts =
        QJsonDocument::fromJson(QByteArray::fromStdString(readFile(drawings / "facts.json"))).object();
    const TemporaryFolder scratch;
    RecorderWindow window;
};

} // namespace

TEST_F(CatalogueFacts, EveryRealDrawingHasItsTypeDescriptionDateAndPicture) {
    if (drawings.empty())
        GTEST_SKIP() << "no shared drawings";
    ReadFolders();
    ASSERT_GT(facts.size(), 100);
    int dates = 0, descriptions = 0, pictures = 0;
    for (const QString& name : facts.keys()) {
        const QJsonObject fact = facts[name].toObject();
        const Block* const block = Find(drawings / name.toStdString());
        ASSERT_NE(block, nullptr) << name.toStdString();
        EXPECT_TRUE(block->checked && block->cached) << name.toStdString();
        EXPECT_EQ(block->fileType, TypeOf(fact)) << name.toStdString();
        EXPECT_EQ(block->status.m_size, static_cast<std::uint64_t>(fact["bytes"].toDouble())) << name.toStdString();
        EXPECT_EQ(block->imageIndex != 0, HasImage(fact)) << name.toStdString();
        pictures += block->imageIndex != 0 ? 1 : 0;
        // What is older than R13, or damaged, is not the helper's.
        if (TypeOf(fact) < kFirstTypeWithSection && fact["magic"].toString() != QLatin1String("AC1032"))
            continue;
        if (fact["reference"].toString() != QLatin1String("read"))
            continue;
        if (const auto date = DateOf(fact)) {
            EXPECT_EQ(block->modified, *date) << name.toStdString();
            EXPECT_EQ(block->created, *date) << name.toStdString();
            ++dates;
        }
        if (const QJsonObject summary = fact["summary"].toObject(); !summary.isEmpty()) {
            EXPECT_EQ(platform::ToNarrow(block->description), summary["comments"].toString().toStdString())
                << name.toStdString();
            ++descriptions;
        }
    }
    EXPECT_GT(dates, 100);
    EXPECT_GT(descriptions, 90);
    EXPECT_GT(pictures, 80);
}

TEST_F(CatalogueFacts, EveryRealDrawingsPointLiesWhereItsViewShowsIt) {
    if (drawings.empty())
        GTEST_SKIP() << "no shared drawings";
    PreviewBytes preview(40, 0);
    preview[4] = kPictureWidth;
    preview[8] = kPictureHeight;
    int compared = 0;
    for (const QString& name : facts.keys()) {
        const QJsonObject fact = facts[name].toObject();
        const auto expected = PointsOf(fact);
        Block block;
        MarkPoints points;
        if (!LoadDrawing(platform::FromNarrow((drawings / name.toStdString()).native()), block, true, &preview,
                         points) ||
            !expected)
            continue;
        if (points.size() != expected->size()) {
            constexpr double hair = 1e-9;
            EXPECT_NE(PointsOf(fact, 1 - hair)->size(), PointsOf(fact, 1 + hair)->size())
                << name.toStdString() << ": may differ for a point on the edge only";
            continue;
        }
        for (std::size_t place = 0; place < points.size(); ++place)
            EXPECT_NEAR(points[place], (*expected)[place], 1e-6) << name.toStdString();
        ++compared;
    }
    EXPECT_GT(compared, 100);
}
