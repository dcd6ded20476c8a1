// Descriptions written while something is in the way: what remains of the drawing.
#include "tests/reading/WriteDescriptionFixture.h"
#include "tests/support/ChildProcess.h"

#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/File.h"
#include "tessaro/reading/WriteDescription.h"

#include <gmock/gmock.h>

#include <csignal>
#include <fstream>
#include <set>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

namespace {

constexpr int kNoRight = 99;

class WriteDescriptionFailures : public WriteDescriptionTest {
protected:
    /// Runs the work in a child on a disk that `before` has filled to its last byte; false where that can't be had.
    void OnAFullDisk(const std::function<void()>& before, const std::function<void()>& work) {
        const int status = inChild([&] {
            if (!mountSmallDisk(folder.path(), 1 << 20))
                return kNoRight;
            before();
            std::ofstream rest(folder.path() / "rest");
            const std::string part(4096, 'x');
            while (rest.write(part.data(), static_cast<std::streamsize>(part.size())).flush()) {
            }
            rest.close();
            work();
            return HasFailure() ? 1 : 0;
        });
        if (status == kNoRight)
            GTEST_SKIP() << "no right to mount";
        EXPECT_EQ(status, 0);
    }
    /// Runs the work as a user who may write the drawing, but no new file in its folder.
    void InAReadOnlyFolder(const std::function<void()>& work) {
        ASSERT_EQ(chmod(Drawing().c_str(), 0666), 0);
        ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
        const int status = inChild([&] {
            if (geteuid() == 0 && !becomeNobody())
                return kNoRight;
            work();
            return HasFailure() ? 1 : 0;
        });
        ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
        if (status == kNoRight)
            GTEST_SKIP() << "no right to become another user";
        EXPECT_EQ(status, 0);
    }
};

} // namespace

TEST_F(WriteDescriptionFailures, AFullDiskDuringTheSaveLeavesNoDrawing) {
    OnAFullDisk([&] { WriteDrawing(); },
                [&] {
                    EXPECT_FALSE(WriteDescription(AddBlock(16, L"lost")));
                    EXPECT_THAT(Files(), ElementsAre("rest"));
                });
}

TEST_F(WriteDescriptionFailures, AFullDiskDuringTheSaveInPlaceLeavesNeitherDrawingNorBackup) {
    OnAFullDisk([&] { WriteDrawing(); },
                [&] {
                    EXPECT_FALSE(WriteDescription(AddBlock(0, L"lost")));
                    EXPECT_THAT(Files(), ElementsAre("rest"));
                });
}

TEST_F(WriteDescriptionFailures, AFullDiskGivesTheDrawingsPlaceToATemporaryOfAnEarlierRun) {
    OnAFullDisk(
        [&] {
            WriteDrawing();
            folder.write("door.dwg2", "left behind");
        },
        [&] {
            EXPECT_FALSE(WriteDescription(AddBlock(16, L"lost")));
            EXPECT_THAT(Files(), ElementsAre("door.dwg", "rest"));
            EXPECT_EQ(readFile(Drawing()), "left behind");
        });
}

TEST_F(WriteDescriptionFailures, AFullDiskDuringTheSaveOfAnR14DrawingEndsInTheLookForIt) {
    OnAFullDisk([&] { WriteDrawing(); },
                [&] {
                    EXPECT_THROW(WriteDescription(AddBlock(15, L"lost")), platform::FileException);
                    EXPECT_THAT(Files(), ElementsAre("rest"));
                });
}

TEST_F(WriteDescriptionFailures, ASaveThatIsCutOffByALimitLeavesNoDrawing) {
    WriteDrawing();
    const int status = inChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{100, 100};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
            return 2;
        EXPECT_FALSE(WriteDescription(AddBlock(16, L"lost")));
        return HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(status, 0);
    EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(WriteDescriptionFailures, AReadOnlyFolderKeepsTheDrawingAndTakesNothingNew) {
    WriteDrawing();
    const std::string before = readFile(Drawing());
    InAReadOnlyFolder([&] {
        for (const std::int32_t type : {0, 13, 16, 17, 18, 19, 20})
            EXPECT_FALSE(WriteDescription(AddBlock(type, L"refused"))) << type;
    });
    EXPECT_EQ(readFile(Drawing()), before);
    EXPECT_THAT(Files(), ElementsAre("door.dwg"));
}

TEST_F(WriteDescriptionFailures, AnR14DrawingInAReadOnlyFolderGetsItsPictureOnceMoreAtItsEnd) {
    WriteDrawing();
    const std::string before = readFile(Drawing());
    InAReadOnlyFolder([&] { EXPECT_FALSE(WriteDescription(AddBlock(15, L"refused"))); });
    EXPECT_EQ(readFile(Drawing()).size(), before.size() + SmallBitmap('\x55').size());
    EXPECT_EQ(BitmapOf(Drawing()), SmallBitmap('\x55'));
    EXPECT_EQ(CommentsOf(Drawing()), L"");
}

TEST_F(WriteDescriptionFailures, AReadOnlyDrawingIsNotHarmedWhateverItsFormat) {
    WriteDrawing();
    const std::string before = readFile(Drawing());
    fs::permissions(Drawing(), fs::perms::owner_read);
    for (const std::int32_t type : {0, 13, 16, 18, 20}) {
        fs::remove(Temporary());
        EXPECT_EQ(WriteDescription(AddBlock(type, L"refused")), type > 15) << "the save beside it is good; " << type;
        EXPECT_EQ(readFile(Drawing()), before) << type;
    }
    for (const std::int32_t type : {14, 15})
        EXPECT_THROW(WriteDescription(AddBlock(type, L"refused")), platform::FileException) << type;
    EXPECT_EQ(readFile(Drawing()), before);
    EXPECT_FALSE(fs::exists(Backup()));
}

TEST_F(WriteDescriptionFailures, ALockFileKeepsNothingBackAndStays) {
    WriteDrawing();
    folder.write("door.dwk", "somebody");
    EXPECT_TRUE(WriteDescription(AddBlock(16, L"written")));
    EXPECT_EQ(CommentsOf(Drawing()), L"written");
    EXPECT_THAT(Files(), ElementsAre("door.dwg", "door.dwk"));
}

TEST_F(WriteDescriptionFailures, AReadOnlyTemporaryOfAnEarlierRunFailsTheSaveAndTakesTheDrawingsPlace) {
    WriteDrawing();
    folder.write("door.dwg2", "left behind");
    fs::permissions(Temporary(), fs::perms::owner_read);
    EXPECT_FALSE(WriteDescription(AddBlock(16, L"lost")));
    EXPECT_THAT(Files(), ElementsAre("door.dwg"));
    EXPECT_EQ(readFile(Drawing()), "left behind");
}

TEST_F(WriteDescriptionFailures, AFolderUnderTheTemporaryNameFailsTheSaveAndTakesTheDrawingsPlace) {
    WriteDrawing();
    fs::create_directory(Temporary());
    EXPECT_FALSE(WriteDescription(AddBlock(16, L"lost")));
    EXPECT_THAT(Files(), ElementsAre("door.dwg"));
    EXPECT_TRUE(fs::is_directory(Drawing()));
}

TEST_F(WriteDescriptionFailures, ADrawingInAnotherSpellingIsWrittenAndKeepsIt) {
    WriteDrawing();
    fs::create_directory(folder.path() / "Doors");
    fs::rename(Drawing(), folder.path() / "Doors" / "door.DWG");
    directory.path = (folder.path() / "DOORS").wstring();
    EXPECT_TRUE(WriteDescription(AddBlock(16, L"written")));
    EXPECT_EQ(CommentsOf(folder.path() / "Doors" / "door.DWG"), L"written");
    EXPECT_THAT(Files(), ElementsAre("Doors"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path() / "Doors"), {}), 1);
}

TEST_F(WriteDescriptionFailures, ADrawingThatIsReplacedMeanwhileIsOneOfTheTwoWholeWithTheTextUnlessTheOtherCameLast) {
    WriteDrawing("other");
    {
        AcDbDatabase other(true, false);
        other.setThumbnailBitmap(SmallBitmap('\x66'));
        ASSERT_EQ(other.saveAs(Drawing("other").wstring().c_str()), 0);
    }
    const std::string bytes = readFile(Drawing("other"));
    std::set<std::string> pictures;
    std::set<std::wstring> texts;
    for (int number = 1;; ++number) {
        WriteDrawing();
        Block& block = AddBlock(16, L"ours");
        const Killed held = holdAtFileCall(
            number, [&] { fs::rename(folder.write("new", bytes), Drawing()); }, [&] { WriteDescription(block); });
        if (held.refused)
            GTEST_SKIP() << "this system lets no process watch its child";
        if (held.done)
            break;
        ASSERT_NE(held.at, "end") << "it did not end well";
        SCOPED_TRACE(held.at + " " + std::to_string(number));
        const std::wstring text = CommentsOf(Drawing());
        EXPECT_TRUE(text == L"ours" || (text.empty() && BitmapOf(Drawing()) == SmallBitmap('\x66')));
        EXPECT_FALSE(fs::exists(Temporary()));
        pictures.insert(BitmapOf(Drawing()));
        texts.insert(text);
    }
    EXPECT_THAT(pictures, ElementsAre(SmallBitmap('\x55'), SmallBitmap('\x66'))) << "read before and after";
    EXPECT_TRUE(texts.contains(L"ours"));
}

TEST_F(WriteDescriptionFailures, ADrawingThatIsDeletedMeanwhileIsMissingOrTheWholeNewOne) {
    std::set<std::wstring> ends;
    for (int number = 1;; ++number) {
        WriteDrawing();
        Block& block = AddBlock(16, L"ours");
        const Killed held = holdAtFileCall(
            number, [&] { fs::remove(Drawing()); }, [&] { WriteDescription(block); });
        if (held.refused)
            GTEST_SKIP() << "this system lets no process watch its child";
        if (held.done)
            break;
        ASSERT_NE(held.at, "end") << "it did not end well";
        SCOPED_TRACE(held.at + " " + std::to_string(number));
        const std::wstring end = fs::exists(Drawing()) ? CommentsOf(Drawing()) : L"missing";
        EXPECT_TRUE(end == L"missing" || end == L"ours");
        ends.insert(end);
    }
    EXPECT_THAT(ends, ElementsAre(L"missing", L"ours"));
}

namespace {

struct Format {
    std::int32_t fileType;
    AcDb::AcDbDwgVersion version;
};

class KilledWriteDescription : public WriteDescriptionTest, public testing::WithParamInterface<Format> {};

INSTANTIATE_TEST_SUITE_P(Formats, KilledWriteDescription,
                         testing::Values(Format{0, AcDb::kDHL_1032}, Format{15, AcDb::kDHL_1015},
                                         Format{16, AcDb::kDHL_1015}, Format{17, AcDb::kDHL_1800},
                                         Format{18, AcDb::kDHL_1021}, Format{19, AcDb::kDHL_1024},
                                         Format{20, AcDb::kDHL_1027}),
                         [](const testing::TestParamInfo<Format>& format) {
                             return "Type" + std::to_string(format.param.fileType);
                         });

} // namespace

TEST_P(KilledWriteDescription, AtEachFileCallInTurnLosesNothing) {
    const Format format = GetParam();
    WriteDrawing("old", format.version);
    const std::string old = readFile(Drawing("old"));
    std::set<std::string> calls;
    for (int number = 1;; ++number) {
        for (const std::string& name : Files())
            if (name.starts_with("door."))
                fs::remove(folder.path() / name);
        folder.write("door.dwg", old);
        Block& block = AddBlock(format.fileType, L"new");
        const Killed killed = killAtFileCall(number, [&] {
            try {
                WriteDescription(block);
            } catch (const platform::FileException&) {
                // The end of the road of R14, which looks for its drawing.
            }
        });
        if (killed.refused)
            GTEST_SKIP() << "this system lets no process watch its child";
        SCOPED_TRACE(killed.at + " " + std::to_string(number));
        ASSERT_EQ(killed.done, killed.at == "end");
        calls.insert(killed.at);
        const bool isOld = readFile(Drawing()) == old;
        if (format.fileType >= 16) {
            EXPECT_TRUE(isOld || CommentsOf(Drawing()) == L"new");
        } else {
            EXPECT_TRUE(isOld || readFile(Backup()) == old) << "the drawing or its backup";
        }
        if (killed.done)
            break;
    }
    EXPECT_THAT(calls, IsSupersetOf({"openat", "write", "end"}));
    if (format.fileType >= 16) {
        EXPECT_TRUE(WriteDescription(AddBlock(format.fileType, L"newer"))) << "the next run writes as ever";
        EXPECT_EQ(CommentsOf(Drawing()), L"newer");
    }
}
