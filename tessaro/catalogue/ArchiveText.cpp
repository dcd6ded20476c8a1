// Strings of an archive: a length in one of four widths, then the characters.
#include "tessaro/catalogue/CArchiveExt.h"

#include "tessaro/platform/Text.h"

#include <algorithm>

namespace {

constexpr std::uint8_t kLonger8 = 0xFF;
constexpr std::uint16_t kWide = 0xFFFE, kLonger16 = 0xFFFF;
constexpr std::uint32_t kLonger32 = 0xFFFFFFFF;
constexpr std::size_t kUnit = sizeof(char16_t);

/// Text of the units at that place; false, with nothing decided, where surrogates are among them.
bool DecodePlain(const std::uint8_t* from, std::size_t units, std::wstring& text) {
    text.resize(units);
    wchar_t* to = text.data();
    bool surrogates = false;
    for (std::size_t i = 0; i < units; ++i, from += kUnit) {
        char16_t unit;
        std::memcpy(&unit, from, kUnit);
        surrogates |= (unit & 0xF800) == 0xD800;
        to[i] = static_cast<wchar_t>(unit);
    }
    return !surrogates;
}

std::u16string Units(std::span<const std::uint8_t> bytes) {
    std::u16string units(bytes.size() / kUnit, u'\0');
    if (!units.empty())
        std::memcpy(units.data(), bytes.data(), units.size() * kUnit);
    return units;
}

bool IsPlain(const std::wstring& text) {
    std::uint32_t all = 0;
    for (const wchar_t c : text)
        all |= static_cast<std::uint32_t>(c);
    return all < 0x10000;
}

} // namespace

CArchiveExt& CArchiveExt::operator<<(const std::wstring& text) {
    if (IsPlain(text)) {
        WriteLength(text.size());
        std::string& bytes = PlainBytes();
        const std::size_t at = bytes.size();
        bytes.resize(at + text.size() * kUnit);
        char* to = bytes.data() + at;
        for (const wchar_t c : text) {
            const auto unit = static_cast<char16_t>(c);
            std::memcpy(to, &unit, kUnit);
            to += kUnit;
        }
        return *this;
    }
    const std::u16string units = platform::ToUtf16(text);
    WriteLength(units.size());
    PlainBytes().append(reinterpret_cast<const char*>(units.data()), units.size() * kUnit);
    return *this;
}

void CArchiveExt::WriteLength(std::uint64_t units) {
    Put(kLonger8);
    Put(kWide);
    if (units < kLonger8) {
        Put(static_cast<std::uint8_t>(units));
        return;
    }
    Put(kLonger8);
    if (units < kWide) {
        Put(static_cast<std::uint16_t>(units));
        return;
    }
    Put(kLonger16);
    if (units < kLonger32) {
        Put(static_cast<std::uint32_t>(units));
        return;
    }
    Put(kLonger32);
    Put(units);
}

CArchiveExt::TextLength CArchiveExt::ReadLength() {
    auto byte = Next<std::uint8_t>();
    if (byte != kLonger8)
        return {false, byte};
    auto word = Next<std::uint16_t>();
    const bool wide = word == kWide;
    if (wide) {
        byte = Next<std::uint8_t>();
        if (byte != kLonger8)
            return {wide, byte};
        word = Next<std::uint16_t>();
    }
    if (word < kWide)
        return {wide, word};
    const auto longer = Next<std::uint32_t>();
    if (longer != kLonger32)
        return {wide, longer};
    return {wide, Next<std::uint64_t>()};
}

CArchiveExt& CArchiveExt::operator>>(std::wstring& text) {
    const TextLength length = ReadLength();
    if (!length.wide) {
        text = ReadNarrow(length.length);
        return *this;
    }
    if (length.length > kMostTaken / kUnit) {
        text = ReadWide(length.length);
        return *this;
    }
    const auto units = static_cast<std::size_t>(length.length);
    const std::uint8_t* const bytes = Need(units * kUnit);
    if (!DecodePlain(bytes, units, text))
        text = platform::FromUtf16(Units({bytes, units * kUnit}));
    return *this;
}

std::wstring CArchiveExt::ReadWide(std::uint64_t units) {
    if (units > AtMost() / kUnit)
        EndsEarly();
    std::u16string text;
    while (units > 0) {
        const auto piece = static_cast<std::size_t>(std::min<std::uint64_t>(units, kMostTaken / kUnit));
        text += Units({Need(piece * kUnit), piece * kUnit});
        units -= piece;
    }
    return platform::FromUtf16(text);
}

std::wstring CArchiveExt::ReadNarrow(std::uint64_t bytes) {
    if (bytes > AtMost())
        EndsEarly();
    std::string text;
    while (bytes > 0) {
        const auto piece = static_cast<std::size_t>(std::min<std::uint64_t>(bytes, kMostTaken));
        text.append(reinterpret_cast<const char*>(Need(piece)), piece);
        bytes -= piece;
    }
    return platform::FromNarrow(text);
}
