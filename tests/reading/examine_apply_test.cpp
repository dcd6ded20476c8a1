#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Examination.h"
#include "tests/reading/ExamineFixture.h"
#include "tests/support/RecorderWindow.h"

#include <atomic>
#include <filesystem>
#include <stdexcept>
#include <thread>

using namespace tests;
using namespace std::string_literals;

namespace {

constexpr std::uint32_t kRed = 0x0000ff;
constexpr std::uint32_t kGreen = 0x00ff00;

std::string drawing(std::uint32_t colour) {
    return DrawingBuilder("AC1015").entry(1, "header\0"s).entry(2, plainBitmap(20, 20, colour));
}

using ExamineResult = ExamineFixture;

TEST_F(ExamineResult, isTheBridges) {
    answer = answerPlainly;
    EXPECT_TRUE(examine(drawing(kRed)));
    EXPECT_EQ(block.created, platform::TimeFromLocal(2014, 5, 17, 13, 51, 21));
    EXPECT_EQ(block.modified, block.created);
    answer = nullptr;
    EXPECT_FALSE(examine(drawing(kRed)));
}

TEST_F(ExamineResult, falseOfTheBridgeKeepsDatesAndWhatTheFileGave) {
    block.created = 21;
    block.modified = 22;
    EXPECT_FALSE(examine(drawing(kGreen)));
    EXPECT_EQ(block.created, 21);
    EXPECT_EQ(block.modified, 22);
    EXPECT_EQ(block.description, L"header");
    EXPECT_TRUE(hasPicture()) << "the picture is drawn all the same";
}

TEST_F(ExamineResult, theHelperIsNotAskedForPointsThatAreNotShown) {
    directory.showInsPts = false;
    examine(drawing(kGreen));
    EXPECT_FALSE(calls.at(0).wantInsPts);
}

TEST_F(ExamineResult, aDrawingThatCantBeOpenedLeavesTheBlock) {
    block.description = L"known";
    block.fileType = 16;
    block.created = 21;
    EXPECT_FALSE(examine());
    EXPECT_EQ(block.description, L"known");
    EXPECT_EQ(block.fileType, 16);
    EXPECT_TRUE(calls.empty());
}

TEST_F(ExamineResult, aDrawingIsFoundIgnoringCase) {
    folder.write("A.DWG", drawing(kGreen));
    examine();
    EXPECT_EQ(block.fileType, 16);
    EXPECT_EQ(calls.at(0).path, directory.path + L"/A.DWG");
}

TEST_F(ExamineResult, anExtensionInUpperCaseIsFoundWithoutASearch) {
    folder.write("A.dwg", "what a search would find");
    folder.write("a.DWG", drawing(kGreen));
    examine();
    EXPECT_EQ(block.fileType, 16);
    EXPECT_EQ(calls.at(0).path, directory.path + L"/a.DWG");
}

TEST_F(ExamineResult, aFailingReadEndsInTheBridgeWithWhatWasRead) {
    // The process's memory opens as a file, and its first bytes can't be read.
    std::filesystem::create_symlink("/proc/self/mem", folder.path() / "a.dwg");
    block.fileType = 5;
    answer = answerPlainly;
    EXPECT_TRUE(examine()) << "the bridge's result replaces the failure's";
    EXPECT_EQ(calls.size(), 1U);
    EXPECT_EQ(block.fileType, 5);
    EXPECT_EQ(block.description, L"from the helper");
}

TEST_F(ExamineResult, aFailingBitmapFileKeepsTheTypeThatWasRead) {
    std::filesystem::create_symlink("/proc/self/mem", folder.path() / "a.bmp");
    examine(DrawingBuilder("AC1009"));
    EXPECT_EQ(block.fileType, 13);
    EXPECT_EQ(calls.size(), 1U);
    EXPECT_FALSE(hasPicture());
}

TEST_F(ExamineResult, whatTheHelperRaisesPassesAndLeavesWhatWasFound) {
    answer = [](HelperCall&) { return kHelperRaised; };
    EXPECT_THROW(examine(drawing(kGreen)), std::runtime_error);
    EXPECT_EQ(block.fileType, 16);
    EXPECT_EQ(block.description, L"header");
    EXPECT_FALSE(hasPicture()) << "the picture comes after the helper";
}

TEST_F(ExamineResult, aMissingHelperRaises) {
    LocalPath = directory.path;
    EXPECT_THROW(examine(drawing(kGreen)), std::runtime_error);
}

TEST_F(ExamineResult, theFirstPictureIsAddedAndLaterOnesReplaceIt) {
    examine(drawing(kGreen));
    EXPECT_EQ(block.imageIndex, 1);
    examine(drawing(kRed));
    EXPECT_EQ(block.imageIndex, 1);
    EXPECT_EQ(directory.largeImages->Count(), 2);
    EXPECT_EQ(directory.smallImages->Count(), 2);
    EXPECT_EQ(middle(), kRed);
}

TEST_F(ExamineResult, withoutAPreviewTheOldPictureStays) {
    examine(drawing(kGreen));
    examine(DrawingBuilder("AC1015"));
    EXPECT_EQ(block.imageIndex, 1);
    EXPECT_EQ(middle(), kGreen);
}

TEST_F(ExamineResult, thePointsOfTheBridgeAreMarked) {
    answer = [](HelperCall& call) {
        call.numbers = {0, 0, 0, 0, 0, 1, 1, 0, 0, 0, 0, 0, 1, 20, 20, 0, 0, 0};
        return answerPlainly(call);
    };
    examine(drawing(kGreen));
    EXPECT_EQ(middle(), kRed) << "where the cross's lines meet";
}

TEST_F(ExamineResult, marksOfTheTaskReplaceThePoints) {
    answer = [](HelperCall& call) {
        call.numbers = {0, 0, 0, 0, 0, 1, 1, 0, 0, 0, 0, 0, 1, 20, 20, 0, 0, 0};
        return answerPlainly(call);
    };
    folder.write("a.dwg", drawing(kGreen));
    ExaminationTask task = TaskFor(directory, block);
    task.marks = MarkPoints{};
    Examination found;
    Examine(task, found);
    EXPECT_TRUE(found.points.empty());
    ApplyExamination(directory, block, found);
    EXPECT_EQ(middle(), kGreen);
}

TEST_F(ExamineResult, anExaminationTouchesNoRecordUntilItIsApplied) {
    folder.write("a.dwg", drawing(kGreen));
    const ExaminationTask task = TaskFor(directory, block);
    Examination found;
    Examine(task, found);
    EXPECT_EQ(block.fileType, 0);
    EXPECT_EQ(directory.largeImages->Count(), 1);
    // What another room changed meanwhile, and the examination did not, stays.
    block.created = 99;
    ApplyExamination(directory, block, found);
    EXPECT_EQ(block.fileType, 16);
    EXPECT_EQ(block.created, 99);
}

class ExamineRow : public ExamineFixture {
protected:
    ExamineRow() {
        window.blockRows.resize(3);
        window.blockRows[2].block = &block;
        theBlockDlg = &window;
        currentDirectory = &directory;
        dialogOpen = true;
        answer = answerPlainly;
    }
    ~ExamineRow() override {
        dialogOpen = false;
        currentDirectory = nullptr;
        theBlockDlg = nullptr;
    }
    RecorderWindow window;
};

TEST_F(ExamineRow, showsPictureAndFields) {
    examine(drawing(kGreen));
    const auto& row = window.blockRows[2];
    EXPECT_EQ(row.image, 1);
    EXPECT_EQ(row.cells.at(1), L"2000");
    EXPECT_EQ(row.cells.at(2), L"from the helper");
    EXPECT_EQ(row.cells.at(4), platform::FormatTime(block.created, L"%x, %X"));
    EXPECT_EQ(row.cells.at(5), row.cells.at(4));
    EXPECT_EQ(row.cells.count(0), 0U);
    EXPECT_EQ(row.cells.count(3), 0U);
}

TEST_F(ExamineRow, isFoundByItsBlockWhereverItStands) {
    window.blockRows[2].block = nullptr;
    window.blockRows[0].block = &block;
    examine(drawing(kGreen));
    EXPECT_EQ(window.blockRows[0].image, 1);
    window.blockRows[0].block = nullptr;
    window.blockRows[0].image = -1;
    examine(drawing(kGreen));
    EXPECT_EQ(window.blockRows[0].image, -1) << "no row has the Block";
}

TEST_F(ExamineRow, isLeftAloneWhileAnotherDirectoryIsShown) {
    Directory other;
    currentDirectory = &other;
    examine(drawing(kGreen));
    EXPECT_TRUE(window.blockRows[2].cells.empty());
}

TEST_F(ExamineRow, isLeftAloneWithTheDialogClosed) {
    dialogOpen = false;
    examine(drawing(kGreen));
    EXPECT_TRUE(window.blockRows[2].cells.empty());
}

TEST_F(ExamineRow, isLeftAloneForALockedDrawingAndAfterAnException) {
    folder.write("a.DWK", "");
    examine(drawing(kGreen));
    std::filesystem::remove(folder.path() / "a.DWK");
    answer = [](HelperCall&) { return kHelperRaised; };
    EXPECT_THROW(examine(), std::runtime_error);
    EXPECT_TRUE(window.blockRows[2].cells.empty());
}

TEST_F(ExamineRow, isWrittenOnTheMainThreadWhenTheWorkerExamines) {
    folder.write("a.dwg", drawing(kGreen));
    std::atomic<bool> done = false;
    std::thread worker([&] {
        examine();
        done = true;
        platform::WakeMainThread();
    });
    platform::ServeMainThreadUntil([&] { return done.load(); });
    worker.join();
    EXPECT_EQ(window.callsFromOtherThreads, 0);
    EXPECT_EQ(window.blockRows[2].image, 1);
}

} // namespace
