// Primitives of an archive's stream, each from and to literal bytes.
#include "tests/catalogue/ArchiveFixture.h"

#include <limits>

using catalogue_tests::Container;
using catalogue_tests::Digits;
using catalogue_tests::Hex;
using platform::ArchiveException;

namespace {

class ArchivePrimitives : public catalogue_tests::ArchiveTest {
protected:
    template <typename Value> void Check(const Value& value, const std::string& bytes) const {
        EXPECT_EQ(Digits(Stored([&](CArchiveExt& archive) { archive << value; })), Digits(bytes));
        ExpectRead(value, bytes);
    }
    template <typename Value> void ExpectRead(const Value& value, const std::string& bytes) const {
        Load(bytes, [&](CArchiveExt& archive) {
            Value read{};
            archive >> read;
            EXPECT_EQ(read, value) << Digits(bytes.substr(0, 40));
            EXPECT_EQ(archive.Position(), bytes.size());
        });
    }
    int CauseOfText(const std::string& bytes, bool compress = false) const {
        return Cause([&] {
            Load(
                bytes,
                [](CArchiveExt& archive) {
                    std::wstring text;
                    archive >> text;
                },
                compress);
        });
    }
};

/// "\1\0" for each character.
std::string Ones(std::size_t count) {
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i)
        bytes += std::string("\1\0", 2);
    return bytes;
}

} // namespace

TEST_F(ArchivePrimitives, NumbersAreLittleEndian) {
    Check(std::int32_t{0x01020304}, Hex("04 03 02 01"));
    Check(std::int32_t{-2}, Hex("fe ff ff ff"));
    Check(std::uint32_t{0xFFFFFFFE}, Hex("fe ff ff ff"));
    Check(std::int64_t{0x0102030405060708}, Hex("08 07 06 05 04 03 02 01"));
    Check(std::uint64_t{0xFFFFFFFFFFFFFFFF}, Hex("ff ff ff ff ff ff ff ff"));
}

TEST_F(ArchivePrimitives, ATimeIsSignedSecondsInEightBytes) {
    Check(std::int64_t{-1}, Hex("ff ff ff ff ff ff ff ff"));
    Check(std::int64_t{1700000000}, Hex("00 f1 53 65 00 00 00 00"));
}

TEST_F(ArchivePrimitives, ADoubleIsItsEightBytes) {
    Check(12.5, Hex("00 00 00 00 00 00 29 40"));
    Check(-0.1, Hex("9a 99 99 99 99 99 b9 bf"));
    Check(std::numeric_limits<double>::infinity(), Hex("00 00 00 00 00 00 f0 7f"));
}

TEST_F(ArchivePrimitives, AStringIsWrittenAsWideTextWithItsLength) {
    Check(std::wstring(L""), Hex("ff fe ff 00"));
    Check(std::wstring(L"Tür"), Hex("ff fe ff 03 54 00 fc 00 72 00"));
    Check(std::wstring(L"a\0b", 3), Hex("ff fe ff 03 61 00 00 00 62 00"));
    Check(std::wstring(L"\u20AC\uFFFF"), Hex("ff fe ff 02 ac 20 ff ff"));
}

TEST_F(ArchivePrimitives, AStringOf254CharactersTakesTheOneByteFormAndOneOf255TheSixteenBitForm) {
    Check(std::wstring(254, L'\1'), Hex("ff fe ff fe") + Ones(254));
    Check(std::wstring(255, L'\1'), Hex("ff fe ff ff ff 00") + Ones(255));
    Check(std::wstring(0xFFFD, L'\1'), Hex("ff fe ff ff fd ff") + Ones(0xFFFD));
}

TEST_F(ArchivePrimitives, AStringFrom65534CharactersOnTakesTheThirtyTwoBitForm) {
    Check(std::wstring(0xFFFE, L'\1'), Hex("ff fe ff ff ff ff fe ff 00 00") + Ones(0xFFFE));
    Check(std::wstring(0xFFFF, L'\1'), Hex("ff fe ff ff ff ff ff ff 00 00") + Ones(0xFFFF));
    Check(std::wstring(300000, L'\1'), Hex("ff fe ff ff ff ff e0 93 04 00") + Ones(300000));
}

TEST_F(ArchivePrimitives, ALengthOfSixtyFourBitsIsRead) {
    ExpectRead(std::wstring(2, L'\1'), Hex("ff fe ff ff ff ff ff ff ff ff 02 00 00 00 00 00 00 00") + Ones(2));
    ExpectRead(std::wstring(L"ab"), Hex("ff ff ff ff ff ff ff 02 00 00 00 00 00 00 00 |ab|"));
}

TEST_F(ArchivePrimitives, ALongerFormOfAShortLengthIsRead) {
    ExpectRead(std::wstring(2, L'\1'), Hex("ff fe ff ff 02 00") + Ones(2));
    ExpectRead(std::wstring(2, L'\1'), Hex("ff fe ff ff ff ff 02 00 00 00") + Ones(2));
    // The mark of a wide string in the place of its length is no length either.
    ExpectRead(std::wstring(2, L'\1'), Hex("ff fe ff ff fe ff 02 00 00 00") + Ones(2));
}

TEST_F(ArchivePrimitives, CharactersBeyondSixteenBitsAreSurrogatePairsThatCountTwice) {
    Check(std::wstring(L"\U0001F600"), Hex("ff fe ff 02 3d d8 00 de"));
    Check(std::wstring(L"a\U0010FFFFb"), Hex("ff fe ff 04 61 00 ff db ff df 62 00"));
    Check(std::wstring(127, L'\U00010000'), [] {
        std::string bytes = Hex("ff fe ff fe");
        for (int i = 0; i < 127; ++i)
            bytes += Hex("00 d8 00 dc");
        return bytes;
    }());
    // 128 characters, but 256 units.
    EXPECT_EQ(Digits(Stored([](CArchiveExt& archive) { archive << std::wstring(128, L'\U00010000'); }).substr(0, 6)),
              "ff fe ff ff 00 01 ");
}

TEST_F(ArchivePrimitives, ALoneSurrogateGoesThroughUnchanged) {
    Check(std::wstring(1, static_cast<wchar_t>(0xD800)), Hex("ff fe ff 01 00 d8"));
    Check(std::wstring(1, static_cast<wchar_t>(0xDC01)) + L"x", Hex("ff fe ff 02 01 dc 78 00"));
}

TEST_F(ArchivePrimitives, APairAcrossThePiecesOfALongStringStaysAPair) {
    std::wstring text(131071, L'\1');
    text += L"\U0001F600 and more";
    const std::string bytes = Stored([&](CArchiveExt& archive) { archive << text; });
    ExpectRead(text, bytes);
}

TEST_F(ArchivePrimitives, ANarrowStringIsReadInTheSystemCodePageAndWrittenBackWide) {
    ExpectRead(std::wstring(), Hex("00"));
    ExpectRead(std::wstring(L"Tür"), Hex("04 54 c3 bc 72"));
    ExpectRead(std::wstring(L"Tür"), Hex("03 54 fc 72")); // no valid UTF-8
    const std::string long254(254, 'x'), long255(255, 'x'), long65534(65534, 'x');
    ExpectRead(std::wstring(254, L'x'), Hex("fe") + long254);
    ExpectRead(std::wstring(255, L'x'), Hex("ff ff 00") + long255);
    ExpectRead(std::wstring(65534, L'x'), Hex("ff ff ff fe ff 00 00") + long65534);
    std::wstring text;
    Load(Hex("02 |ab|"), [&](CArchiveExt& archive) { archive >> text; });
    EXPECT_EQ(Digits(Stored([&](CArchiveExt& archive) { archive << text; })), "ff fe ff 02 61 00 62 00 ");
}

TEST_F(ArchivePrimitives, FewerBytesThanPromisedAreAnEarlyEnd) {
    for (const char* bytes : {"", "02 |a|", "ff", "ff ff", "ff fe", "ff fe ff", "ff fe ff 02 61 00 62", "ff fe ff ff",
                              "ff fe ff ff ff ff 01", "ff fe ff ff ff ff ff ff ff ff 01", "ff ff ff 00 00 00 01"})
        EXPECT_EQ(CauseOfText(Hex(bytes)), ArchiveException::endOfFile) << bytes;
    const auto number = [&](auto value, const char* bytes) {
        EXPECT_EQ(Cause([&] { Load(Hex(bytes), [&](CArchiveExt& archive) { archive >> value; }); }),
                  ArchiveException::endOfFile)
            << bytes;
    };
    number(std::int32_t{}, "01 02 03");
    number(std::uint64_t{}, "01 02 03 04 05 06 07");
    number(double{}, "");
}

TEST_F(ArchivePrimitives, AnExceptionNamesTheFile) {
    try {
        Load("", [](CArchiveExt& archive) {
            std::int32_t value = 0;
            archive >> value;
        });
        FAIL() << "nothing was thrown";
    } catch (const ArchiveException& exception) {
        EXPECT_EQ(exception.path, Path());
        EXPECT_NE(exception.ErrorText().find(Path()), std::wstring::npos);
    }
}

TEST_F(ArchivePrimitives, LengthsThatNothingBacksAreRefusedBeforeAnythingIsHeld) {
    for (const char* length : {"ff fe ff ff ff ff fe ff ff ff", "ff fe ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff",
                               "ff fe ff ff ff ff ff ff ff ff 00 00 00 00 00 00 00 80", "ff ff ff fe ff ff ff",
                               "ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff"}) {
        EXPECT_EQ(CauseOfText(Hex(length) + "few"), ArchiveException::endOfFile) << length;
        const std::string plain = Hex(length) + "few";
        // The container promises four gigabytes, of which its bytes can't hold a thousandth.
        EXPECT_EQ(CauseOfText(Container(catalogue_tests::Packed(plain), 0xFFFFFFFF), true), ArchiveException::endOfFile)
            << length;
    }
}

TEST_F(ArchivePrimitives, AnArchiveThatStoresIsNotReadAndOneThatLoadsNotWritten) {
    std::int32_t value = 1;
    EXPECT_EQ(Cause([&] { Stored([&](CArchiveExt& archive) { archive >> value; }); }), ArchiveException::writeOnly);
    EXPECT_EQ(Cause([&] { Load("1234", [&](CArchiveExt& archive) { archive << value; }); }),
              ArchiveException::readOnly);
    EXPECT_EQ(Cause([&] { Load("1234", [&](CArchiveExt& archive) { archive << std::wstring(L"x"); }); }),
              ArchiveException::readOnly);
    EXPECT_EQ(value, 1);
}

TEST_F(ArchivePrimitives, BytesAreTakenInOnePieceOrNotAtAll) {
    Load(std::string(600000, 'x'), [](CArchiveExt& archive) {
        EXPECT_EQ(archive.AtMost(), 600000u);
        EXPECT_EQ(archive.Take(CArchiveExt::kMostTaken).size(), CArchiveExt::kMostTaken);
        EXPECT_EQ(archive.Take(100).size(), 100u);
        EXPECT_EQ(archive.Take(CArchiveExt::kMostTaken).size(), CArchiveExt::kMostTaken);
        EXPECT_TRUE(archive.Take(CArchiveExt::kMostTaken).empty());
        EXPECT_EQ(archive.AtMost(), 600000u - 100 - 2 * CArchiveExt::kMostTaken);
        EXPECT_TRUE(archive.Take(CArchiveExt::kMostTaken + 1).empty());
    });
}
