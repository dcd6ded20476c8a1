#pragma once

#include "editor/database/database_state.h"
#include "editor/sdk/db.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tests {

/// What a drawing's file holds, record by record and bit by bit, but for what each save writes anew: times, and the
/// handle that comes next.
class SavedDrawing {
public:
    /// Saves the drawing under that name and reads the file.
    static SavedDrawing save(AcDbDatabase& drawing, const std::filesystem::path& file);
    static SavedDrawing read(const std::filesystem::path& file);

    /// A line for each record and for the variables that this one and the other have not in common.
    std::vector<std::string> differences(const SavedDrawing& other) const;

private:
    std::map<dwg::Handle, std::vector<std::uint8_t>> records;
    std::vector<dwg::ObjectClass> classes;
    dwg::HeaderVariables header;
};

} // namespace tests
