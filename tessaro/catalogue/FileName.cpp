#include "tessaro/catalogue/FileName.h"

#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"

std::wstring CFileName::GetDriveDir() const {
    return platform::SplitPath(path).driveAndFolder();
}

std::wstring CFileName::GetTitle() const {
    return platform::SplitPath(path).name;
}

std::wstring CFileName::GetFileName() const {
    return platform::SplitPath(path).nameAndExtension();
}

std::wstring CFileName::GetExtension() const {
    return platform::SplitPath(path).extension;
}

std::wstring CFileName::GetTypeName() const {
    if (platform::FolderExists(path))
        return L"File folder";
    const std::wstring extension = GetExtension();
    return extension.size() < 2 ? L"File" : platform::ToUpper(extension.substr(1)) + L" File";
}

bool CFileName::Exists() const {
    std::wstring_view shortened = path;
    if (!shortened.empty() && platform::IsSeparator(shortened.back()))
        shortened.remove_suffix(1);
    return platform::FileExists(shortened);
}
