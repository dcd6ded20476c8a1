#include "tessaro/catalogue/CArchiveExt.h"

#include "tessaro/catalogue/ArchiveSource.h"
#include "tessaro/catalogue/ContainerHead.h"
#include "tessaro/host/Log.h"
#include "tessaro/platform/File.h"
#include "tessaro/platform/SafeFile.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"

#include <zlib.h>

#include <algorithm>
#include <exception>
#include <limits>
#include <new>
#include <utility>
#include <vector>

namespace {

uLong Adler32(const void* bytes, std::size_t count) {
    return adler32_z(adler32_z(0, nullptr, 0), static_cast<const Bytef*>(bytes), count);
}

std::vector<std::uint8_t> ReadRest(platform::File& file) {
    constexpr std::size_t piece = std::size_t{1} << 16;
    std::vector<std::uint8_t> bytes;
    for (std::size_t read = piece; read == piece;) {
        const std::size_t before = bytes.size();
        bytes.resize(before + piece);
        read = file.Read(bytes.data() + before, piece);
        bytes.resize(before + read);
    }
    return bytes;
}

/// Where no memory is left for its line there is no line: a destructor throws nothing.
void LogFailedClose(const char* reason) noexcept {
    try {
        Log(L"CArchiveExt: exception %s\n", platform::FromNarrow(reason).c_str());
    } catch (const std::bad_alloc&) {
        return;
    }
}

} // namespace

CArchiveExt::CArchiveExt(platform::File* file, const std::wstring& word, bool compress)
    : storing(false), password(word), compressed(compress || !word.empty()), path(file->Path()), realFile(file) {
    if (compressed)
        OpenContainer();
    else
        source = SourceOfFile(*realFile);
}

CArchiveExt::CArchiveExt(platform::SafeFile* file, const std::wstring& word, bool compress, OnDelete whenDeleted)
    : storing(true), onDelete(whenDeleted), password(word), compressed(compress || !word.empty()), path(file->Path()),
      newFile(file) {}

CArchiveExt::~CArchiveExt() {
    try {
        if (HasFile() && onDelete == OnDelete::close)
            CArchiveExt::Close();
    } catch (const std::exception& exception) {
        LogFailedClose(exception.what());
    }
    CArchiveExt::Abort();
}

void CArchiveExt::OpenContainer() {
    realFile->Seek(0);
    std::array<std::uint8_t, ContainerHead::kSize> bytes{};
    const std::size_t count = realFile->Read(bytes.data(), bytes.size());
    const auto head = ContainerHead::Parse(std::span(bytes).first(count));
    if (!head) {
        realFile->Seek(0);
        source = SourceOfFile(*realFile);
        return;
    }
    // All other kinds are read as the first; its checksum is not looked at.
    auto packed =
        head->kind == ContainerHead::kPackedWithPassword ? OpenProtected(head->checksum) : SourceOfFile(*realFile);
    source = InflatedSource(std::move(packed), head->plainLength);
}

std::unique_ptr<ArchiveSource> CArchiveExt::OpenProtected(std::uint32_t checksum) {
    std::vector<std::uint8_t> packed = ReadRest(*realFile);
    const std::size_t count = packed.size();
    packed.resize(count * sizeof(char16_t));
    CArchiveExt::XorBuffer(packed.data(), count, password);
    packed.resize(count);
    if (Adler32(packed.data(), count) != checksum) {
        platform::MessageBox(L"Password incorrect!!!");
        CArchiveExt::Abort();
        throw platform::UserException();
    }
    return SourceOfBytes(std::move(packed));
}

void CArchiveExt::Close() {
    if (!HasFile())
        return;
    try {
        if (storing && compressed)
            WriteContainer();
        else if (storing)
            newFile->Write(memoryFile.data(), memoryFile.size());
    } catch (...) {
        CArchiveExt::Abort();
        throw;
    }
    CArchiveExt::Abort();
}

void CArchiveExt::WriteContainer() {
    if (memoryFile.size() > std::numeric_limits<std::uint32_t>::max())
        throw platform::ArchiveException(platform::ArchiveException::genericException, path);
    const auto plainLength = static_cast<std::uint32_t>(memoryFile.size());
    const std::uint64_t bound = static_cast<std::uint64_t>(static_cast<double>(plainLength) * 1.1) + 12;
    // As many units: the password's step counts in them.
    const auto packed = std::make_unique_for_overwrite<char16_t[]>(bound);
    auto* const bytes = reinterpret_cast<Bytef*>(packed.get());
    uLongf count = bound;
    // Whatever else it says, what it wrote is the stream.
    if (compress(bytes, &count, reinterpret_cast<const Bytef*>(memoryFile.data()), plainLength) == Z_MEM_ERROR)
        throw std::bad_alloc();
    ContainerHead head;
    head.kind = password.empty() ? ContainerHead::kPacked : ContainerHead::kPackedWithPassword;
    head.plainLength = plainLength;
    head.checksum = static_cast<std::uint32_t>(Adler32(bytes, count));
    XorBuffer(packed.get(), count, password);
    const auto headBytes = head.Bytes();
    newFile->Write(headBytes.data(), headBytes.size());
    newFile->Write(bytes, count);
}

void CArchiveExt::Abort() {
    realFile = nullptr;
    newFile = nullptr;
    source.reset();
    window.reset();
    next = end = nullptr;
    memoryFile = std::string();
}

bool CArchiveExt::XorBuffer(void* buffer, std::size_t length, const std::wstring& word) {
    if (word.empty())
        return false;
    char16_t key = 0;
    for (const char16_t unit : platform::ToUtf16(word))
        key = static_cast<char16_t>(key ^ unit);
    auto* at = static_cast<std::uint8_t*>(buffer);
    for (std::size_t i = 0; i < length; ++i, at += sizeof key) {
        at[0] = static_cast<std::uint8_t>(at[0] ^ (key & 0xFF));
        at[1] = static_cast<std::uint8_t>(at[1] ^ (key >> 8));
    }
    return true;
}

bool CArchiveExt::Fill(std::size_t count) {
    if (storing)
        throw platform::ArchiveException(platform::ArchiveException::writeOnly, path);
    if (source == nullptr || count > kMostTaken)
        return false;
    const auto left = static_cast<std::size_t>(end - next);
    if (window == nullptr)
        window = std::make_unique_for_overwrite<std::uint8_t[]>(kMostTaken);
    else
        std::memmove(window.get(), next, left);
    const std::size_t read = source->Read(window.get() + left, kMostTaken - left);
    filled += read;
    next = window.get();
    end = next + left + read;
    return left + read >= count;
}

void CArchiveExt::EndsEarly() const {
    throw platform::ArchiveException(platform::ArchiveException::endOfFile, path);
}

std::span<const std::uint8_t> CArchiveExt::Take(std::size_t count) {
    if (static_cast<std::size_t>(end - next) < count && !Fill(count))
        return {};
    next += count;
    return {next - count, count};
}

std::uint64_t CArchiveExt::AtMost() const {
    return static_cast<std::uint64_t>(end - next) + (source != nullptr ? source->AtMost() : 0);
}

std::string& CArchiveExt::PlainBytes() {
    if (!storing)
        throw platform::ArchiveException(platform::ArchiveException::readOnly, path);
    return memoryFile;
}
