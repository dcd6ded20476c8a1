#pragma once

#include <string>

/// Fills the catalogue, or the controls of the open dialog where there is a catalogue. Main thread.
void LoadIni();
/// Writes the settings; `final` also frees the schemes and writes the main cache. Main thread, or the finisher.
void SaveIni(bool final);
/// The folder for the settings of a user without any, created where missing.
std::wstring UserFolder();
/// The number of the cache file of a new Directory.
int NextCacheNumber();
/// Full path of a Directory's cache file beside the main cache.
std::wstring CacheFileName(int number);
