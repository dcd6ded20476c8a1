#include "tessaro/catalogue/Block.h"

const std::array<std::wstring, kFileTypeCount> FileTypeNames = {
    L"Unknwn", L"0.0", L"1.2",    L"1.4", L"1.5", L"2.1",  L"2.2",  L"2.21", L"2.22", L"2.5",  L"2.6",
    L"R9",     L"R10", L"R11/12", L"R13", L"R14", L"2000", L"2004", L"2007", L"2010", L"2013", L"2018"};

const std::wstring& FileTypeName(std::int32_t fileType) {
    const bool known = fileType >= 0 && fileType < kFileTypeCount;
    return FileTypeNames[known ? static_cast<std::size_t>(fileType) : 0];
}
