// The Directory that stands for the blocks of the current drawing.
#include "tests/reading/LoaderFixture.h"

#include "editor/sdk/documents.h"

#include <gmock/gmock.h>

#include <memory>

using testing::ElementsAre;

namespace {

std::unique_ptr<AcDbDatabase> drawing;
std::vector<std::string> locks;

class FakeDocument : public AcApDocument {
    const wchar_t* fileName() const override { return L"Drawing1.dwg"; }
    AcDbDatabase* database() const override { return drawing.get(); }
};

class FakeDocuments : public AcApDocManager {
    AcApDocument* curDocument() const override { return drawing ? &document : nullptr; }
    AcApDocument* mdiActiveDocument() const override { return curDocument(); }
    AcApDocumentIterator* newAcApDocumentIterator() override { return nullptr; }
    bool isApplicationContext() const override { return false; }
    int activateDocument(AcApDocument*, bool) override { return 0; }
    void executeInApplicationContext(void (*)(void*), void*) const override {}
    int appContextOpenDocument(const wchar_t*) override { return 0; }
    int lockDocument(AcApDocument*, AcAp::DocLockMode) override {
        locks.emplace_back("lock");
        return 0;
    }
    int unlockDocument(AcApDocument*) override {
        locks.emplace_back("unlock");
        return 0;
    }
    void pushResourceHandle() override {}
    void popResourceHandle() override {}
    int sendStringToExecute(AcApDocument*, const wchar_t*, bool, bool, bool) override { return 0; }

    mutable FakeDocument document;
};

class InternalBlocksTest : public tests::LoaderTest {
protected:
    InternalBlocksTest() {
        theBlockDlg = &window;
        dialogOpen = true;
        drawing = std::make_unique<AcDbDatabase>();
        locks.clear();
        directory = AddFolder("internal", {"file"});
        directory->isInternal = true;
    }
    ~InternalBlocksTest() override { drawing.reset(); }

    static void Define(const wchar_t* name, const wchar_t* comments) {
        AcDbDatabase source;
        AcDbObjectId id;
        ASSERT_EQ(drawing->insert(id, name, &source), eOk);
        AcDbBlockTableRecord* record = nullptr;
        ASSERT_EQ(acdbOpenObject(record, id, AcDb::kForWrite), eOk);
        EXPECT_EQ(record->setComments(comments), eOk);
        record->close();
    }

    Directory* directory = nullptr;
};

} // namespace

AcApDocManager* acDocManagerPtr() {
    static FakeDocuments documents;
    return &documents;
}

TEST_F(InternalBlocksTest, DefinitionsBecomeBlocksInTableOrderWithoutTheLayouts) {
    Define(L"WINDOW", L"a window");
    Define(L"DOOR", L"");
    EXPECT_EQ(LoadDir(directory), 123);
    EXPECT_THAT(Names(*directory), ElementsAre(L"WINDOW", L"DOOR"));
    const Block& block = *directory->blocks.front();
    EXPECT_EQ(block.description, L"a window");
    EXPECT_EQ(block.fileType, 16);
    EXPECT_EQ(block.status.m_size, 0u);
    EXPECT_THAT(Examined(), testing::IsEmpty()) << "no file stands behind it";
    EXPECT_TRUE(directory->loaded);
    EXPECT_THAT(locks, ElementsAre("lock", "unlock"));
}

TEST_F(InternalBlocksTest, ARescanDoesNothing) {
    Define(L"DOOR", L"");
    LoadDir(directory);
    directory->loaded = false;
    Define(L"DESK", L"");
    EXPECT_EQ(LoadDir(directory), 123);
    EXPECT_THAT(Names(*directory), ElementsAre(L"DOOR"));
}

TEST_F(InternalBlocksTest, WithoutADrawingThereAreNone) {
    drawing.reset();
    EXPECT_EQ(LoadDir(directory), 123);
    EXPECT_TRUE(directory->blocks.empty());
    EXPECT_TRUE(directory->loaded);
}
