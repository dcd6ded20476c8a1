#include "editor/database/picture.h"
#include "editor/dwg/image_section.h"
#include "tests/database/database_support.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace tests;
using namespace dwg::object_type;

namespace {

std::wstring fileIn(const TemporaryFolder& folder, const char* name) {
    return (folder.path() / name).wstring();
}

std::wstring commentsOf(AcDbDatabase& database) {
    AcDbDatabaseSummaryInfo* info = nullptr;
    EXPECT_EQ(acdbGetSummaryInfo(&database, info), eOk);
    std::wstring comments;
    EXPECT_EQ(info->getComments(comments), eOk);
    delete info;
    return comments;
}

void setSummary(AcDbDatabase& database, const wchar_t* title, const wchar_t* comments) {
    AcDbDatabaseSummaryInfo* info = nullptr;
    ASSERT_EQ(acdbGetSummaryInfo(&database, info), eOk);
    EXPECT_EQ(info->database(), &database);
    EXPECT_EQ(info->setTitle(title), eOk);
    EXPECT_EQ(info->setComments(comments), eOk);
    EXPECT_EQ(acdbPutSummaryInfo(info, info->database()), eOk);
    delete info;
}

TEST(SaveAs, DrawingComesBackAsItWas) {
    const TemporaryFolder folder;
    const std::wstring file = fileIn(folder, "a.dwg");
    {
        AcDbDatabase database;
        addLayer(database, L"W\u00e4nde \u4e2d", 3);
        appendToModel(database, new AcDbLine({1, 2, 3}, {4, 5, 6}), L"W\u00e4nde \u4e2d");
        appendToModel(database, new AcDbCircle({1, 1, 0}, AcGeVector3d::kZAxis, 2.5));
        database.setUserr4(7.5);
        database.setInsbase({10, 20, 0});
        setSummary(database, L"Title", L"A table");
        ASSERT_EQ(database.saveAs(file.c_str()), eOk);
    }
    AcDbDatabase database(false);
    ASSERT_EQ(database.readDwgFile(file.c_str()), eOk);
    EXPECT_TRUE(database.impl()->drawing.findings.empty());
    std::wstring name;
    EXPECT_EQ(database.getFilename(name), eOk);
    EXPECT_EQ(name, file);
    EXPECT_EQ(database.userr4(), 7.5);
    EXPECT_EQ(database.insbase().y, 20);
    EXPECT_EQ(commentsOf(database), L"A table");
    const auto entities = entitiesOf(blockNamed(database, ACDB_MODEL_SPACE));
    ASSERT_EQ(entities.size(), 2u);
    const auto* const line = objectOf(entities[0]).as<dwg::Line>();
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->end, (dwg::Point3{4, 5, 6}));
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, entities[0], AcDb::kForRead), eOk);
    EXPECT_EQ(entity->layer(), L"W\u00e4nde \u4e2d");
    EXPECT_STREQ(entity->isA()->name(), L"AcDbLine");
}

TEST(SaveAs, ErasedObjectsAreGoneAndNothingNamesThem) {
    const TemporaryFolder folder;
    const std::wstring file = fileIn(folder, "a.dwg");
    AcDbDatabase database;
    const AcDbObjectId layer = addLayer(database, L"A"), block = addBlock(database, L"B");
    append(block, new AcDbLine({}, {1, 0, 0}));
    const AcDbObjectId line = appendToModel(database, new AcDbLine({}, {1, 0, 0}), L"A");
    appendToModel(database, new AcDbLine({}, {2, 0, 0}));
    for (const AcDbObjectId id : {line, layer, block})
        ASSERT_EQ(erase(id), eOk);
    ASSERT_EQ(database.saveAs(file.c_str()), eOk);
    EXPECT_EQ(erase(line), Acad::eWasErased);
    AcDbDatabase again(false);
    ASSERT_EQ(again.readDwgFile(file.c_str()), eOk);
    EXPECT_TRUE(again.impl()->drawing.findings.empty());
    EXPECT_EQ(entitiesOf(blockNamed(again, ACDB_MODEL_SPACE)).size(), 1u);
    EXPECT_TRUE(layerNamed(again, L"A").isNull());
    EXPECT_TRUE(blockNamed(again, L"B").isNull());
    for (const auto& object : again.impl()->drawing.objects()) {
        dwg::mapReferences(*object, [&](dwg::Handle handle) {
            EXPECT_TRUE(handle == 0 || again.impl()->drawing.find(handle) != nullptr) << std::hex << handle;
            return handle;
        });
    }
}

TEST(SaveAs, OldFileBecomesTheBackupWhenAsked) {
    const TemporaryFolder folder;
    const auto path = folder.write("a.dwg", "old");
    AcDbDatabase database;
    ASSERT_EQ(database.saveAs(path.wstring().c_str()), eOk);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "a.bak"));
    folder.write("a.dwg", "older");
    ASSERT_EQ(database.saveAs(path.wstring().c_str(), true), eOk);
    EXPECT_EQ(readFile(folder.path() / "a.bak"), "older");
    EXPECT_EQ(readFile(path).substr(0, 6), "AC1015");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

TEST(SaveAs, ABackupThatIsTheDrawingItselfByASecondNameIsParted) {
    const TemporaryFolder folder;
    const auto path = folder.write("a.dwg", "old");
    std::filesystem::create_hard_link(path, folder.path() / "a.bak");
    AcDbDatabase database;
    ASSERT_EQ(database.saveAs(path.wstring().c_str(), true), eOk);
    EXPECT_EQ(readFile(folder.path() / "a.bak"), "old");
    EXPECT_EQ(readFile(path).substr(0, 6), "AC1015");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

TEST(SaveAs, ABackupThatCantBeMadeLeavesTheDrawingAndTheEarlierOne) {
    const TemporaryFolder folder;
    const auto path = folder.write("a.dwg", "old");
    std::filesystem::create_directories(folder.path() / "a.bak" / "inside");
    AcDbDatabase database;
    EXPECT_NE(database.saveAs(path.wstring().c_str(), true), eOk);
    EXPECT_EQ(readFile(path), "old");
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "a.bak" / "inside"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

TEST(SaveAs, ReadOnlyFileIsRefusedAndStays) {
    const TemporaryFolder folder;
    const auto path = folder.write("a.dwg", "old");
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
    AcDbDatabase database;
    EXPECT_EQ(database.saveAs(path.wstring().c_str()), Acad::eFileAccessErr);
    EXPECT_EQ(readFile(path), "old");
    EXPECT_EQ(database.saveAs((folder.path() / "none" / "a.dwg").wstring().c_str()), Acad::eFileAccessErr);
}

TEST(SaveAs, DrawingMayNotBeInsertedIntoTheFileThatItWasSavedAs) {
    const TemporaryFolder folder;
    const std::wstring file = fileIn(folder, "a.dwg");
    AcDbDatabase database, source(false);
    ASSERT_EQ(database.saveAs(file.c_str()), eOk);
    ASSERT_EQ(source.readDwgFile(file.c_str()), eOk);
    AcDbObjectId id;
    EXPECT_EQ(database.insert(id, L"Table", &source), Acad::eSelfReference);
}

TEST(SaveAs, UnknownVersionsAreRefused) {
    const TemporaryFolder folder;
    AcDbDatabase database;
    EXPECT_EQ(database.saveAs(fileIn(folder, "a.dwg").c_str(), false, static_cast<AcDb::AcDbDwgVersion>(22)),
              Acad::eUnsupportedFileFormat);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "a.dwg"));
}

TEST(SaveAs, PictureIsTheGivenOneElseTheKeptOneElseDrawn) {
    const TemporaryFolder folder;
    const std::wstring file = fileIn(folder, "a.dwg");
    const auto picturesAfterReading = [&](AcDbDatabase& database) {
        EXPECT_EQ(database.readDwgFile(file.c_str()), eOk);
        return database.impl()->pictures;
    };
    AcDbDatabase made;
    appendToModel(made, new AcDbLine({}, {10, 5, 0}));
    made.setThumbnailBitmap("given");
    ASSERT_EQ(made.saveAs(file.c_str()), eOk);
    AcDbDatabase kept(false);
    const auto given = picturesAfterReading(kept);
    ASSERT_EQ(given.size(), 1u);
    EXPECT_EQ(given[0].code, dwg::image_code::bitmap);
    EXPECT_EQ(given[0].bytes, (dwg::Bytes{'g', 'i', 'v', 'e', 'n'}));
    kept.setRetainOriginalThumbnailBitmap(true);
    ASSERT_EQ(kept.saveAs(file.c_str()), eOk);
    AcDbDatabase drawn(false);
    EXPECT_EQ(picturesAfterReading(drawn), given);
    ASSERT_EQ(drawn.saveAs(file.c_str()), eOk);
    AcDbDatabase last(false);
    const auto own = picturesAfterReading(last);
    ASSERT_EQ(own.size(), 1u);
    const std::string expected = editor::pictureOfModelSpace(last);
    EXPECT_EQ(own[0].bytes, dwg::Bytes(expected.begin(), expected.end()));
}

TEST(SaveAs, EmptyCommentsAreWrittenToo) {
    const TemporaryFolder folder;
    const std::wstring file = fileIn(folder, "a.dwg");
    AcDbDatabase database;
    setSummary(database, L"", L"something");
    setSummary(database, L"", L"");
    ASSERT_EQ(database.saveAs(file.c_str()), eOk);
    AcDbDatabase again(false);
    ASSERT_EQ(again.readDwgFile(file.c_str()), eOk);
    EXPECT_EQ(commentsOf(again), L"");
}

TEST(ReadDwgFile, Statuses) {
    const TemporaryFolder folder;
    AcDbDatabase database(false);
    EXPECT_EQ(database.readDwgFile(L""), Acad::eInvalidInput);
    EXPECT_EQ(database.readDwgFile(fileIn(folder, "none.dwg").c_str()), Acad::eFileNotFound);
    EXPECT_EQ(database.readDwgFile(folder.write("rubbish.dwg", "no drawing at all").wstring().c_str()),
              Acad::eBadDwgHeader);
    EXPECT_NE(database.readDwgFile(folder.write("empty.dwg", "").wstring().c_str()), eOk);
    EXPECT_NE(database.readDwgFile(folder.path().wstring().c_str()), eOk);
}

TEST(ReadDwgFile, RealDrawingsSurviveASaveAndAnInsertion) {
    const std::filesystem::path shared = sharedFolder("drawings");
    if (shared.empty())
        GTEST_SKIP() << "shared drawings are absent";
    const TemporaryFolder folder;
    for (const auto& entry : std::filesystem::directory_iterator(shared / "2000")) {
        SCOPED_TRACE(entry.path().string());
        AcDbDatabase source(false);
        ASSERT_EQ(source.readDwgFile(entry.path().wstring().c_str()), eOk);
        const std::size_t count = entitiesOf(blockNamed(source, ACDB_MODEL_SPACE)).size();
        source.setRetainOriginalThumbnailBitmap(true);
        ASSERT_EQ(source.saveAs(fileIn(folder, "copy.dwg").c_str()), eOk);
        AcDbDatabase copy(false);
        ASSERT_EQ(copy.readDwgFile(fileIn(folder, "copy.dwg").c_str()), eOk);
        EXPECT_EQ(entitiesOf(blockNamed(copy, ACDB_MODEL_SPACE)).size(), count);
        EXPECT_EQ(copy.impl()->pictures, source.impl()->pictures);

        AcDbDatabase target;
        AcDbObjectId block;
        ASSERT_EQ(target.insert(block, L"Inserted", &copy), eOk);
        appendToModel(target, new AcDbBlockReference({1, 1, 0}, block));
        ASSERT_EQ(target.saveAs(fileIn(folder, "target.dwg").c_str()), eOk);
        AcDbDatabase again(false);
        ASSERT_EQ(again.readDwgFile(fileIn(folder, "target.dwg").c_str()), eOk);
        for (const dwg::Finding& finding : again.impl()->drawing.findings)
            ADD_FAILURE() << finding.place << ": " << finding.reason;
        EXPECT_EQ(entitiesOf(blockNamed(again, L"Inserted")).size(), count);
        EXPECT_EQ(entitiesOf(blockNamed(again, ACDB_MODEL_SPACE)).size(), 1u);
    }
}

} // namespace
