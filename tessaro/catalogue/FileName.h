#pragma once

#include <string>

/// Splits a path; each operation splits the held path anew.
class CFileName {
public:
    explicit CFileName(const std::wstring& filePath) : path(filePath) {}
    virtual ~CFileName() = default;

    void SetPath(const std::wstring& filePath) { path = filePath; }
    const std::wstring& GetPath() const { return path; }
    /// With its trailing separator.
    std::wstring GetDriveDir() const;
    /// Without extension.
    std::wstring GetTitle() const;
    /// With extension.
    std::wstring GetFileName() const;
    /// With its point.
    std::wstring GetExtension() const;
    /// What a file manager shows for the type: "DWG File", "File", "File folder".
    std::wstring GetTypeName() const;
    /// A separator at the end does not matter.
    bool Exists() const;

private:
    std::wstring path;
};
