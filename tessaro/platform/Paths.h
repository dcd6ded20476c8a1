#pragma once

#include "tessaro/platform/Time.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Paths and files as the module sees them. Both slashes are accepted on input, kSeparator is written. A path is looked
/// up exactly first, then ignoring case on every component. All functions may be called from any thread.
namespace platform {

constexpr wchar_t kSeparator = L'/';
bool IsSeparator(wchar_t c);
/// `folder` and `name` with one separator between them.
std::wstring Join(std::wstring_view folder, std::wstring_view name);

struct PathParts {
    std::wstring drive;  ///< always empty here
    std::wstring folder; ///< with its trailing separator
    std::wstring name;
    std::wstring extension; ///< with its point
    std::wstring driveAndFolder() const { return drive + folder; }
    std::wstring nameAndExtension() const { return name + extension; }
};
PathParts SplitPath(std::wstring_view path);
/// The name without folder and extension: a part of the given text.
std::wstring_view TitleOf(std::wstring_view path);

struct FileStatus {
    Time created = 0; ///< birth time, or the last-write time where the file system has none
    Time modified = 0;
    std::uint64_t size = 0;
    bool readOnly = false; ///< no write bit for anyone
    bool folder = false;
};

/// The path as it is spelled on disk, or nothing where no such file exists.
std::optional<std::wstring> FindPath(std::wstring_view path);
/// Nothing where the file does not exist.
std::optional<FileStatus> GetFileStatus(std::wstring_view path);
/// True for a folder too.
bool FileExists(std::wstring_view path);
/// The same without a look at other spellings: one call to the system, no listing of the folder.
bool FileExistsAsSpelled(std::wstring_view path);
bool FolderExists(std::wstring_view path);

struct FoundFile {
    std::wstring name; ///< with extension, as on disk
    FileStatus status;
    bool statusKnown = true; ///< false where the system names the file and refuses to tell of it
};
/// Files (no folders) with that extension ("dwg", in any case) in name order ignoring case; empty where the folder
/// can't be read.
std::vector<FoundFile> ListFiles(std::wstring_view folder, std::wstring_view extension);

/// These refuse to delete or replace a file that is read-only. False where nothing was done.
bool RemoveFile(std::wstring_view path);
/// Never replaces another file (another spelling of the same file is a new name for it); works across file systems by a
/// copy and a delete. Modification time and rights stay.
bool MoveFile(std::wstring_view from, std::wstring_view to);
/// Keeps a file that is about to be replaced under another name too: by a hard link or, where links are refused, by a
/// move, or by a copy of what a symbolic link leads to. Never replaces.
bool BackupFile(std::wstring_view from, std::wstring_view to);
/// Gives the file the other's name in one step. False, with nothing done, where either is missing, lies on another file
/// system, or is read-only.
bool ReplaceFile(std::wstring_view from, std::wstring_view replaced);
/// Keeps modification time and rights; replaces. A file is not copied onto itself.
bool CopyFile(std::wstring_view from, std::wstring_view to);
/// Makes the folders on the way too. False where the folder is there already.
bool CreateFolder(std::wstring_view path);

std::wstring CurrentFolder();
/// XDG_DOCUMENTS_DIR of the environment or of the user's user-dirs.dirs, else "Documents" in the home folder.
std::wstring DocumentsFolder();
/// XDG_DATA_HOME, else ".local/share" in the home folder.
std::wstring ApplicationDataFolder();
std::wstring ComputerName();
std::wstring UserName();
/// Full path of the process's executable.
std::wstring ExecutablePath();

} // namespace platform
