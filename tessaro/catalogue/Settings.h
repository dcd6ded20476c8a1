#pragma once

#include <string>
#include <unordered_set>
#include <vector>

/// Fills the catalogue, or the controls of the open dialog where there is a catalogue. Main thread.
void LoadIni();
/// Writes the settings; `final` also frees the schemes and writes the main cache. Main thread, or the finisher, which
/// takes a copy of what it writes on the main thread.
void SaveIni(bool final);

/// Brings `directories` to the listed paths: what no path names, in any case, goes with its cache file; what no
/// Directory names, with case, is added at the end with its section of the ini file. Descriptions are read for all.
/// Main thread.
void UpdateDirectories(const std::vector<std::wstring>& paths);

/// The folder for the settings of a user without any, created where missing.
std::wstring UserFolder();
/// The number of the cache file of a new Directory: the first that no Directory has, ahead of one without a cache file.
int NextCacheNumber();
/// The same for many Directories that are added at the end one after the other, with one look at those that are there.
class CacheNumbers {
public:
    CacheNumbers();
    int Next();

private:
    std::unordered_set<int> taken;
    int next = 1;
    bool hidden = false; ///< what is added stands behind a Directory without a cache file, where nothing looks
};
/// Full path of a Directory's cache file beside the main cache.
std::wstring CacheFileName(int number);
