#pragma once

#include "tessaro/platform/File.h"

/// What is told of a cache file that can't be read. Any thread.

constexpr const wchar_t* kInvalidByArchive = L"Tessaro: Invalid cache file, CArchiveException!\n";
constexpr const wchar_t* kInvalidByFile = L"Tessaro: Invalid cache file, CFileException!\n";

void PrintOnCommandLine(const wchar_t* text);
/// Message box, log and command line, of the main cache. One of another version has a box in the place of the line;
/// nothing in this version's stream tells of one.
void TellInvalidMainCache(const platform::FileException& exception);
void TellInvalidMainCache(const platform::ArchiveException& exception);
