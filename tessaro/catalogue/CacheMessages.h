#pragma once

/// What is told of a cache file that can't be read.

constexpr const wchar_t* kInvalidByArchive = L"Tessaro: Invalid cache file, CArchiveException!\n";
constexpr const wchar_t* kInvalidByFile = L"Tessaro: Invalid cache file, CFileException!\n";

/// Any thread.
void PrintOnCommandLine(const wchar_t* text);
