// Reads every drawing that it is given, saves it in every release that is written, reads it again and tells where the
// two differ. With --reader it also compares what an independent reader tells of originals and copies of release 2000.

#include "editor/dwg/drawing_file.h"
#include "tools/matrix_cases.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> drawingsIn(const fs::path& place) {
    if (!fs::is_directory(place))
        return {place};
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(place)) {
        if (entry.path().extension() != ".dwg")
            continue;
        const auto source = dwg::openSource(entry.path());
        const auto magic = source ? dwg::readMagic(**source) : dwg::Result<std::string>(source.error());
        if (magic && dwg::releaseOf(*magic))
            files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

/// What the reader prints, without the lines that name the file.
std::string report(const fs::path& file) {
    FILE* const pipe = ::popen(("ogrinfo -ro -al '" + file.string() + "' 2>&1").c_str(), "r");
    std::string text;
    char line[65536];
    while (pipe != nullptr && std::fgets(line, sizeof line, pipe) != nullptr)
        if (std::strstr(line, file.filename().c_str()) == nullptr)
            text += line;
    if (pipe != nullptr)
        ::pclose(pipe);
    return text;
}

struct Totals {
    std::size_t saves = 0, equal = 0, compared = 0, complete = 0;
    std::map<std::string, std::size_t> leftOut;

    void add(const std::string& name, const matrix::Outcome& outcome) {
        ++saves;
        equal += outcome.differences.empty() ? 1 : 0;
        complete += outcome.leftOut.empty() ? 1 : 0;
        compared += outcome.compared;
        for (const auto& [type, count] : outcome.leftOut)
            leftOut[type] += count;
        for (const std::string& difference : outcome.differences)
            std::printf("%s: %s\n", name.c_str(), difference.c_str());
    }

    void print(const char* name) const {
        std::printf("%s: %zu saved, %zu equal, %zu complete, %zu objects compared\n", name, saves, equal, complete,
                    compared);
        for (const auto& [type, count] : leftOut)
            std::printf("%s: %zu objects of type %s were left out\n", name, count, type.c_str());
    }
};

} // namespace

int main(int count, char** arguments) {
    std::vector<fs::path> files;
    bool asksReader = false;
    for (int i = 1; i < count; ++i) {
        if (std::strcmp(arguments[i], "--reader") == 0) {
            asksReader = true;
            continue;
        }
        const auto found = drawingsIn(arguments[i]);
        files.insert(files.end(), found.begin(), found.end());
    }
    if (files.empty()) {
        std::fprintf(stderr, "use: drawing-matrix [--reader] FOLDER|DRAWING...\n");
        return 2;
    }
    std::string folder = (fs::temp_directory_path() / "drawing-matrix-XXXXXX").string();
    if (::mkdtemp(folder.data()) == nullptr)
        return 2;
    const fs::path copy = fs::path(folder) / "copy.dwg";
    bool allEqual = true;
    for (const matrix::Target& target : matrix::targets) {
        Totals totals;
        std::size_t asked = 0, same = 0;
        for (const fs::path& file : files) {
            totals.add(file.string() + " as " + target.name, matrix::saveAndCompare(file, copy, target));
            if (!asksReader || target.version != AcDb::kDHL_1015 ||
                *dwg::readMagic(**dwg::openSource(file)) != "AC1015")
                continue;
            const std::string told = report(file);
            if (told.find("FAILURE") != std::string::npos)
                continue; // it doesn't read the original either
            ++asked;
            const bool isSame = told == report(copy);
            same += isSame ? 1 : 0;
            if (!isSame)
                std::printf("%s: the reader tells other things of the copy\n", file.c_str());
        }
        totals.print(target.name);
        if (asked != 0)
            std::printf("independent reader: %zu asked, %zu the same\n", asked, same);
        allEqual = allEqual && totals.equal == totals.saves && asked == same;
    }
    Totals rewritten;
    for (const fs::path& file : files)
        rewritten.add(file.string() + " with another description", matrix::rewriteAndCompare(file, copy));
    rewritten.print("own release, another description");
    fs::remove_all(folder);
    return allEqual && rewritten.equal == rewritten.saves ? 0 : 1;
}
