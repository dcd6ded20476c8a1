#pragma once

#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <vector>

/// Folders of small drawings on disk that change while they are read: some with a picture, some of which the helper can
/// tell description and dates, some damaged.
class Library {
public:
    /// With `placeable` every other drawing is one that the editor can read and insert.
    Library(int folders, unsigned seed, bool placeable);

    const std::vector<std::wstring>& Folders() const { return paths; }
    /// A folder that no list had until now.
    std::wstring AddFolder();
    /// A new drawing, another length, another name or, where that is asked for, a deleted drawing; a folder keeps one
    /// at the least.
    void ChangeSomething(bool withDeletes);
    std::wstring Path(const std::string& name) const;

private:
    std::string RandomDrawing();
    std::string DrawingWithPicture();
    bool IsReal(const std::filesystem::path& file) const;
    void DrawSome();
    void Fill(const std::filesystem::path& folder);

    std::mt19937 random;
    const tests::TemporaryFolder root;
    std::vector<std::string> real;  ///< whole drawings, if small ones
    std::vector<std::string> drawn; ///< such as can be placed
    std::vector<std::wstring> paths;
    int lastNumber = 0;
};
