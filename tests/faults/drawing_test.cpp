// Drawings that are read and saved.
#include "tests/faults/Drawings.h"
#include "tests/faults/FaultWalk.h"

#include <gtest/gtest.h>

namespace {

using faults::Operation;
using faults::Outcome;
using faults::Release;

const char* const kDrawing = "door.dwg";
const char* const kBackup = "door.bak";
const char* const kEarlier = "the day before";

class Read : public Operation {
public:
    explicit Read(const Release& tried) : release(tried) {}

    void Prepare() override { Write(kDrawing, DrawingOf(release)); }
    void Run() override { status = database.readDwgFile(Wide(kDrawing).c_str()); }
    void Check(const Outcome& outcome) override {
        EXPECT_EQ(Bytes(kDrawing), DrawingOf(release)) << "what is read stays";
        if (!outcome.fired()) {
            EXPECT_EQ(status, 0);
        }
        EXPECT_EQ(database.readDwgFile(Wide(kDrawing).c_str()), 0) << "the same database reads it then";
        EXPECT_EQ(database.saveAs(Wide("copy.dwg").c_str(), false, release.version), 0);
        EXPECT_EQ(faults::Describe(Folder() / "copy.dwg"), "as drawn, 2");
    }

private:
    const Release& release;
    AcDbDatabase database{false, false};
    int status = -1;
};

class Save : public Operation {
public:
    enum class Onto { newFile, itself };
    Save(const Release& tried, Onto where) : release(tried), onto(where) {}

    void Prepare() override {
        Write(kDrawing, DrawingOf(release));
        Write(kBackup, kEarlier);
        ASSERT_EQ(database.readDwgFile(Wide(kDrawing).c_str()), 0);
        faults::DrawCircle(database);
    }
    void Run() override { status = SaveIt(); }
    void Check(const Outcome& outcome) override {
        const std::string& old = DrawingOf(release);
        if (onto == Onto::newFile) {
            EXPECT_EQ(Bytes(kDrawing), old);
        }
        const std::string now = !Exists(Target())        ? "nothing"
                                : Bytes(Target()) == old ? "the old one"
                                                         : faults::Describe(Folder() / Target());
        const std::string before = onto == Onto::newFile ? "nothing" : "the old one";
        if (status == 0) {
            EXPECT_EQ(now, "as drawn, 3");
        } else {
            EXPECT_TRUE(now == before || (outcome.raised && now == "as drawn, 3")) << now;
        }
        if (onto == Onto::itself && now == "as drawn, 3") {
            EXPECT_EQ(Bytes(kBackup), old) << "the old file goes on as the back-up";
        } else {
            EXPECT_TRUE(Bytes(kBackup) == kEarlier || (onto == Onto::itself && Bytes(kBackup) == old))
                << "there is a back-up at any time";
        }
        const bool mayRemove = outcome.fault == nullptr || !outcome.fault->order.stays;
        for (const auto& entry : std::filesystem::directory_iterator(Folder()))
            EXPECT_TRUE(!mayRemove || entry.path().extension() == ".dwg" || entry.path().extension() == ".bak")
                << entry.path();
        EXPECT_EQ(SaveIt(), 0) << "the same database saves it then";
        EXPECT_EQ(faults::Describe(Folder() / Target()), "as drawn, 3");
    }

private:
    std::string Target() const { return onto == Onto::itself ? kDrawing : "new.dwg"; }
    int SaveIt() { return database.saveAs(Wide(Target()).c_str(), onto == Onto::itself, release.version); }

    const Release& release;
    const Onto onto;
    AcDbDatabase database{false, false};
    int status = -1;
};

class DrawingsUnderFaults : public testing::TestWithParam<Release> {};

INSTANTIATE_TEST_SUITE_P(Releases, DrawingsUnderFaults, testing::ValuesIn(faults::kReleases),
                         [](const testing::TestParamInfo<Release>& release) { return release.param.name; });

} // namespace

TEST_P(DrawingsUnderFaults, ADrawingIsReadOrRefusedAndTheDatabaseReadsItThen) {
    faults::WalkFaults([] { return std::make_unique<Read>(GetParam()); });
}

TEST_P(DrawingsUnderFaults, ANewFileIsWholeOrNotThere) {
    faults::WalkFaults([] { return std::make_unique<Save>(GetParam(), Save::Onto::newFile); });
}

TEST_P(DrawingsUnderFaults, ASaveOntoItsOwnFileLeavesTheOldOneOrTheNewOneWithItsBackup) {
    faults::WalkFaults([] { return std::make_unique<Save>(GetParam(), Save::Onto::itself); });
}
