#include "tessaro/host/Log.h"

#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

/// A session is a process: the log's file is fixed at its first line. Gives true where all went well in there.
bool Session(const std::filesystem::path& folder, const std::function<void()>& body) {
    const pid_t child = fork();
    if (child == 0) {
        moduleFolder = platform::FromNarrow(folder.native());
        body();
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::filesystem::path LogFile(const tests::TemporaryFolder& folder, int number) {
    return folder.path() / "Log" /
           ("tessaro for " + platform::ToNarrow(platform::ComputerName()) + " " + std::to_string(number) + ".log");
}

} // namespace

TEST(Log, WithoutTheFolderNothingIsWrittenForGood) {
    const tests::TemporaryFolder folder;
    EXPECT_TRUE(Session(folder.path(), [&] {
        Log(L"one\n");
        EXPECT_FALSE(std::filesystem::exists(folder.path() / "Log"));
        std::filesystem::create_directory(folder.path() / "Log");
        Log(L"two\n");
        EXPECT_TRUE(std::filesystem::is_empty(folder.path() / "Log"));
    }));
}

TEST(Log, AFileOfTheFoldersNameCountsAsNoFolder) {
    const tests::TemporaryFolder folder;
    folder.write("Log", "kept");
    EXPECT_TRUE(Session(folder.path(), [] { Log(L"one\n"); }));
    EXPECT_EQ(tests::readFile(folder.path() / "Log"), "kept");
}

TEST(Log, EachLineIsOnDiskBeforeTheReturnWithCarriageReturns) {
    const tests::TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / "Log");
    EXPECT_TRUE(Session(folder.path(), [&] {
        Log(L"Ver=%s %d\n", L"3.9.10", 7);
        EXPECT_EQ(tests::readFile(LogFile(folder, 1)), "Ver=3.9.10 7\r\n");
        Log(L"no end, ");
        Log(L"Möbel\n");
        EXPECT_EQ(tests::readFile(LogFile(folder, 1)), "Ver=3.9.10 7\r\nno end, M\xC3\xB6"
                                                       "bel\r\n");
    }));
}

TEST(Log, EachSessionTakesTheFirstFreeNumberSoGapsAreFilled) {
    const tests::TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / "Log");
    for (int session = 1; session <= 2; ++session)
        EXPECT_TRUE(Session(folder.path(), [] { Log(L"x\n"); }));
    EXPECT_TRUE(std::filesystem::exists(LogFile(folder, 1)));
    EXPECT_TRUE(Session(folder.path(), [] { Log(L"third\n"); }));
    EXPECT_EQ(tests::readFile(LogFile(folder, 3)), "third\r\n");
    std::filesystem::remove(LogFile(folder, 1));
    std::filesystem::remove(LogFile(folder, 3));
    EXPECT_TRUE(Session(folder.path(), [] { Log(L"in the gap\n"); }));
    EXPECT_EQ(tests::readFile(LogFile(folder, 1)), "in the gap\r\n");
    EXPECT_FALSE(std::filesystem::exists(LogFile(folder, 3)));
}

TEST(Log, AMessageIsBoundedAndKeepsItsLineEnd) {
    const tests::TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / "Log");
    EXPECT_TRUE(Session(folder.path(), [&] {
        const std::wstring much(100'000, L'x');
        Log(L"%s\n", much.c_str());
        Log(L"%s", much.c_str());
        EXPECT_EQ(tests::readFile(LogFile(folder, 1)), std::string(1998, 'x') + "\r\n" + std::string(1999, 'x'));
    }));
}

TEST(Log, AFolderThatIsDeletedMeanwhileDropsTheLines) {
    const tests::TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / "Log");
    EXPECT_TRUE(Session(folder.path(), [&] {
        Log(L"one\n");
        std::filesystem::remove_all(folder.path() / "Log");
        EXPECT_NO_THROW(Log(L"two\n"));
        EXPECT_FALSE(std::filesystem::exists(folder.path() / "Log"));
        std::filesystem::create_directory(folder.path() / "Log");
        Log(L"three\n");
        EXPECT_EQ(tests::readFile(LogFile(folder, 1)), "three\r\n") << "the same file, made anew";
    }));
}

TEST(Log, AFileThatIsReadOnlyDropsTheLines) {
    const tests::TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / "Log");
    EXPECT_TRUE(Session(folder.path(), [&] {
        Log(L"one\n");
        EXPECT_EQ(chmod(LogFile(folder, 1).c_str(), 0444), 0);
        EXPECT_NO_THROW(Log(L"two\n"));
        EXPECT_EQ(tests::readFile(LogFile(folder, 1)), "one\r\n");
    }));
}

TEST(Log, LinesOfSeveralThreadsStayWhole) {
    const tests::TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / "Log");
    EXPECT_TRUE(Session(folder.path(), [&] {
        constexpr int kThreads = 4, kLines = 200;
        std::vector<std::thread> threads;
        for (int number = 0; number < kThreads; ++number)
            threads.emplace_back([number] {
                for (int i = 0; i < kLines; ++i)
                    Log(L"%s\n", std::wstring(100, static_cast<wchar_t>(L'a' + number)).c_str());
            });
        for (std::thread& thread : threads)
            thread.join();
        const std::string text = tests::readFile(LogFile(folder, 1));
        EXPECT_EQ(text.size(), std::size_t{kThreads} * kLines * 102);
        for (std::size_t at = 0; at + 102 <= text.size(); at += 102)
            EXPECT_EQ(text.substr(at, 102), std::string(100, text[at]) + "\r\n");
        EXPECT_FALSE(std::filesystem::exists(LogFile(folder, 2)));
    }));
}
