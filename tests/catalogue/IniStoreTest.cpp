#include "tessaro/catalogue/IniStore.h"

#include "tessaro/catalogue/IniMaps.h"
#include "tessaro/platform/File.h"
#include "tests/catalogue/Support.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using catalogue_tests::Wide;

namespace {

/// A folder with one ini file, whose image is forgotten at the end.
class IniStore : public testing::Test {
protected:
    ~IniStore() override { ForgetIniFile(file); }

    void Disk(const std::string& bytes) { folder.write("Tessaro35.ini", bytes); }
    std::string Disk() const { return tests::readFile(path); }
    bool Read(const std::string& bytes) {
        Disk(bytes);
        return ReadIniFile(file);
    }
    /// What is written of what was read.
    std::string Through(const std::string& bytes) {
        EXPECT_TRUE(Read(bytes));
        EXPECT_TRUE(WriteIniFile(file, false));
        return Disk();
    }
    std::wstring Text(const std::wstring& section, const std::wstring& key) const {
        std::wstring text;
        GetIniString(section, key, L"absent", text, file);
        return text;
    }
    std::string Backup(int number) const {
        return tests::readFile(folder.path() / ("Tessaro35.bk" + std::to_string(number)));
    }

    const tests::TemporaryFolder folder;
    const std::filesystem::path path = folder.path() / "Tessaro35.ini";
    const std::wstring file = Wide(path);
};

} // namespace

TEST_F(IniStore, LettersCaseNeverMattersButInValues) {
    ASSERT_TRUE(Read("[Tessaro OPTIONS]\r\nColumn1Width=140\r\nName=MiXed\r\n"));
    EXPECT_EQ(GetIniInt(L"tessaro options", L"COLUMN1WIDTH", 0, file), 140);
    EXPECT_EQ(Text(L"TESSARO Options", L"nAME"), L"MiXed");
    std::wstring upper = file;
    for (wchar_t& c : upper)
        c = static_cast<wchar_t>(c >= L'a' && c <= L'z' ? c - 32 : c);
    EXPECT_EQ(GetIniInt(L"Tessaro Options", L"Column1Width", 0, upper), 140) << "nor in the path";
    EXPECT_EQ(Through("[Tessaro Options]\nColumn1Width=140\n[ÄÖ]\nÜ=Ä\n"),
              "[tessaro options]\r\ncolumn1width=140\r\n[äö]\r\nü=Ä\r\n");
}

TEST_F(IniStore, LookUpsGiveTheirDefaultsWhereFileSectionOrKeyIsMissing) {
    EXPECT_EQ(GetIniInt(L"s", L"k", 7, L"/never/read.ini"), 7);
    ASSERT_TRUE(Read("[s]\nk=x12\nn= 34abc\ne=\n"));
    EXPECT_EQ(GetIniInt(L"t", L"k", 7, file), 7);
    EXPECT_EQ(GetIniInt(L"s", L"z", 7, file), 7);
    EXPECT_EQ(GetIniInt(L"s", L"k", 7, file), 0) << "no number";
    EXPECT_EQ(GetIniInt(L"s", L"n", 7, file), 34);
    EXPECT_EQ(GetIniInt(L"s", L"e", 7, file), 0) << "empty is there";
    std::wstring text = L"old";
    EXPECT_EQ(GetIniString(L"s", L"z", nullptr, text, file), 0);
    EXPECT_EQ(text, L"");
    EXPECT_EQ(GetIniString(L"s", L"z", L"default", text, file), 7);
    EXPECT_EQ(text, L"default");
    EXPECT_EQ(GetIniString(L"s", L"k", L"default", text, file), 3);
    EXPECT_EQ(text, L"x12");
}

TEST_F(IniStore, TheBufferFormCopiesTheSmallerOfLengthPlusOneAndSize) {
    SetIniString(L"s", L"k", L"abc", file);
    wchar_t buffer[8];
    std::fill(std::begin(buffer), std::end(buffer), L'#');
    EXPECT_EQ(GetIniStringBuffer(L"s", L"k", nullptr, buffer, 8, file), 4);
    EXPECT_EQ(std::wstring(buffer, 8), std::wstring(L"abc\0####", 8));
    std::fill(std::begin(buffer), std::end(buffer), L'#');
    EXPECT_EQ(GetIniStringBuffer(L"s", L"k", nullptr, buffer, 3, file), 3);
    EXPECT_EQ(std::wstring(buffer, 4), L"abc#") << "no terminator when the size is reached";
    EXPECT_EQ(GetIniStringBuffer(L"s", L"k", nullptr, buffer, 4, file), 4);
    EXPECT_EQ(std::wstring(buffer), L"abc");
    EXPECT_EQ(GetIniStringBuffer(L"s", L"z", L"default", buffer, 2, file), 2);
    EXPECT_EQ(std::wstring(buffer, 2), L"de");
    EXPECT_EQ(GetIniStringBuffer(L"s", L"k", nullptr, buffer, 0, file), 0);
    EXPECT_EQ(GetIniStringBuffer(L"s", L"k", nullptr, buffer, -1, file), 0);
}

TEST_F(IniStore, CommentsAreSkippedAndNotKept) {
    EXPECT_EQ(Through("; head\n[s]\n  ;a=1\nb=2;3\n;[t]\nc=4\n"), "[s]\r\nb=2;3\r\nc=4\r\n");
}

TEST_F(IniStore, ALineSplitsAtItsFirstEqualsSignAndNothingIsTrimmedAroundIt) {
    ASSERT_TRUE(Read("[s]\n a = b=c \n"));
    EXPECT_EQ(Text(L"s", L"a "), L" b=c") << "blanks at the ends of the line are gone";
    EXPECT_EQ(Text(L"s", L"a"), L"absent");
    ASSERT_TRUE(Read("[s]\n=v\n"));
    EXPECT_EQ(Text(L"s", L""), L"v");
}

TEST_F(IniStore, AKeyWithoutAValueKeepsItsCaseAndMayNotBeFound) {
    ASSERT_TRUE(Read("[s]\nlower\nUpper\n"));
    EXPECT_EQ(Text(L"s", L"lower"), L"");
    EXPECT_EQ(Text(L"s", L"Upper"), L"absent");
    EXPECT_EQ(Through("[s]\nlower=\nUpper\n"), "[s]\r\nlower\r\nUpper\r\n") << "empty values have no equals sign";
}

TEST_F(IniStore, ASectionNameLosesItsBracketsOnly) {
    ASSERT_TRUE(Read("[[A]]\nk=1\n[b] x]\nk=2\n[c] ; note\nk=3\n[]\nk=4\n[d\nk=5\n"));
    EXPECT_EQ(Text(L"a", L"k"), L"1");
    EXPECT_EQ(Text(L"b] x", L"k"), L"2") << "text behind the bracket stays with it";
    EXPECT_EQ(Text(L"c] ; note", L"k"), L"3");
    EXPECT_EQ(Text(L"", L"k"), L"4");
    EXPECT_EQ(Text(L"d", L"k"), L"5");
}

TEST_F(IniStore, ASectionThatComesTwiceKeepsItsPlaceAndLosesItsEarlierKeys) {
    EXPECT_EQ(Through("[a]\nx=1\n[b]\ny=2\n[A]\nz=3\n"), "[a]\r\nz=3\r\n[b]\r\ny=2\r\n");
}

TEST_F(IniStore, AKeySetAgainKeepsItsPlace) {
    EXPECT_EQ(Through("[s]\na=1\nb=2\nA=3\n"), "[s]\r\na=3\r\nb=2\r\n");
}

TEST_F(IniStore, OneBlankLineOfASectionSurvivesAtThePlaceOfTheFirst) {
    EXPECT_EQ(Through("[s]\na=1\n\nb=2\n\n\n[t]\nc=3\n"), "[s]\r\na=1\r\n\r\nb=2\r\n[t]\r\nc=3\r\n");
    EXPECT_EQ(Through(Disk()), "[s]\r\na=1\r\n\r\nb=2\r\n[t]\r\nc=3\r\n") << "and again";
}

TEST_F(IniStore, LinesAheadOfTheFirstSectionAreDropped) {
    EXPECT_EQ(Through("\na=1\nb\n[s]\nc=2\n"), "[s]\r\nc=2\r\n");
}

TEST_F(IniStore, TheLastLineNeedsNoEnd) {
    ASSERT_TRUE(Read("[s]\r\na=1"));
    EXPECT_EQ(Text(L"s", L"a"), L"1");
}

TEST_F(IniStore, NarrowLinesOfAnotherCodePageAreRead) {
    ASSERT_TRUE(Read("\xEF\xBB\xBF[s]\na=M\xC3\xB6"
                     "bel\nb=M\xF6"
                     "bel\n"));
    EXPECT_EQ(Text(L"s", L"a"), L"Möbel");
    EXPECT_EQ(Text(L"s", L"b"), L"Möbel");
}

TEST_F(IniStore, BinaryRubbishIsTolerated) {
    std::string rubbish;
    unsigned value = 1;
    for (int i = 0; i < 100'000; ++i) {
        value = value * 1664525 + 1013904223;
        rubbish += static_cast<char>(value >> 24);
    }
    EXPECT_TRUE(Read(rubbish));
    EXPECT_TRUE(Read("[s]\n" + rubbish));
    EXPECT_TRUE(WriteIniFile(file, false));
    EXPECT_TRUE(ReadIniFile(file));
    EXPECT_TRUE(Read(std::string(1'000'000, '[')));
    EXPECT_TRUE(Read(std::string("[s]\na\0b=c\0d\n", 12)));
    EXPECT_EQ(Text(L"s", std::wstring(L"a\0b", 3)), std::wstring(L"c\0d", 3));
}

TEST_F(IniStore, AMissingFileIsAnEmptyImageThatCanBeSetAndWritten) {
    EXPECT_FALSE(ReadIniFile(file));
    EXPECT_EQ(Text(L"s", L"k"), L"absent");
    EXPECT_TRUE(WriteIniFile(file, false));
    EXPECT_EQ(Disk(), "");
    EXPECT_EQ(SetIniString(L"S", L"K", L"V", file), 1);
    EXPECT_EQ(SetIniInt(L"S", L"N", -5, file), 1);
    EXPECT_TRUE(WriteIniFile(file, false));
    EXPECT_EQ(Disk(), "[s]\r\nk=V\r\nn=-5\r\n");
}

TEST_F(IniStore, AFileThatCannotBeReadLeavesAnEmptyImage) {
    ASSERT_TRUE(Read("[s]\nk=1\n"));
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_FALSE(ReadIniFile(file));
    EXPECT_EQ(Text(L"s", L"k"), L"absent");
    std::filesystem::remove(path);
    Disk("[s]\nk=1\n");
    std::filesystem::resize_file(path, 1'000'000'000);
    EXPECT_FALSE(ReadIniFile(file)) << "a gigabyte is no settings file";
    EXPECT_EQ(Text(L"s", L"k"), L"absent");
}

TEST_F(IniStore, ReadingAgainReplacesTheImage) {
    ASSERT_TRUE(Read("[s]\na=1\n[t]\nb=2\n"));
    ASSERT_TRUE(Read("[t]\nb=3\n"));
    EXPECT_EQ(Text(L"s", L"a"), L"absent");
    EXPECT_EQ(Text(L"t", L"b"), L"3");
}

TEST_F(IniStore, KeysAreListedInTheirOrder) {
    ASSERT_TRUE(Read("[s]\nZ=1\na=2\n[t]\nb=3\n"));
    EXPECT_EQ(GetIniKeys(L"S", file), (std::vector<std::wstring>{L"z", L"a"}));
    EXPECT_TRUE(GetIniKeys(L"none", file).empty());
    EXPECT_TRUE(GetIniKeys(L"s", L"/never/read.ini").empty());
}

TEST_F(IniStore, AForgottenFileHasNoImage) {
    EXPECT_FALSE(ForgetIniFile(file));
    SetIniString(L"s", L"k", L"v", file);
    EXPECT_TRUE(ForgetIniFile(file));
    EXPECT_FALSE(ForgetIniFile(file));
    EXPECT_EQ(Text(L"s", L"k"), L"absent");
}

TEST_F(IniStore, WithoutAnImageNothingIsWrittenAndNothingRenamed) {
    Disk("kept");
    EXPECT_FALSE(WriteIniFile(file, true));
    EXPECT_EQ(Disk(), "kept");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "Tessaro35.bk1"));
}

TEST_F(IniStore, BackupsShiftAndTheTenthWriteDeletesTheOldest) {
    Disk("0");
    for (int write = 1; write <= 10; ++write) {
        SetIniString(L"s", L"k", std::to_wstring(write), file);
        ASSERT_TRUE(WriteIniFile(file, true));
        EXPECT_EQ(Disk(), "[s]\r\nk=" + std::to_string(write) + "\r\n");
        for (int backup = 1; backup <= 9; ++backup) {
            const int version = write - backup;
            EXPECT_EQ(Backup(backup), version > 0    ? "[s]\r\nk=" + std::to_string(version) + "\r\n"
                                      : version == 0 ? "0"
                                                     : "")
                << write << " " << backup;
        }
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "Tessaro35.bk10"));
}

TEST_F(IniStore, ABackupIsARenameThatKeepsTheCallersCaseAndMissingOnesAreNoFailure) {
    Disk("old");
    struct stat before, after;
    ASSERT_EQ(stat(path.c_str(), &before), 0);
    folder.write("Tessaro35.bk3", "three");
    SetIniString(L"s", L"k", L"v", file);
    EXPECT_TRUE(WriteIniFile(file, true));
    ASSERT_EQ(stat((folder.path() / "Tessaro35.bk1").c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(Backup(4), "three");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "Tessaro35.bk3"));
    EXPECT_TRUE(std::filesystem::exists(path)) << "the file keeps the caller's case too";
}

TEST_F(IniStore, WithoutTheOptionThereIsNoBackup) {
    Disk("old");
    SetIniString(L"s", L"k", L"v", file);
    EXPECT_TRUE(WriteIniFile(file, false));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "Tessaro35.bk1"));
}

TEST_F(IniStore, FiftyAttemptsAreMadeAHundredMillisecondsApart) {
    Disk("old");
    platform::File other(file, platform::File::modeReadWrite | platform::File::shareExclusive);
    SetIniString(L"s", L"k", L"v", file);
    std::chrono::milliseconds waited{0};
    int waits = 0;
    EXPECT_FALSE(WriteIniFile(file, false, [&](std::chrono::milliseconds time) {
        waited += time;
        ++waits;
    }));
    EXPECT_EQ(waits, 50);
    EXPECT_EQ(waited, std::chrono::seconds(5));
    EXPECT_EQ(Disk(), "old");
    waits = 0;
    EXPECT_TRUE(WriteIniFile(file, false, [&](std::chrono::milliseconds) {
        if (++waits == 3)
            other.Close();
    }));
    EXPECT_EQ(waits, 3);
    EXPECT_EQ(Disk(), "[s]\r\nk=v\r\n");
}

TEST_F(IniStore, AFailureBehindTheBackupLeavesTheBackupAlone) {
    Disk("old");
    SetIniString(L"s", L"k", L"v", file);
    const pid_t child = fork();
    if (child == 0) {
        const rlimit noFiles{0, 0};
        setrlimit(RLIMIT_NOFILE, &noFiles);
        _exit(WriteIniFile(file, true, [](std::chrono::milliseconds) {}) ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_EQ(Backup(1), "old");
}

TEST_F(IniStore, AFullDiskIsReportedByTheResult) {
    SetIniString(L"s", L"k", L"long enough a value", file);
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit fewBytes{4, 4};
        setrlimit(RLIMIT_FSIZE, &fewBytes);
        _exit(WriteIniFile(file, false) ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

TEST_F(IniStore, ATenthBackupThatIsReadOnlyStays) {
    ASSERT_EQ(chmod(folder.write("Tessaro35.bk9", "nine").c_str(), 0444), 0);
    folder.write("Tessaro35.bk8", "eight");
    Disk("old");
    SetIniString(L"s", L"k", L"v", file);
    EXPECT_TRUE(WriteIniFile(file, true));
    EXPECT_EQ(Backup(9), "nine");
    EXPECT_EQ(Backup(8), "eight");
    EXPECT_EQ(Backup(1), "old");
}

TEST(IniMaps, KeepTheOrderOfFirstAppearanceAndOwnNoSections) {
    CStringToStringMap section;
    section.SetAt(L"b", L"1");
    section.SetAt(L"a", L"2");
    section.SetAt(L"b", L"3");
    std::wstring seen;
    for (const auto& [key, value] : section)
        seen += key + value;
    EXPECT_EQ(seen, L"b3a2");
    EXPECT_EQ(section.Lookup(L"B"), nullptr) << "exact comparison";
    EXPECT_EQ(section.GetCount(), 2u);
    {
        CStringToObMap image;
        image.SetAt(L"s", &section);
        EXPECT_EQ(image.Lookup(L"s"), &section);
        EXPECT_EQ(image.Lookup(L"t"), nullptr);
        EXPECT_EQ(image.GetCount(), 1u);
        image.RemoveAll();
        EXPECT_EQ(image.GetCount(), 0u);
    }
    EXPECT_EQ(*section.Lookup(L"a"), L"2");
    section.RemoveAll();
    EXPECT_EQ(section.GetCount(), 0u);
}
