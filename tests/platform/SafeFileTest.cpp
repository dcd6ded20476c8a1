#include "tessaro/platform/SafeFile.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sched.h>
#include <set>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace platform;

namespace {

std::wstring Wide(const std::filesystem::path& path) {
    return FromNarrow(path.native());
}

class SafeFileTest : public testing::Test {
protected:
    void Save(const std::string& bytes, unsigned mode = 0) const {
        SafeFile out(file, mode);
        out.Write(bytes.data(), bytes.size());
        out.Commit();
    }
    FileException::Cause Refusal(const std::filesystem::path& name, unsigned mode = 0) const {
        try {
            const SafeFile out(Wide(name), mode);
            return FileException::none;
        } catch (const FileException& refused) {
            return refused.cause;
        }
    }
    std::string Disk() const { return tests::readFile(path); }
    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            names.insert(entry.path().filename());
        return names;
    }
    struct stat Status() const {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status;
    }

    const tests::TemporaryFolder folder;
    const std::filesystem::path path = folder.path() / "f.ini";
    const std::wstring file = Wide(path);
};

using Names = std::set<std::string>;

} // namespace

TEST_F(SafeFileTest, TheNewFileTakesTheOldOnesPlaceAtTheCommitOnly) {
    folder.write("f.ini", "old");
    {
        SafeFile out(file);
        EXPECT_TRUE(out.IsOpen());
        EXPECT_TRUE(out.IsBeside());
        out.Write("ne", 2);
        out.Write("w", 1);
        EXPECT_EQ(Disk(), "old");
        out.Commit(SafeFile::Flush::yes);
        EXPECT_FALSE(out.IsOpen());
        EXPECT_EQ(Disk(), "new");
    }
    EXPECT_EQ(Names(), (::Names{"f.ini"}));
    EXPECT_EQ(Disk(), "new");
}

TEST_F(SafeFileTest, AMissingFileIsMadeWithTheRightsOfAnyNewFile) {
    Save("new");
    const std::filesystem::path other = folder.write("other", "");
    struct stat status;
    ASSERT_EQ(stat(other.c_str(), &status), 0);
    EXPECT_EQ(Status().st_mode, status.st_mode);
    EXPECT_EQ(Disk(), "new");
}

TEST_F(SafeFileTest, WithoutACommitTheOldFileStays) {
    folder.write("f.ini", "old");
    {
        SafeFile out(file);
        out.Write("new", 3);
    }
    EXPECT_EQ(Disk(), "old");
    SafeFile out(file);
    out.Write("new", 3);
    out.Abort();
    EXPECT_FALSE(out.IsOpen());
    EXPECT_EQ(Names(), (::Names{"f.ini"}));
    EXPECT_EQ(Disk(), "old");
}

TEST_F(SafeFileTest, AClosedOneTakesNothing) {
    SafeFile out;
    EXPECT_THROW(out.Write("x", 1), FileException);
    EXPECT_THROW(out.Commit(), FileException);
}

TEST_F(SafeFileTest, RightsAndOwnerAreKept) {
    folder.write("f.ini", "old");
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    const bool owned = chown(path.c_str(), 1234, 4321) == 0;
    const struct stat before = Status();
    Save("new");
    const struct stat after = Status();
    EXPECT_EQ(after.st_mode & 07777, 0640u);
    EXPECT_EQ(after.st_uid, before.st_uid) << owned;
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_NE(after.st_ino, before.st_ino);
}

TEST_F(SafeFileTest, ASymbolicLinkStaysAndItsFileIsReplaced) {
    const std::filesystem::path real = folder.write("deep/real.ini", "old");
    std::filesystem::create_symlink("deep/second", path);
    std::filesystem::create_symlink("real.ini", folder.path() / "deep/second");
    Save("new");
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / "deep/second"));
    EXPECT_EQ(tests::readFile(real), "new");
    EXPECT_EQ(Names(), (::Names{"deep", "f.ini"}));
}

TEST_F(SafeFileTest, ALinkThatLeadsNowhereYetGetsItsFile) {
    std::filesystem::create_symlink("later.ini", path);
    Save("new");
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(tests::readFile(folder.path() / "later.ini"), "new");
}

TEST_F(SafeFileTest, ACircleOfLinksIsABadPath) {
    std::filesystem::create_symlink("other", path);
    std::filesystem::create_symlink("f.ini", folder.path() / "other");
    EXPECT_EQ(Refusal(path), FileException::badPath);
}

TEST_F(SafeFileTest, AnotherSpellingIsTheSameFile) {
    folder.write("f.ini", "old");
    SafeFile out(Wide(folder.path() / "F.INI"));
    out.Commit();
    EXPECT_EQ(Names(), (::Names{"f.ini"}));
    EXPECT_EQ(Disk(), "");
}

TEST_F(SafeFileTest, WhatMayNotBeWrittenIsNotReplaced) {
    folder.write("f.ini", "old");
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    EXPECT_EQ(Refusal(path), FileException::accessDenied) << "for root too";
    EXPECT_EQ(Refusal(folder.path()), FileException::accessDenied);
    EXPECT_EQ(Refusal(folder.path() / "none" / "f"), FileException::badPath);
    ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(Refusal(folder.path() / "pipe"), FileException::accessDenied);
    EXPECT_EQ(Names(), (::Names{"f.ini", "pipe"}));
}

TEST_F(SafeFileTest, AFileThatAnotherHoldsAloneIsRefusedWhereThatIsAsked) {
    folder.write("f.ini", "old");
    File other(file, File::modeReadWrite | File::shareExclusive);
    EXPECT_EQ(Refusal(path, File::shareExclusive), FileException::sharingViolation);
    SafeFile out;
    EXPECT_FALSE(out.Open(file, File::shareExclusive));
    EXPECT_TRUE(out.Open(file)) << "otherwise not";
    out.Abort();
    other.Close();
    EXPECT_TRUE(out.Open(file, File::shareExclusive));
    EXPECT_FALSE(other.Open(file, File::modeReadWrite | File::shareExclusive)) << "held until the commit";
    out.Commit();
    EXPECT_TRUE(other.Open(file, File::modeReadWrite | File::shareExclusive));
}

TEST_F(SafeFileTest, TwoSavesAtOnceDoNotMixAndTheLaterCommitStays) {
    SafeFile first(file), second(file);
    first.Write("first", 5);
    second.Write("second", 6);
    EXPECT_EQ(Names(), (::Names{"f.ini.saving", "f.ini.saving2"}));
    second.Commit();
    EXPECT_EQ(Disk(), "second");
    first.Commit();
    EXPECT_EQ(Disk(), "first");
    EXPECT_EQ(Names(), (::Names{"f.ini"}));
}

TEST_F(SafeFileTest, WhatADeadProcessLeftIsTakenAwayByTheNextSave) {
    folder.write("f.ini", "old");
    folder.write("f.ini.saving", "half a new o");
    Save("new");
    EXPECT_EQ(Disk(), "new");
    EXPECT_EQ(Names(), (::Names{"f.ini"}));
}

TEST_F(SafeFileTest, WhatIsNoLeftoverIsLeftAlone) {
    std::filesystem::create_symlink(folder.write("precious", "kept"), folder.path() / "f.ini.saving");
    std::filesystem::create_directory(folder.path() / "f.ini.saving2");
    Save("new");
    EXPECT_EQ(Disk(), "new");
    EXPECT_EQ(tests::readFile(folder.path() / "precious"), "kept");
    EXPECT_EQ(Names(), (::Names{"f.ini", "f.ini.saving", "f.ini.saving2", "precious"}));
}

TEST_F(SafeFileTest, AFolderThatTakesNoNewFileIsWrittenInPlace) {
    const std::filesystem::path closed = folder.write("closed/f.ini", "a long old text");
    ASSERT_EQ(chmod(closed.c_str(), 0666), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(chmod(closed.parent_path().c_str(), 0555), 0);
    const int status = tests::inChild([&] {
        if (geteuid() == 0 && !tests::becomeNobody())
            return 99;
        SafeFile out(Wide(closed));
        if (out.IsBeside())
            return 1;
        out.Write("new", 3);
        if (tests::readFile(closed) != "a long old text")
            return 2;
        out.Commit();
        SafeFile missing;
        return missing.Open(Wide(closed.parent_path() / "missing")) ? 3 : 0;
    });
    ASSERT_EQ(chmod(closed.parent_path().c_str(), 0755), 0);
    if (status == 99)
        GTEST_SKIP() << "no right to become another user";
    EXPECT_EQ(status, 0);
    EXPECT_EQ(tests::readFile(closed), "new");
}

TEST_F(SafeFileTest, WhereTheOwnerCouldNotBeKeptTheFileIsWrittenInPlace) {
    if (geteuid() != 0)
        GTEST_SKIP() << "needs files of two owners";
    folder.write("f.ini", "old");
    ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
    const struct stat before = Status();
    const int status = tests::inChild([&] {
        if (!tests::becomeNobody())
            return 99;
        SafeFile out(file);
        if (out.IsBeside())
            return 1;
        out.Write("new", 3);
        out.Commit();
        return 0;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(Disk(), "new");
    EXPECT_EQ(Status().st_ino, before.st_ino);
    EXPECT_EQ(Names(), (::Names{"f.ini"}));
}

TEST_F(SafeFileTest, AFileThatIsMountedByItselfIsWrittenInPlace) {
    folder.write("f.ini", "old");
    folder.write("mounted", "long mounted text");
    const int status = tests::inChild([&] {
        if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount((folder.path() / "mounted").c_str(), path.c_str(), nullptr, MS_BIND, nullptr) != 0)
            return 99;
        SafeFile out(file);
        out.Write("new", 3);
        out.Commit();
        return Disk() == "new" ? 0 : 1;
    });
    if (status == 99)
        GTEST_SKIP() << "no right to mount";
    EXPECT_EQ(status, 0);
    EXPECT_EQ(tests::readFile(folder.path() / "mounted"), "new");
    EXPECT_EQ(Disk(), "old");
    EXPECT_EQ(Names(), (::Names{"f.ini", "mounted"}));
}

TEST_F(SafeFileTest, OnAFullDiskTheOldFileStaysAndNothingBesideIt) {
    const int status = tests::inChild([&] {
        if (!tests::mountSmallDisk(folder.path(), 64 << 10))
            return 99;
        folder.write("f.ini", "old");
        const std::string large(100 << 10, 'x');
        try {
            SafeFile out(file);
            out.Write(large.data(), large.size());
            return 1;
        } catch (const FileException& full) {
            if (full.cause != FileException::diskFull || full.path != file)
                return 2;
        }
        return Disk() == "old" && Names() == ::Names{"f.ini"} ? 0 : 3;
    });
    if (status == 99)
        GTEST_SKIP() << "no right to mount";
    EXPECT_EQ(status, 0);
}

TEST_F(SafeFileTest, InPlaceTooAFullDiskCostsNothingOfTheOldFile) {
    const int status = tests::inChild([&] {
        if (geteuid() != 0 || !tests::mountSmallDisk(folder.path(), 64 << 10))
            return 99;
        folder.write("f.ini", "old");
        if (chmod(path.c_str(), 0666) != 0 || chmod(folder.path().c_str(), 0555) != 0 || !tests::becomeNobody())
            return 99;
        const std::string large(100 << 10, 'x');
        SafeFile out(file);
        out.Write(large.data(), large.size());
        try {
            out.Commit();
            return 1;
        } catch (const FileException& full) {
            if (full.cause != FileException::diskFull)
                return 2;
        }
        return Disk() == "old" && !out.IsOpen() ? 0 : 3;
    });
    if (status == 99)
        GTEST_SKIP() << "no right to mount";
    EXPECT_EQ(status, 0);
}

TEST_F(SafeFileTest, KilledAtAnyFileCallTheWholeOldOrTheWholeNewFileIsThere) {
    const std::string before(3000, 'o'), after(70000, 'n');
    bool sawOld = false;
    for (int number = 1;; ++number) {
        folder.write("f.ini", before);
        const tests::Killed killed = tests::killAtFileCall(number, [&] { Save(after); });
        if (killed.refused)
            GTEST_SKIP() << "this system lets no process watch its child";
        EXPECT_TRUE(Disk() == before || Disk() == after) << killed.at << " " << number;
        if (killed.done) {
            EXPECT_EQ(Disk(), after);
            EXPECT_GE(number, 4) << "open, write and rename at the least";
            break;
        }
        sawOld |= Disk() == before;
        Save("again");
        EXPECT_EQ(Disk(), "again");
        EXPECT_EQ(Names(), (::Names{"f.ini"})) << killed.at;
    }
    EXPECT_TRUE(sawOld);
}

TEST_F(SafeFileTest, ABackupIsASecondNameThatOutlivesTheReplacement) {
    folder.write("f.ini", "old");
    const auto backup = folder.path() / "f.bk1";
    const struct stat before = Status();
    EXPECT_TRUE(BackupFile(file, Wide(backup)));
    EXPECT_EQ(Status().st_ino, before.st_ino) << "the file keeps its name meanwhile";
    Save("new");
    EXPECT_EQ(tests::readFile(backup), "old");
    EXPECT_FALSE(BackupFile(file, Wide(backup))) << "never replaces";
    EXPECT_FALSE(BackupFile(Wide(folder.path() / "none"), Wide(folder.path() / "x")));
}

TEST_F(SafeFileTest, WhereLinksAreRefusedABackupIsAMoveOrACopyBehindASymbolicLink) {
    const int status = tests::inChild([&] {
        std::filesystem::create_directory(folder.path() / "disk");
        if (!tests::mountSmallDisk(folder.path() / "disk", 64 << 10))
            return 99;
        folder.write("f.ini", "old");
        const auto other = folder.path() / "disk" / "f.bk1";
        // Between two disks no link is possible.
        if (!BackupFile(file, Wide(other)) || tests::readFile(other) != "old" || FileExists(file))
            return 1;
        std::filesystem::create_symlink(other, path);
        const auto copy = folder.path() / "f.bk1";
        if (!BackupFile(file, Wide(copy)) || tests::readFile(copy) != "old")
            return 2;
        return std::filesystem::is_symlink(path) && !std::filesystem::is_symlink(copy) && Disk() == "old" ? 0 : 3;
    });
    if (status == 99)
        GTEST_SKIP() << "no right to mount";
    EXPECT_EQ(status, 0);
}
