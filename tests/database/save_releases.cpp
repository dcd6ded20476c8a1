// Drawings saved in the releases that are written, their own and others.

#include "editor/database/left_out.h"
#include "editor/dwg/facts.h"
#include "editor/dwg/image_section.h"
#include "editor/dwg/objects_codec.h"
#include "editor/dwg/section_names.h"
#include "tests/database/database_support.h"
#include "tests/database/only_the_summary.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

using namespace tests;
using namespace dwg::object_type;

namespace {

struct Version {
    AcDb::AcDbDwgVersion value;
    const char* magic;
};
constexpr Version versions[] = {{AcDb::kDHL_1015, "AC1015"}, {AcDb::kDHL_1800, "AC1018"}, {AcDb::kDHL_1021, "AC1021"},
                                {AcDb::kDHL_1024, "AC1024"}, {AcDb::kDHL_1027, "AC1027"}, {AcDb::kDHL_1032, "AC1032"}};

std::wstring commentsOf(AcDbDatabase& database) {
    AcDbDatabaseSummaryInfo* info = nullptr;
    EXPECT_EQ(acdbGetSummaryInfo(&database, info), eOk);
    std::wstring comments;
    EXPECT_EQ(info->getComments(comments), eOk);
    delete info;
    return comments;
}

void setComments(AcDbDatabase& database, const std::wstring& comments) {
    AcDbDatabaseSummaryInfo* info = nullptr;
    ASSERT_EQ(acdbGetSummaryInfo(&database, info), eOk);
    EXPECT_EQ(info->setComments(comments.c_str()), eOk);
    EXPECT_EQ(acdbPutSummaryInfo(info, info->database()), eOk);
    delete info;
}

void expectNoFindings(const AcDbDatabase& database) {
    for (const dwg::Finding& finding : database.impl()->drawing.findings)
        ADD_FAILURE() << finding.place << ": " << finding.reason;
}

/// A drawing with something of each kind of storage: a layer with a wide name, entities, a block, extended data.
void fill(AcDbDatabase& database) {
    addLayer(database, L"W\u00e4nde \u4e2d", 3);
    appendToModel(database, new AcDbLine({1, 2, 3}, {4, 5, 6}), L"W\u00e4nde \u4e2d");
    appendToModel(database, new AcDbCircle({1, 1, 0}, AcGeVector3d::kZAxis, 2.5));
    dwg::Text text;
    text.text.value = L"\u00dcber \u4e2d";
    text.text.height = 2;
    appendToModel(database, new NewEntity(dwg::object_type::text, text));
    dwg::LightweightPolyline polyline;
    polyline.points = {{100, 100}, {110, 100}, {110, 120}};
    appendToModel(database, new NewEntity(lightweightPolyline, polyline));
    const AcDbObjectId block = addBlock(database, L"Chair");
    append(block, new AcDbLine({}, {1, 0, 0}));
    appendToModel(database, new AcDbBlockReference({7, 8, 0}, block));
    setComments(database, L"A description \u00e4");
}

TEST(SaveInEveryRelease, aNewDrawingComesBackAsItWas) {
    const TemporaryFolder folder;
    AcDbDatabase made;
    fill(made);
    for (const Version& version : versions) {
        SCOPED_TRACE(version.magic);
        const auto file = folder.path() / (std::string(version.magic) + ".dwg");
        ASSERT_EQ(made.saveAs(file.wstring().c_str(), false, version.value), eOk);
        EXPECT_EQ(readFile(file).substr(0, 6), version.magic);
        EXPECT_TRUE(made.impl()->leftOut.empty());
        AcDbDatabase read(false);
        ASSERT_EQ(read.readDwgFile(file.wstring().c_str()), eOk);
        expectNoFindings(read);
        EXPECT_EQ(commentsOf(read), L"A description \u00e4");
        const auto entities = entitiesOf(blockNamed(read, ACDB_MODEL_SPACE));
        ASSERT_EQ(entities.size(), 5u);
        EXPECT_EQ(objectOf(entities[0]).as<dwg::Line>()->end, (dwg::Point3{4, 5, 6}));
        EXPECT_EQ(objectOf(entities[1]).as<dwg::Circle>()->radius, 2.5);
        EXPECT_EQ(objectOf(entities[2]).as<dwg::Text>()->text.value, L"\u00dcber \u4e2d");
        EXPECT_EQ(objectOf(entities[3]).as<dwg::LightweightPolyline>()->points.back(), (dwg::Point2{110, 120}));
        EXPECT_EQ(objectOf(entities[4]).as<dwg::Insert>()->block.value, blockNamed(read, L"Chair").handle);
        EXPECT_EQ(entitiesOf(blockNamed(read, L"Chair")).size(), 1u);
        EXPECT_FALSE(layerNamed(read, L"W\u00e4nde \u4e2d").isNull());
        EXPECT_EQ(read.impl()->pictures.size(), 1u);
        EXPECT_EQ(read.impl()->pictures[0].code,
                  version.value >= AcDb::kDHL_1027 ? dwg::image_code::png : dwg::image_code::bitmap);
    }
}

TEST(SaveInEveryRelease, referencesLeadSomewhere) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "a.dwg";
    AcDbDatabase made;
    fill(made);
    for (const Version& version : versions) {
        SCOPED_TRACE(version.magic);
        ASSERT_EQ(made.saveAs(file.wstring().c_str(), false, version.value), eOk);
        AcDbDatabase read(false);
        ASSERT_EQ(read.readDwgFile(file.wstring().c_str()), eOk);
        dwg::Drawing& drawing = read.impl()->drawing;
        for (const auto& object : drawing.objects())
            dwg::mapReferences(*object, [&](dwg::Handle handle) {
                EXPECT_TRUE(handle == 0 || drawing.find(handle) != nullptr)
                    << std::hex << object->handle << " names " << handle;
                return handle;
            });
    }
}

TEST(SaveInOwnRelease, whatWasChangedIsStoredAndTheRestKeepsItsBits) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "a.dwg";
    for (const Version& version : versions) {
        SCOPED_TRACE(version.magic);
        AcDbDatabase made;
        fill(made);
        ASSERT_EQ(made.saveAs(file.wstring().c_str(), false, version.value), eOk);
        AcDbDatabase changed(false);
        ASSERT_EQ(changed.readDwgFile(file.wstring().c_str()), eOk);
        const AcDbObjectId circle = entitiesOf(blockNamed(changed, ACDB_MODEL_SPACE))[1];
        AcDbEntity* entity = nullptr;
        ASSERT_EQ(acdbOpenObject(entity, circle, AcDb::kForWrite), eOk);
        ASSERT_EQ(entity->setColorIndex(5), eOk);
        entity->close();
        appendToModel(changed, new AcDbLine({}, {9, 9, 9}));
        ASSERT_EQ(changed.saveAs(file.wstring().c_str(), false, version.value), eOk);
        AcDbDatabase read(false);
        ASSERT_EQ(read.readDwgFile(file.wstring().c_str()), eOk);
        expectNoFindings(read);
        const auto entities = entitiesOf(blockNamed(read, ACDB_MODEL_SPACE));
        ASSERT_EQ(entities.size(), 6u);
        EXPECT_EQ(objectOf(entities[1]).entity->color.index, 5);
        EXPECT_EQ(objectOf(entities[5]).as<dwg::Line>()->end, (dwg::Point3{9, 9, 9}));
        EXPECT_EQ(commentsOf(read), L"A description \u00e4");
    }
}

/// Reads, sets the comments, keeps the picture, saves: what the browser does with a description.
void rewriteDescription(const std::filesystem::path& from, const std::filesystem::path& to,
                        AcDb::AcDbDwgVersion version, const std::wstring& comments) {
    AcDbDatabase database(false);
    ASSERT_EQ(database.readDwgFile(from.wstring().c_str()), eOk);
    database.setRetainOriginalThumbnailBitmap(true);
    setComments(database, comments);
    ASSERT_EQ(database.saveAs(to.wstring().c_str(), false, version), eOk);
}

TEST(WriteDescription, ownDrawingsKeepEveryObjectAndTheirPicture) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "a.dwg", copy = folder.path() / "b.dwg";
    for (const std::wstring& comments :
         {std::wstring(), std::wstring(L"\u4e2d\u6587 \U0001F600"), std::wstring(70, L'x'), std::wstring(71, L'x'),
          std::wstring(L"two\r\nlines"), std::wstring(5000, L'y')}) {
        for (const Version& version : versions) {
            SCOPED_TRACE(version.magic);
            AcDbDatabase made;
            fill(made);
            ASSERT_EQ(made.saveAs(file.wstring().c_str(), false, version.value), eOk);
            rewriteDescription(file, copy, version.value, comments);
            expectOnlyTheSummaryChanged(file, copy);
            AcDbDatabase read(false);
            ASSERT_EQ(read.readDwgFile(copy.wstring().c_str()), eOk);
            EXPECT_EQ(commentsOf(read), comments);
        }
    }
}

TEST(WriteDescription, realDrawingsOfEveryReleaseKeepEveryObjectAndTheirPicture) {
    const std::filesystem::path shared = sharedFolder("drawings");
    if (shared.empty())
        GTEST_SKIP() << "shared drawings are absent";
    const TemporaryFolder folder;
    const auto copy = folder.path() / "copy.dwg";
    std::size_t count = 0;
    for (const Version& version : versions) {
        // All of them are a matter of dev/matrix.
        for (const char* const name : {"circle.dwg", "Leader.dwg", "Text.dwg"}) {
            const char* const year = version.value == AcDb::kDHL_1015   ? "2000"
                                     : version.value == AcDb::kDHL_1800 ? "2004"
                                     : version.value == AcDb::kDHL_1021 ? "2007"
                                     : version.value == AcDb::kDHL_1024 ? "2010"
                                     : version.value == AcDb::kDHL_1027 ? "2013"
                                                                        : "2018";
            const auto file = shared / year / name;
            if (!std::filesystem::exists(file))
                continue;
            SCOPED_TRACE(file.string());
            rewriteDescription(file, copy, version.value, L"Neue Beschreibung \u00e4");
            expectOnlyTheSummaryChanged(file, copy);
            AcDbDatabase read(false);
            ASSERT_EQ(read.readDwgFile(copy.wstring().c_str()), eOk);
            EXPECT_EQ(commentsOf(read), L"Neue Beschreibung \u00e4");
            ++count;
        }
    }
    EXPECT_GT(count, 10u);
}

TEST(SaveAs, theFileThatItCameFromMayBeReplacedOrGone) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "a.dwg";
    AcDbDatabase made;
    fill(made);
    ASSERT_EQ(made.saveAs(file.wstring().c_str(), false, AcDb::kDHL_1032), eOk);
    const std::string old = readFile(file);
    AcDbDatabase database(false);
    ASSERT_EQ(database.readDwgFile(file.wstring().c_str()), eOk);
    setComments(database, L"new");
    folder.write("a.dwg", "something else");
    ASSERT_EQ(database.saveAs(file.wstring().c_str(), true, AcDb::kDHL_1032), eOk);
    EXPECT_EQ(readFile(folder.path() / "a.bak"), "something else");
    AcDbDatabase read(false);
    ASSERT_EQ(read.readDwgFile(file.wstring().c_str()), eOk);
    EXPECT_EQ(commentsOf(read), L"new");
    EXPECT_EQ(entitiesOf(blockNamed(read, ACDB_MODEL_SPACE)).size(), 5u);
    std::filesystem::remove(file);
    setComments(database, L"newer");
    ASSERT_EQ(database.saveAs(file.wstring().c_str(), false, AcDb::kDHL_1032), eOk);
    AcDbDatabase last(false);
    ASSERT_EQ(last.readDwgFile(file.wstring().c_str()), eOk);
    EXPECT_EQ(commentsOf(last), L"newer");
}

TEST(SaveAs, aFileThatCannotBeReplacedStaysAsItIs) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "a.dwg";
    AcDbDatabase made;
    ASSERT_EQ(made.saveAs(file.wstring().c_str(), false, AcDb::kDHL_1024), eOk);
    const std::string old = readFile(file);
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    AcDbDatabase database(false);
    ASSERT_EQ(database.readDwgFile(file.wstring().c_str()), eOk);
    setComments(database, L"new");
    EXPECT_EQ(database.saveAs(file.wstring().c_str(), true, AcDb::kDHL_1024), Acad::eFileAccessErr);
    EXPECT_EQ(readFile(file), old);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1) << "and nothing is left beside";
}

TEST(SaveAs, aFullDiskLeavesTheOldFile) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "a.dwg";
    AcDbDatabase made;
    fill(made);
    ASSERT_EQ(made.saveAs(file.wstring().c_str(), false, AcDb::kDHL_1032), eOk);
    const std::string old = readFile(file);
    // No file of this process may grow beyond a few bytes.
    const auto saveWithoutRoom = [&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit few{100, 100};
        ::setrlimit(RLIMIT_FSIZE, &few);
        const int status = made.saveAs(file.wstring().c_str(), true, AcDb::kDHL_1032);
        ::_exit(status == Acad::eFileAccessErr ? 0 : 1);
    };
    EXPECT_EXIT(saveWithoutRoom(), testing::ExitedWithCode(0), "");
    EXPECT_EQ(readFile(file), old);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1) << "and nothing is left beside";
}

TEST(SaveInAnotherRelease, whatCannotBeToldIsLeftOutByTypeAndHandle) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "a.dwg";
    AcDbDatabase made;
    dwg::Drawing& drawing = made.impl()->drawing;
    const dwg::Handle model = made.impl()->modelSpace();
    dwg::ObjectClass strange;
    strange.application = L"Strange";
    strange.cppName = L"AcDbStrange";
    strange.dxfName = L"STRANGE";
    strange.item = dwg::ObjectClass::entityItem;
    dwg::Object object;
    object.handle = drawing.newHandle();
    object.type = drawing.classNumber(strange);
    object.body = dwg::Carried{};
    object.entity.emplace();
    object.entity->layer.value = layerNamed(made, L"0").handle;
    drawing.setOwner(object, model);
    const dwg::Handle handle = object.handle;
    drawing.add(std::move(object));
    drawing.body<dwg::BlockHeader>({0, model})->entities.push_back(handle);
    drawing.find(model)->changed();

    ASSERT_EQ(made.saveAs(file.wstring().c_str()), eOk);
    EXPECT_TRUE(made.impl()->leftOut.empty()) << "its own release has room for it";
    ASSERT_EQ(made.saveAs(file.wstring().c_str(), false, AcDb::kDHL_1032), eOk);
    EXPECT_EQ(made.impl()->leftOut, (std::vector<dwg::LeftOut>{{"STRANGE", {handle}}}));
    EXPECT_EQ(editor::leftOutMessages(made), std::vector<std::wstring>{L"1 object of type STRANGE was left out."});
    EXPECT_NE(drawing.find(handle), nullptr) << "the drawing in memory keeps it";
    AcDbDatabase read(false);
    ASSERT_EQ(read.readDwgFile(file.wstring().c_str()), eOk);
    expectNoFindings(read);
    EXPECT_TRUE(entitiesOf(blockNamed(read, ACDB_MODEL_SPACE)).empty());
}

} // namespace
