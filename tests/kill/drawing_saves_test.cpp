// Drawings that the editor saves onto themselves, by a process that dies.
#include "tests/faults/Drawings.h"
#include "tests/kill/Rounds.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::microseconds kLongest{60'000};
constexpr std::string_view kText = "as drawn, ";

class KilledDrawingSaves : public testing::Test {
protected:
    static std::string Drawing(const faults::Release& release) { return std::string(release.name) + ".dwg"; }
    static std::string Backup(const faults::Release& release) { return std::string(release.name) + ".bak"; }

    /// One circle more in each drawing and each save, round and round.
    void SaveForever() const {
        std::array<AcDbDatabase, faults::kReleases.size()> databases;
        for (std::size_t i = 0; i < faults::kReleases.size(); ++i)
            databases[i].readDwgFile(Wide(Drawing(faults::kReleases[i])).c_str());
        for (;;)
            for (std::size_t i = 0; i < faults::kReleases.size(); ++i) {
                faults::DrawCircle(databases[i]);
                databases[i].saveAs(Wide(Drawing(faults::kReleases[i])).c_str(), true, faults::kReleases[i].version);
            }
    }
    /// How many entities the drawing has; -1 where it isn't whole.
    int EntitiesOf(const std::string& name) const {
        const std::string told = faults::Describe(folder.path() / name);
        return told.starts_with(kText) ? std::stoi(told.substr(kText.size())) : -1;
    }
    std::wstring Wide(const std::string& name) const { return (folder.path() / name).wstring(); }

    const tests::TemporaryFolder folder;
};

} // namespace

TEST_F(KilledDrawingSaves, AtRandomMomentsLeaveDrawingsAndBackupsWhole) {
    for (const faults::Release& release : faults::kReleases) {
        folder.write(Drawing(release), faults::DrawingOf(release));
        folder.write(Backup(release), faults::DrawingOf(release));
    }
    tests::killInRounds(
        kLongest, [&] { SaveForever(); },
        [&](int) {
            for (const faults::Release& release : faults::kReleases) {
                const int drawn = EntitiesOf(Drawing(release)), kept = EntitiesOf(Backup(release));
                EXPECT_GE(kept, 2) << release.name;
                EXPECT_GE(drawn, kept) << release.name;
                EXPECT_LE(drawn, kept + 1) << release.name << ": the back-up is what was saved last";
                folder.write(Drawing(release), faults::DrawingOf(release));
                folder.write(Backup(release), faults::DrawingOf(release));
            }
            for (const auto& entry : fs::directory_iterator(folder.path()))
                if (entry.path().extension() != ".dwg" && entry.path().extension() != ".bak")
                    fs::remove(entry.path()); // what the save that died was writing
        });
}
