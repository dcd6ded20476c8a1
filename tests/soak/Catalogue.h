#pragma once

#include <set>
#include <string>
#include <vector>

/// What a catalogue says, as lines that two of them can be compared by: folders in their order, drawings by name. Dates
/// are told only where they come from the drawing itself, as others are those of the first sight of a file.
struct CatalogueDescription {
    std::vector<std::string> lines;
    /// Directories whose pictures were saved while they were not in memory, so that only their file's placeholder is
    /// left; their lines tell of no pictures.
    int withLostPictures = 0;
};
/// Pictures of the named folders are left out as well.
CatalogueDescription DescribeCatalogue(std::set<std::wstring>& foldersWithoutPictures);

/// The first difference of two descriptions in words; empty where there is none.
std::string FirstDifference(const std::vector<std::string>& one, const std::vector<std::string>& other);
