#include "tests/chains/SavedDrawing.h"

#include <gtest/gtest.h>

namespace tests {

SavedDrawing SavedDrawing::save(AcDbDatabase& drawing, const std::filesystem::path& file) {
    EXPECT_EQ(drawing.saveAs(file.wstring().c_str()), eOk);
    return read(file);
}

SavedDrawing SavedDrawing::read(const std::filesystem::path& file) {
    SavedDrawing saved;
    AcDbDatabase database(false);
    EXPECT_EQ(database.readDwgFile(file.wstring().c_str()), eOk) << file;
    const AcDbDatabase::Impl& inside = *database.impl();
    for (const auto& object : inside.drawing.objects())
        saved.records[object->handle] = object->record;
    saved.classes = inside.drawing.classes;
    saved.header = inside.header;
    saved.header.HANDSEED = {};
    saved.header.TDUPDATE = saved.header.TDINDWG = saved.header.TDUSRTIMER = {};
    EXPECT_FALSE(saved.records.empty());
    return saved;
}

std::vector<std::string> SavedDrawing::differences(const SavedDrawing& other) const {
    std::vector<std::string> found;
    const auto compare = [&found](const SavedDrawing& one, const SavedDrawing& two, const char* how) {
        for (const auto& [handle, record] : one.records) {
            const auto same = two.records.find(handle);
            if (same == two.records.end())
                found.push_back(how + std::to_string(handle));
        }
    };
    compare(*this, other, "only here: record ");
    compare(other, *this, "only there: record ");
    for (const auto& [handle, record] : records) {
        const auto same = other.records.find(handle);
        if (same != other.records.end() && same->second != record)
            found.push_back("another record " + std::to_string(handle));
    }
    if (classes != other.classes)
        found.emplace_back("classes");
    if (header != other.header)
        found.emplace_back("variables");
    return found;
}

} // namespace tests
