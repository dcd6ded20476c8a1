#include "tests/catalogue/ArchiveFixture.h"

#include <zlib.h>

#include <stdexcept>

namespace catalogue_tests {
namespace {

int Value(char digit) {
    const std::string_view digits = "0123456789abcdef";
    const std::size_t value = digits.find(static_cast<char>(std::tolower(static_cast<unsigned char>(digit))));
    if (value == std::string_view::npos)
        throw std::invalid_argument(std::string("no hexadecimal digit: ") + digit);
    return static_cast<int>(value);
}

std::uint32_t Adler(const std::string& bytes) {
    return static_cast<std::uint32_t>(
        adler32(adler32(0, nullptr, 0), reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size())));
}

std::string Number(std::uint32_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

} // namespace

std::string Hex(std::string_view digits) {
    std::string bytes;
    char text = 0;
    int high = -1;
    for (const char c : digits) {
        if ((c == '|' || c == '\'') && (text == 0 || text == c)) {
            text = text == 0 ? c : '\0';
        } else if (text != 0) {
            bytes += c;
            if (text == '\'')
                bytes += '\0';
        } else if (c != ' ' && c != '\n') {
            if (high >= 0)
                bytes += static_cast<char>(high * 16 + Value(c));
            high = high >= 0 ? -1 : Value(c);
        }
    }
    if (high >= 0 || text != 0)
        throw std::invalid_argument("half a byte, or a text without an end");
    return bytes;
}

std::string Digits(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto value = static_cast<unsigned char>(c);
        text += "0123456789abcdef"[value / 16];
        text += "0123456789abcdef"[value % 16];
        text += ' ';
    }
    return text;
}

std::string Packed(const std::string& plain) {
    std::string packed(compressBound(plain.size()), '\0');
    uLongf count = packed.size();
    if (compress(reinterpret_cast<Bytef*>(packed.data()), &count, reinterpret_cast<const Bytef*>(plain.data()),
                 plain.size()) != Z_OK)
        throw std::runtime_error("zlib refuses");
    packed.resize(count);
    return packed;
}

std::string Container(const std::string& packed, std::uint32_t plainLength, int kind, std::uint32_t checksum) {
    return std::string("a\0k\0z\0", 6) + Number(static_cast<std::uint32_t>(kind), 2) + Number(plainLength, 4) +
           Number(checksum, 4) + packed;
}

std::string Container(const std::string& packed, std::uint32_t plainLength, int kind) {
    return Container(packed, plainLength, kind, Adler(packed));
}

std::string Container(const std::string& plain) {
    return Container(Packed(plain), static_cast<std::uint32_t>(plain.size()));
}

std::string Unpacked(const std::string& container) {
    EXPECT_EQ(Digits(container.substr(0, 8)), "61 00 6b 00 7a 00 01 00 ");
    if (container.size() < 16)
        return {};
    uLongf length = 0;
    for (std::size_t i = 12; i-- > 8;)
        length = length << 8 | static_cast<unsigned char>(container[i]);
    std::string plain(length, '\0');
    EXPECT_EQ(uncompress(reinterpret_cast<Bytef*>(plain.data()), &length,
                         reinterpret_cast<const Bytef*>(container.data() + 16), container.size() - 16),
              Z_OK);
    EXPECT_EQ(container.substr(12, 4), Number(Adler(container.substr(16)), 4));
    return plain;
}

std::string ArchiveTest::Stored(const Work& work, bool compress, const std::wstring& password) const {
    platform::SafeFile file(Path());
    CArchiveExt archive(&file, password, compress);
    work(archive);
    archive.Close();
    file.Commit();
    return Disk();
}

void ArchiveTest::Load(const std::string& bytes, const Work& work, bool compress, const std::wstring& password) const {
    folder.write("stream", bytes);
    platform::File file(Path(), platform::File::modeRead);
    CArchiveExt archive(&file, password, compress);
    work(archive);
    archive.Close();
}

int ArchiveTest::Cause(const std::function<void()>& work) {
    try {
        work();
    } catch (const platform::ArchiveException& exception) {
        return exception.cause;
    }
    return -1;
}

} // namespace catalogue_tests
