#include "tessaro/catalogue/IniStore.h"
#include "tests/catalogue/Support.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

using catalogue_tests::Wide;

namespace {

constexpr int kKeys = 80;

/// A settings file all of whose keys have the same value, so that halves of two versions don't go unseen.
class IniCrash : public testing::Test {
protected:
    ~IniCrash() override { ForgetIniFile(file); }

    bool Save(int version, bool backup) const {
        ForgetIniFile(file);
        for (int key = 0; key < kKeys; ++key)
            SetIniInt(L"section", L"key" + std::to_wstring(key), version, file);
        return WriteIniFile(file, backup);
    }
    /// -1 where the file is missing, broken off or mixed.
    static int Version(const std::filesystem::path& name) {
        const std::wstring opened = Wide(name);
        int version = -1;
        if (ReadIniFile(opened)) {
            version = GetIniInt(L"section", L"key0", -1, opened);
            for (int key = 0; key < kKeys; ++key)
                if (GetIniInt(L"section", L"key" + std::to_wstring(key), -1, opened) != version)
                    version = -1;
        }
        ForgetIniFile(opened);
        return version;
    }
    std::filesystem::path Backup(int number) const { return folder.path() / ("settings.bk" + std::to_string(number)); }
    static std::string TextOf(int version) {
        std::string text = "[section]\r\n";
        for (int key = 0; key < kKeys; ++key)
            text += "key" + std::to_string(key) + "=" + std::to_string(version) + "\r\n";
        return text;
    }
    /// Whatever backups there are, each is a whole earlier version.
    void ExpectWholeBackups(int newest) const {
        for (int number = 1, last = newest; number <= 9; ++number) {
            const std::string text = tests::readFile(Backup(number));
            if (text.empty() && !std::filesystem::exists(Backup(number)))
                continue;
            const std::size_t first = text.find('=');
            ASSERT_NE(first, std::string::npos) << number;
            const int version = std::atoi(text.c_str() + first + 1);
            EXPECT_EQ(text, TextOf(version)) << number;
            EXPECT_LE(version, last) << number;
            last = version;
        }
    }

    const tests::TemporaryFolder folder;
    const std::filesystem::path path = folder.path() / "settings.ini";
    const std::wstring file = Wide(path);
};

/// With backups or without.
class KilledSave : public IniCrash, public testing::WithParamInterface<bool> {};

INSTANTIATE_TEST_SUITE_P(Ini, KilledSave, testing::Bool(), [](const testing::TestParamInfo<bool>& backups) {
    return backups.param ? "WithBackups" : "WithoutBackups";
});

} // namespace

TEST_P(KilledSave, AtEachFileCallInTurnARestartReadsAWholeOldOrNewFile) {
    std::set<std::string> calls;
    int saved = 0;
    ASSERT_TRUE(Save(saved, GetParam()));
    for (int number = 1;; ++number) {
        const tests::Killed killed = tests::killAtFileCall(number, [&] { Save(saved + 1, GetParam()); });
        if (killed.refused)
            GTEST_SKIP() << "this system lets no process watch its child";
        const int version = Version(path);
        EXPECT_TRUE(version == saved || version == saved + 1) << killed.at << " " << number << " " << version;
        ExpectWholeBackups(version);
        calls.insert(killed.at);
        if (killed.done) {
            EXPECT_EQ(version, saved + 1);
            break;
        }
        saved += 2;
        ASSERT_TRUE(Save(saved, GetParam())) << "the next run saves as ever";
        EXPECT_EQ(Version(path), saved);
        EXPECT_FALSE(std::filesystem::exists(folder.path() / "settings.ini.saving"));
    }
    for (const char* const call : {"openat", "write", "rename"})
        EXPECT_TRUE(calls.contains(call)) << call;
    EXPECT_EQ(calls.contains("linkat"), GetParam());
}

TEST_P(KilledSave, AtRandomMomentsARestartReadsAWholeOldOrNewFile) {
    std::mt19937 random(4711);
    int saved = 0;
    ASSERT_TRUE(Save(saved, GetParam()));
    for (int round = 0; round < 200; ++round) {
        const std::chrono::microseconds moment(random() % 3000);
        tests::killAfter(moment, [&](const std::function<void()>& begun) {
            begun();
            for (int version = saved + 1;; ++version)
                Save(version, GetParam());
        });
        const int version = Version(path);
        ASSERT_GE(version, saved) << "round " << round << ": " << tests::readFile(path).size() << " bytes";
        ExpectWholeBackups(version);
        saved = version;
    }
    EXPECT_TRUE(Save(saved + 1, GetParam()));
    EXPECT_EQ(Version(path), saved + 1);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "settings.ini.saving"));
}

TEST_F(IniCrash, AFullDiskLeavesTheOldFileAndTheBackupAndSaysSoByTheResult) {
    const int status = tests::inChild([&] {
        if (!tests::mountSmallDisk(folder.path(), 64 << 10))
            return 99;
        if (!Save(1, false))
            return 1;
        SetIniString(L"section", L"much", std::wstring(200 << 10, L'x'), file);
        if (WriteIniFile(file, true))
            return 2;
        if (Version(path) != 1 || Version(Backup(1)) != 1)
            return 3;
        return std::filesystem::exists(folder.path() / "settings.ini.saving") ? 4 : 0;
    });
    if (status == 99)
        GTEST_SKIP() << "no right to mount";
    EXPECT_EQ(status, 0);
}

TEST_F(IniCrash, AFolderThatTakesNoNewFileIsWrittenInPlaceWithoutABackup) {
    ASSERT_TRUE(Save(1, false));
    ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    const int status = tests::inChild([&] {
        if (geteuid() == 0 && !tests::becomeNobody())
            return 99;
        return Save(2, true) ? 0 : 1;
    });
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    if (status == 99)
        GTEST_SKIP() << "no right to become another user";
    EXPECT_EQ(status, 0);
    EXPECT_EQ(Version(path), 2);
    EXPECT_FALSE(std::filesystem::exists(Backup(1)));
}

TEST_F(IniCrash, AMissingFileInAFolderThatTakesNoneIsTriedFiftyTimes) {
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    const int status = tests::inChild([&] {
        if (geteuid() == 0 && !tests::becomeNobody())
            return 99;
        SetIniString(L"s", L"k", L"v", file);
        int waits = 0;
        return !WriteIniFile(file, true, [&](std::chrono::milliseconds) { ++waits; }) && waits == 50 ? 0 : 1;
    });
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    if (status == 99)
        GTEST_SKIP() << "no right to become another user";
    EXPECT_EQ(status, 0);
}

TEST_F(IniCrash, TheBackupOfAnotherOwnersFileIsAMoveSoThatItIsNotOverwritten) {
    if (geteuid() != 0)
        GTEST_SKIP() << "needs files of two owners";
    ASSERT_TRUE(Save(1, false));
    ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
    const int status = tests::inChild([&] {
        if (!tests::becomeNobody())
            return 99;
        return Save(2, true) ? 0 : 1;
    });
    ASSERT_EQ(status, 0);
    EXPECT_EQ(Version(path), 2);
    EXPECT_EQ(Version(Backup(1)), 1);
}

TEST_F(IniCrash, RightsAndASymbolicLinkOutliveASaveWithBackups) {
    const std::filesystem::path real = folder.write("real/settings.ini", "");
    ASSERT_EQ(chmod(real.c_str(), 0640), 0);
    std::filesystem::create_symlink("real/settings.ini", path);
    ASSERT_TRUE(Save(1, true));
    ASSERT_TRUE(Save(2, true));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(Version(real), 2);
    EXPECT_EQ(Version(Backup(1)), 1);
    EXPECT_FALSE(std::filesystem::is_symlink(Backup(1)));
    struct stat status;
    ASSERT_EQ(stat(real.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST_F(IniCrash, AReadOnlyFileBecomesTheBackupAndANewFileTakesItsPlace) {
    ASSERT_TRUE(Save(1, false));
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    EXPECT_TRUE(Save(2, true));
    EXPECT_EQ(Version(path), 2);
    EXPECT_EQ(Version(Backup(1)), 1);
}
