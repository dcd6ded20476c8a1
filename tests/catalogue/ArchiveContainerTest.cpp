// The container that a packed stream stands in.
#include "tests/catalogue/ArchiveFixture.h"

#include "tests/support/ChildProcess.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <sys/resource.h>

using catalogue_tests::Container;
using catalogue_tests::Digits;
using catalogue_tests::Hex;
using catalogue_tests::Packed;
using catalogue_tests::Unpacked;
using platform::ArchiveException;
using platform::FileException;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ArchiveContainer : public catalogue_tests::ArchiveTest {
protected:
    /// The first number of a file of these bytes.
    std::int32_t First(const std::string& bytes, bool compress = true, const std::wstring& password = L"") const {
        std::int32_t value = 0;
        Load(
            bytes, [&](CArchiveExt& archive) { archive >> value; }, compress, password);
        return value;
    }
    int CauseOfFirst(const std::string& bytes, bool compress = true) const {
        return Cause([&] { First(bytes, compress); });
    }
};

/// What a password's step makes of the bytes of a file.
std::string Changed(std::string bytes, char16_t key) {
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(bytes[i] ^ (i % 2 == 0 ? key & 0xFF : key >> 8));
    return bytes;
}

} // namespace

TEST_F(ArchiveContainer, AStreamIsPackedBehindAHeadOfSixteenBytes) {
    // Marks, kind 1, four plain bytes, Adler-32 of the packed ones, the zlib stream.
    EXPECT_EQ(Digits(Stored([](CArchiveExt& archive) { archive << std::int32_t{0x04030201}; }, true)),
              Digits(Hex("61 00 6b 00 7a 00 01 00  04 00 00 00  c8 02 f5 19"
                         "78 9c 63 64 62 66 01 00 00 18 00 0b")));
    EXPECT_EQ(First(Disk()), 0x04030201);
}

TEST_F(ArchiveContainer, AnEmptyStreamHasAContainerToo) {
    const std::string empty = Stored([](CArchiveExt&) {}, true);
    EXPECT_EQ(empty, Container(""));
    EXPECT_EQ(CauseOfFirst(empty), ArchiveException::endOfFile);
}

TEST_F(ArchiveContainer, WithoutCompressionTheStreamStandsInTheFileAsItIs) {
    EXPECT_EQ(Digits(Stored([](CArchiveExt& archive) { archive << std::int32_t{0x04030201}; })), "01 02 03 04 ");
}

TEST_F(ArchiveContainer, AnEmptyFileEndsAtTheFirstPrimitive) {
    EXPECT_EQ(CauseOfFirst("", true), ArchiveException::endOfFile);
    EXPECT_EQ(CauseOfFirst("", false), ArchiveException::endOfFile);
}

TEST_F(ArchiveContainer, AFileWithoutTheMarksIsReadAsAPlainStream) {
    EXPECT_EQ(First("\1\2\3\4"), 0x04030201);
    EXPECT_EQ(First(Hex("61 00 6b 00 7a 01")), 0x006B0061) << "one mark is wrong";
    EXPECT_EQ(First(Hex("41 00 6b 00 7a 00 01 00 00 00 00 00 00 00 00 00")), 0x006B0041);
}

TEST_F(ArchiveContainer, APlainStreamThatStartsWithTheMarksIsTakenForAContainer) {
    EXPECT_EQ(CauseOfFirst(Hex("61 00 6b 00 7a 00") + "plain text behind the marks"), ArchiveException::endOfFile);
    EXPECT_EQ(CauseOfFirst(Hex("61 00 6b 00 7a 00")), ArchiveException::endOfFile) << "cut inside the head";
}

TEST_F(ArchiveContainer, EveryKindButTheThirdIsReadAsTheFirst) {
    const std::string packed = Packed("\1\2\3\4");
    for (const int kind : {0, 1, 2, 4, 0xFFFF})
        EXPECT_EQ(First(Container(packed, 4, kind)), 0x04030201) << kind;
}

TEST_F(ArchiveContainer, TheChecksumOfTheFirstKindIsNotLookedAt) {
    EXPECT_EQ(First(Container(Packed("\1\2\3\4"), 4, 1, 12345)), 0x04030201);
}

TEST_F(ArchiveContainer, WithoutCompressionTheHeadOfAContainerIsReadAsTheStream) {
    EXPECT_EQ(First(Container("\1\2\3\4"), false), 0x006B0061);
}

TEST_F(ArchiveContainer, WithCompressionAFileWrittenWithoutItStaysReadable) {
    const std::string plain = Stored([](CArchiveExt& archive) { archive << std::int32_t{7} << std::wstring(L"x"); });
    EXPECT_EQ(First(plain, true), 7);
}

TEST_F(ArchiveContainer, AFilesPresentPlaceCountsOnlyForAPlainStream) {
    folder.write("stream", "skip\1\2\3\4");
    platform::File file(Path(), platform::File::modeRead);
    file.Seek(4);
    std::int32_t value = 0;
    CArchiveExt(&file, L"", false) >> value;
    EXPECT_EQ(value, 0x04030201);
    CArchiveExt(&file, L"", true) >> value;
    EXPECT_EQ(Digits({reinterpret_cast<const char*>(&value), 4}), Digits("skip"));
}

TEST_F(ArchiveContainer, DataPastThePlainLengthIsNotThere) {
    EXPECT_EQ(CauseOfFirst(Container(Packed("\1\2\3\4"), 3)), ArchiveException::endOfFile);
    EXPECT_EQ(First(Container(Packed("\1\2\3\4\5\6"), 4)), 0x04030201);
}

TEST_F(ArchiveContainer, AShortOrDamagedStreamGivesWhatCameOutAndThenEndsWithoutAMessage) {
    std::string plain;
    for (int i = 0; i < 3000; ++i)
        plain += std::to_string(i * 7919);
    const std::string whole = Container(plain);
    const auto length = [&](const std::string& bytes) {
        std::size_t count = 0;
        Load(
            bytes,
            [&](CArchiveExt& archive) {
                while (!archive.Take(1).empty())
                    ++count;
            },
            true);
        return count;
    };
    EXPECT_EQ(length(whole), plain.size());
    std::size_t last = 0;
    for (std::size_t cut = 16; cut <= whole.size(); cut += 97) {
        const std::size_t count = length(whole.substr(0, cut));
        EXPECT_GE(count, last);
        last = count;
    }
    EXPECT_GT(last, plain.size() / 2);
    std::string damaged = whole;
    damaged[whole.size() / 2] = static_cast<char>(damaged[whole.size() / 2] ^ 0xFF);
    EXPECT_LE(length(damaged), plain.size());
    EXPECT_EQ(length(Container("no zlib stream", 100)), 0u);
    EXPECT_EQ(length(whole + "behind the stream"), plain.size());
    EXPECT_THAT(told.lines, IsEmpty());
}

TEST_F(ArchiveContainer, APlainLengthIsBelievedUpToAThousandAndThirtyTwoTimesThePackedBytes) {
    const std::string packed = Packed(std::string(100000, 'x'));
    Load(
        Container(packed, 0xFFFFFFFF), [&](CArchiveExt& archive) { EXPECT_EQ(archive.AtMost(), 1032 * packed.size()); },
        true);
    Load(
        Container(packed, 100), [&](CArchiveExt& archive) { EXPECT_EQ(archive.AtMost(), 100u); }, true);
}

TEST_F(ArchiveContainer, ALargeStreamGoesThroughInBothForms) {
    std::wstring text;
    for (int i = 0; i < 400000; ++i)
        text += static_cast<wchar_t>(L' ' + i * 31 % 977);
    for (const bool compress : {false, true}) {
        const std::string bytes = Stored([&](CArchiveExt& archive) { archive << text << std::int32_t{7}; }, compress);
        Load(
            bytes,
            [&](CArchiveExt& archive) {
                std::wstring read;
                std::int32_t value = 0;
                archive >> read >> value;
                EXPECT_TRUE(read == text);
                EXPECT_EQ(value, 7);
            },
            compress);
    }
}

TEST_F(ArchiveContainer, APasswordMakesTheThirdKindAndPacksWhateverIsSaid) {
    const std::string plain = "\1\2\3\4", packed = Packed(plain);
    // The exclusive or of "k", "e" and "y" is 0x77; every other byte stays.
    const std::string expected = Container(Changed(packed, 0x77), 4, 3, [&] {
        const std::string head = Container(packed, 4, 3);
        std::uint32_t sum = 0;
        std::memcpy(&sum, head.data() + 12, 4);
        return sum;
    }());
    for (const bool compress : {false, true}) {
        const auto store = [](CArchiveExt& archive) { archive << std::int32_t{0x04030201}; };
        EXPECT_EQ(Digits(Stored(store, compress, L"key")), Digits(expected));
        EXPECT_EQ(First(expected, compress, L"key"), 0x04030201);
    }
    EXPECT_EQ(First(expected, true, L"eyk"), 0x04030201) << "the order of the characters does not matter";
    EXPECT_EQ(First(expected, true, L"keyxx"), 0x04030201) << "a character that comes twice does nothing";
}

TEST_F(ArchiveContainer, APasswordBeyondAsciiChangesBothBytesOfAUnit) {
    const std::string bytes = Stored([](CArchiveExt& archive) { archive << std::int32_t{5}; }, true, L"\u20AC");
    EXPECT_EQ(bytes.substr(16), Changed(Packed(std::string("\5\0\0\0", 4)), 0x20AC));
    EXPECT_EQ(First(bytes, true, L"\u20AC"), 5);
}

TEST_F(ArchiveContainer, AWrongPasswordIsToldAndThrown) {
    const std::string bytes = Stored([](CArchiveExt& archive) { archive << std::int32_t{5}; }, true, L"key");
    EXPECT_THROW(First(bytes, true, L"kez"), platform::UserException);
    EXPECT_THROW(First(bytes, true), platform::UserException) << "without any";
    EXPECT_THAT(told.lines, ElementsAre(L"box Password incorrect!!!", L"box Password incorrect!!!"));
}

TEST_F(ArchiveContainer, TheThirdKindIsReadWithoutAPasswordWhereItsChecksumFits) {
    EXPECT_EQ(First(Container(Packed("\1\2\3\4"), 4, 3)), 0x04030201);
    EXPECT_THROW(First(Container(Packed("\1\2\3\4"), 4, 3, 1)), platform::UserException);
    EXPECT_THAT(told.lines, ElementsAre(L"box Password incorrect!!!"));
}

TEST_F(ArchiveContainer, XorBufferCountsUnitsOfSixteenBits) {
    platform::SafeFile file(Path());
    CArchiveExt archive(&file, L"", true);
    std::string buffer = "abcdefgh";
    EXPECT_FALSE(archive.XorBuffer(buffer.data(), 3, L""));
    EXPECT_EQ(buffer, "abcdefgh");
    EXPECT_TRUE(archive.XorBuffer(buffer.data(), 3, L"\u0101"));
    EXPECT_EQ(buffer, "`cbedggh") << "three units, which are six bytes";
    EXPECT_TRUE(archive.XorBuffer(buffer.data(), 3, L"\u0101"));
    EXPECT_EQ(buffer, "abcdefgh");
    EXPECT_TRUE(archive.XorBuffer(buffer.data(), 0, L"x"));
    EXPECT_EQ(buffer, "abcdefgh");
}

TEST_F(ArchiveContainer, AfterCloseTheArchiveHoldsNoFileAndNothingIsWrittenTwice) {
    platform::SafeFile file(Path());
    {
        CArchiveExt archive(&file, L"", true);
        EXPECT_TRUE(archive.IsStoring());
        EXPECT_TRUE(archive.HasFile());
        archive << std::int32_t{7};
        archive.Close();
        EXPECT_FALSE(archive.HasFile());
        archive.Close();
    }
    file.Commit();
    EXPECT_EQ(Unpacked(Disk()).size(), 4u);
}

TEST_F(ArchiveContainer, AnArchiveThatWasClosedOrAbortedReadsNothing) {
    folder.write("stream", "12345678");
    platform::File file(Path(), platform::File::modeRead);
    std::int32_t value = 0;
    CArchiveExt closed(&file, L"", true);
    closed >> value;
    closed.Close();
    EXPECT_EQ(Cause([&] { closed >> value; }), ArchiveException::endOfFile);
    CArchiveExt aborted(&file, L"", true);
    aborted.Abort();
    EXPECT_FALSE(aborted.HasFile());
    EXPECT_EQ(Cause([&] { aborted >> value; }), ArchiveException::endOfFile);
}

TEST_F(ArchiveContainer, TheDestructorClosesAnOpenStream) {
    platform::SafeFile file(Path());
    {
        CArchiveExt archive(&file, L"", true);
        archive << std::int32_t{7};
    }
    file.Commit();
    EXPECT_EQ(Unpacked(Disk()).size(), 4u);
}

TEST_F(ArchiveContainer, TheDestructorDropsAStreamThatIsNotToBeFlushed) {
    platform::SafeFile file(Path());
    {
        CArchiveExt archive(&file, L"", true, CArchiveExt::OnDelete::drop);
        archive << std::int32_t{7};
    }
    file.Commit();
    EXPECT_EQ(Disk(), "");
}

TEST_F(ArchiveContainer, AbortWritesNothing) {
    for (const bool compress : {false, true}) {
        platform::SafeFile file(Path());
        {
            CArchiveExt archive(&file, L"", compress);
            archive << std::wstring(100000, L'x');
            archive.Abort();
            EXPECT_FALSE(archive.HasFile());
        }
        file.Commit();
        EXPECT_EQ(Disk(), "");
    }
}

TEST_F(ArchiveContainer, AStreamThatIsNeverClosedLeavesTheOldFile) {
    folder.write("stream", "old");
    {
        platform::SafeFile file(Path());
        CArchiveExt archive(&file, L"", true);
        archive << std::int32_t{7};
    }
    EXPECT_EQ(Disk(), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1) << "nothing else is left";
}

TEST_F(ArchiveContainer, AFailingFileComesOutOfCloseAndLeavesTheOldFile) {
    folder.write("stream", "old");
    const int result = tests::inChild([this] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{10, 10};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
            return 1;
        for (const bool compress : {false, true}) {
            platform::SafeFile file(Path());
            CArchiveExt archive(&file, L"", compress);
            archive << std::wstring(1000, L'x');
            try {
                archive.Close();
                return 2;
            } catch (const FileException& exception) {
                if (exception.cause != FileException::diskFull)
                    return 3;
            }
            if (archive.HasFile())
                return 4;
        }
        return 0;
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(Disk(), "old");
}

TEST_F(ArchiveContainer, AFailingFileComesOutOfTheConstructor) {
    // Opened for writing alone, it can't be read.
    folder.write("stream", "old");
    platform::File file(Path(), platform::File::modeWrite);
    EXPECT_THROW(CArchiveExt(&file, L"", true), FileException);
}
