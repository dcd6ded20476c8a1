// tessaro-samples DIR [FOLDER...]: makes the sample library (or only those folders of it) and the sample drawing below
// DIR. Files that are there are kept.

#include "samples/Library.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <set>
#include <string>

namespace {

namespace fs = std::filesystem;

bool make(const fs::path& folder, const samples::Recipe& recipe, AcDb::AcDbDwgVersion release) {
    const fs::path file = folder / (recipe.name + L".dwg");
    if (fs::exists(file))
        return true;
    samples::Sketch sketch(recipe.comments);
    recipe.draw(sketch);
    if (sketch.save(file.wstring(), release))
        return true;
    std::fprintf(stderr, "tessaro-samples: can't write %s\n", file.c_str());
    return false;
}

int run(const fs::path& root, std::set<std::string> wanted) {
    const bool all = wanted.empty();
    bool done = true;
    std::size_t drawings = 0, folders = 0;
    for (const samples::Folder& folder : samples::library()) {
        if (wanted.erase(folder.name) == 0 && !all)
            continue;
        fs::create_directories(root / folder.name);
        for (const samples::Recipe& recipe : folder.recipes)
            done = make(root / folder.name, recipe, folder.release) && done;
        std::printf("%s: %zu drawings\n", folder.name, folder.recipes.size());
        std::fflush(stdout);
        drawings += folder.recipes.size();
        ++folders;
    }
    for (const std::string& unknown : wanted) {
        std::fprintf(stderr, "tessaro-samples: there is no folder %s\n", unknown.c_str());
        done = false;
    }
    done = make(root, samples::flatPlan, AcDb::kDHL_1015) && done;
    std::printf("%zu drawings in %zu folders, and the plan %s\n", drawings, folders, (root / "Flat.dwg").c_str());
    return done ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) try {
    if (argc < 2 || argv[1][0] == '-') {
        std::fprintf(stderr, "usage: tessaro-samples DIR [FOLDER...]\n");
        return 2;
    }
    return run(argv[1], {argv + 2, argv + argc});
} catch (const std::exception& failure) {
    std::fprintf(stderr, "tessaro-samples: %s\n", failure.what());
    return 1;
}
