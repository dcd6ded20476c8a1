#include "tessaro/platform/SharedLibrary.h"

#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace platform;

namespace {

const std::wstring kSample = FromNarrow(TESSARO_BIN_DIR "/Sample-24.arx");

} // namespace

TEST(SharedLibrary, LoadsAFileInAnySpellingAndFindsItsFunctions) {
    const SharedLibrary library(FromNarrow(TESSARO_BIN_DIR "/SAMPLE-24.ARX"));
    ASSERT_TRUE(library.IsLoaded());
    const auto answer = reinterpret_cast<int (*)()>(library.Find("SampleAnswer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(library.Find("NoSuchFunction"), nullptr);
}

TEST(SharedLibrary, AMissingOrForeignFileIsNotLoaded) {
    const tests::TemporaryFolder folder;
    EXPECT_FALSE(SharedLibrary(L"/none/none.so").IsLoaded());
    EXPECT_FALSE(SharedLibrary(FromNarrow(folder.write("text.so", "no library").native())).IsLoaded());
    EXPECT_FALSE(SharedLibrary(L"libc.so.6").IsLoaded()) << "the linker's own path is not searched";
    EXPECT_EQ(SharedLibrary().Find("x"), nullptr);
}

TEST(SharedLibrary, ALoadedObjectIsFoundByItsFilesNameAlone) {
    EXPECT_EQ(GetModuleHandle(L"sample-24.arx"), nullptr);
    SharedLibrary library(kSample);
    ASSERT_TRUE(library.IsLoaded());
    void* const handle = GetModuleHandle(L"sample-24.ARX");
    ASSERT_NE(handle, nullptr);
    EXPECT_TRUE(std::filesystem::equivalent(ToNarrow(GetModuleFileName(handle)), ToNarrow(kSample)));
    EXPECT_EQ(GetModuleFileName(handle).front(), kSeparator) << "a full path";
    EXPECT_EQ(GetModuleHandle(L"other.arx"), nullptr);

    const SharedLibrary moved(std::move(library));
    EXPECT_FALSE(library.IsLoaded()); // NOLINT: what a move leaves is part of the class
    EXPECT_TRUE(moved.IsLoaded());
}

TEST(SharedLibrary, AHandleThatWasFoundDoesNotHoldTheObject) {
    {
        const SharedLibrary library(kSample);
        ASSERT_NE(GetModuleHandle(L"Sample-24.arx"), nullptr);
    }
    EXPECT_EQ(GetModuleHandle(L"Sample-24.arx"), nullptr);
}

TEST(SharedLibrary, TheProcesssOwnNameCountsAndNullIsTheProcess) {
    void* const handle = GetModuleHandle(L"TEST_platform");
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(GetModuleFileName(handle), ExecutablePath());
    EXPECT_EQ(GetModuleFileName(nullptr), ExecutablePath());
}

TEST(SharedLibrary, AReleasedLibraryStaysInTheProcess) {
    {
        SharedLibrary library(kSample);
        library.Release();
        EXPECT_FALSE(library.IsLoaded());
    }
    EXPECT_NE(GetModuleHandle(L"Sample-24.arx"), nullptr);
}
