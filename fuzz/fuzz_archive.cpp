// An archive's file, packed or plain, read as primitives of all kinds. The first byte of the input chooses compression
// and password. Strings that were read go through a stream of their own unchanged.

#include "fuzz/FuzzFolder.h"
#include "fuzz/MemoryFile.h"
#include "tessaro/catalogue/CArchiveExt.h"
#include "tessaro/platform/File.h"
#include "tessaro/platform/SafeFile.h"

#include <vector>

namespace {

std::filesystem::path Target() {
    return FuzzFolder::Path() / "stream";
}

/// What was read up to the end or the damage.
std::vector<std::wstring> Read(const std::wstring& path, const std::wstring& password, bool compress) {
    std::vector<std::wstring> texts;
    try {
        platform::File file(path, platform::File::modeRead);
        CArchiveExt archive(&file, password, compress);
        for (std::size_t turn = 0; !archive.AtEnd(); ++turn) {
            std::int32_t number = 0;
            std::uint64_t size = 0;
            double real = 0;
            std::wstring text;
            switch (turn % 5) {
            case 0:
                archive >> number;
                break;
            case 1:
                archive >> size;
                break;
            case 2:
                archive >> real;
                break;
            case 3:
                archive.Take(size % CArchiveExt::kMostTaken);
                break;
            default:
                archive >> text;
                texts.push_back(text);
            }
        }
    } catch (const platform::ArchiveException&) {
        return texts;
    } catch (const platform::UserException&) {
        return texts;
    }
    return texts;
}

void CheckRoundTrip(const std::vector<std::wstring>& texts, const std::wstring& password, bool compress) {
    const std::wstring path = Target().wstring();
    {
        platform::SafeFile file(path);
        CArchiveExt archive(&file, password, compress);
        for (const std::wstring& text : texts)
            archive << text;
        archive.Close();
        file.Commit();
    }
    platform::File file(path, platform::File::modeRead);
    CArchiveExt archive(&file, password, compress);
    for (const std::wstring& text : texts) {
        std::wstring again;
        archive >> again;
        if (again != text)
            std::abort();
    }
    if (!archive.AtEnd())
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const bool compress = data[0] % 2 == 0;
    const std::wstring password = data[0] % 4 >= 2 ? L"key" : L"";
    const MemoryFile memory(data + 1, size - 1);
    const std::vector<std::wstring> texts = Read(memory.path(), password, compress);
    // Files are slow, so that only some are written.
    if (!texts.empty() && size % 16 == 0 && size < 1024)
        CheckRoundTrip(texts, password, true);
    return 0;
}
