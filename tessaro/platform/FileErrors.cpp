#include "tessaro/platform/File.h"

#include "tessaro/platform/Text.h"

namespace platform {
namespace {

const wchar_t* Words(FileException::Cause cause) {
    switch (cause) {
    case FileException::none:
        return L"No error was met with \"%s\".";
    case FileException::fileNotFound:
        return L"The file \"%s\" was not found.";
    case FileException::badPath:
        return L"The path \"%s\" does not lead to a file.";
    case FileException::tooManyOpenFiles:
        return L"\"%s\" could not be opened: too many files are open.";
    case FileException::accessDenied:
        return L"You have no right to use \"%s\" this way.";
    case FileException::invalidFile:
        return L"\"%s\" is not open.";
    case FileException::removeCurrentDir:
        return L"The folder \"%s\" is in use and could not be removed.";
    case FileException::directoryFull:
        return L"\"%s\" could not be made: its folder is full.";
    case FileException::badSeek:
        return L"A place in \"%s\" could not be reached.";
    case FileException::hardIO:
        return L"The device failed while \"%s\" was used.";
    case FileException::sharingViolation:
        return L"\"%s\" is in use by another program.";
    case FileException::lockViolation:
        return L"A part of \"%s\" is locked by another program.";
    case FileException::diskFull:
        return L"There was no room left for \"%s\".";
    case FileException::endOfFile:
        return L"\"%s\" ended too early.";
    case FileException::genericException:
        break;
    }
    return L"An error was met while \"%s\" was used.";
}

const wchar_t* Words(ArchiveException::Cause cause) {
    switch (cause) {
    case ArchiveException::none:
        return L"No error was met with \"%s\".";
    case ArchiveException::readOnly:
        return L"\"%s\" can only be read.";
    case ArchiveException::endOfFile:
        return L"\"%s\" ended too early.";
    case ArchiveException::writeOnly:
        return L"\"%s\" can only be written.";
    case ArchiveException::badIndex:
    case ArchiveException::badClass:
        return L"\"%s\" holds something else than was looked for.";
    case ArchiveException::badSchema:
        return L"\"%s\" was written by another version.";
    case ArchiveException::genericException:
        break;
    }
    return L"An error was met while \"%s\" was used.";
}

} // namespace

std::wstring FileException::ErrorText() const {
    return Format(Words(cause), path.c_str());
}

std::wstring ArchiveException::ErrorText() const {
    return Format(Words(cause), path.c_str());
}

} // namespace platform
