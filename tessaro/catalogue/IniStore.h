#pragma once

#include "tessaro/platform/Time.h"

#include <string>
#include <vector>

/// The ini store: a file is read whole into memory, look-ups and changes work on that image, the image is written back
/// in one piece. Sections, keys and paths are compared lower-cased; values keep their case. Nothing here shows or
/// throws anything. One thread at a time.

/// False where the file can't be read: an empty image then stands for it.
bool ReadIniFile(const std::wstring& file);
int GetIniInt(const std::wstring& section, const std::wstring& key, int defaultValue, const std::wstring& file);
/// Fills `out`; gives its length. A null default is the empty text.
int GetIniString(const std::wstring& section, const std::wstring& key, const wchar_t* defaultValue, std::wstring& out,
                 const std::wstring& file);
/// Copies the smaller of length plus 1 and `size` characters; gives that count. No terminator when the size is reached.
int GetIniStringBuffer(const std::wstring& section, const std::wstring& key, const wchar_t* defaultValue,
                       wchar_t* buffer, int size, const std::wstring& file);
/// The keys of a section in their order.
std::vector<std::wstring> GetIniKeys(const std::wstring& section, const std::wstring& file);
/// Creates image and section where they are missing; gives 1.
int SetIniString(const std::wstring& section, const std::wstring& key, const std::wstring& value,
                 const std::wstring& file);
int SetIniInt(const std::wstring& section, const std::wstring& key, int value, const std::wstring& file);
/// False where there was no image.
bool ForgetIniFile(const std::wstring& file);
/// False where there is no image, or the file can't be opened in 50 attempts 100 ms apart, or can't be written. With
/// `backup` the old file becomes .bk1 beside it and earlier backups move up to .bk9. A process that dies meanwhile
/// leaves the whole old file or the whole new one, except that where the folder takes no new file or no second name for
/// the old one, the file may be missing or broken off while .bk1 is whole.
bool WriteIniFile(const std::wstring& file, bool backup, const platform::Sleeper& sleep = platform::SleepFor);
