// Descriptions that are written into drawings.
#include "tests/faults/CatalogueOperation.h"
#include "tests/faults/Drawings.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/reading/WriteDescription.h"

#include <gtest/gtest.h>
#include <ostream>

namespace {

using faults::CatalogueOperation;
using faults::Outcome;
using faults::Release;

const char* const kDrawing = "doors/door.dwg";
const char* const kTemporary = "doors/door.dwg2";
const char* const kBackup = "doors/door.bak";
const std::string kNew = "900 mm, 2";

/// A drawing of that release under a type, which need not be its own.
struct Subject {
    std::string name;
    const Release* release;
    int fileType;
};

void PrintTo(const Subject& subject, std::ostream* out) {
    *out << subject.name;
}

class Writing : public CatalogueOperation {
public:
    explicit Writing(const Subject& written) : subject(written), old(faults::DrawingOf(*written.release)) {}

    void Prepare() override {
        Write(kDrawing, old);
        auto* const directory = new Directory;
        directory->path = Wide("doors");
        block = new Block;
        block->name = L"door";
        block->fileType = subject.fileType;
        block->description = L"900 mm";
        directory->blocks.push_back(block);
        directories.push_back(directory);
        currentDirectory = directory;
    }
    void Run() override { good = WriteDescription(*block); }
    void Check(const Outcome& outcome) override {
        EXPECT_EQ(outcome.messages, 0) << "the button tells";
        for (const char* name : {kDrawing, kTemporary, kBackup})
            if (Exists(name)) {
                const std::string now = Now(name);
                EXPECT_TRUE(now == "the old one" || now == kNew) << name << " is " << now;
            }
        if (subject.fileType >= 16)
            CheckSavedBeside(outcome);
        else
            CheckSavedInPlace(outcome);
    }

private:
    std::string Now(const char* name) const {
        if (!Exists(name))
            return "nothing";
        return Bytes(name) == old ? "the old one" : faults::Describe(Folder() / name);
    }
    /// 2000 to 2013: the drawing is lost by a failed save only.
    void CheckSavedBeside(const Outcome& outcome) const {
        if (good) {
            EXPECT_TRUE(Now(kDrawing) == kNew || Now(kTemporary) == kNew) << "the new text is saved";
        }
        if (good || outcome.raised) {
            EXPECT_TRUE(Exists(kDrawing) || Now(kTemporary) == kNew) << "no drawing";
        }
        if (!outcome.fired()) {
            EXPECT_EQ(Now(kDrawing), kNew);
        }
    }
    /// All others: the drawing goes, and its back-up stays unless the save failed.
    void CheckSavedInPlace(const Outcome& outcome) const {
        if (good || outcome.raised) {
            EXPECT_TRUE(Now(kBackup) == "the old one" || Now(kDrawing) == "the old one") << "no old drawing";
        }
        if (!outcome.fired()) {
            EXPECT_FALSE(Exists(kDrawing));
        }
    }

    const Subject subject;
    const std::string& old;
    Block* block = nullptr;
    bool good = false;
};

std::vector<Subject> Subjects() {
    std::vector<Subject> subjects;
    for (const Release& release : faults::kReleases)
        subjects.push_back({std::string("Release") + release.name, &release, release.fileType});
    return subjects;
}

class WriteBackUnderFaults : public testing::TestWithParam<Subject> {};

INSTANTIATE_TEST_SUITE_P(Types, WriteBackUnderFaults, testing::ValuesIn(Subjects()),
                         [](const testing::TestParamInfo<Subject>& subject) { return subject.param.name; });

} // namespace

TEST_P(WriteBackUnderFaults, ADrawingIsLostWhereThatIsToldOnly) {
    faults::WalkFaults([] { return std::make_unique<Writing>(GetParam()); });
}
