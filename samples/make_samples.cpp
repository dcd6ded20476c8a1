// tessaro-samples DIR: makes the sample library and the sample drawing below DIR. Files that are there are kept.

#include "samples/Sketch.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

namespace {

namespace fs = std::filesystem;

bool make(const fs::path& folder, const samples::Recipe& recipe) {
    const fs::path file = folder / (std::wstring(recipe.name) + L".dwg");
    if (fs::exists(file))
        return true;
    samples::Sketch sketch(recipe.comments);
    recipe.draw(sketch);
    if (sketch.save(file.wstring()))
        return true;
    std::fprintf(stderr, "can't write %s\n", file.c_str());
    return false;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: tessaro-samples DIR\n");
        return 2;
    }
    const fs::path root = argv[1];
    const struct {
        const char* name;
        const std::vector<samples::Recipe>& recipes;
    } folders[] = {{"furniture", samples::furniture()},
                   {"electrical", samples::electrical()},
                   {"mechanical", samples::mechanical()}};
    bool done = true;
    std::size_t count = 0;
    for (const auto& folder : folders) {
        std::error_code error;
        fs::create_directories(root / folder.name, error);
        if (error) {
            std::fprintf(stderr, "can't make %s: %s\n", (root / folder.name).c_str(), error.message().c_str());
            return 1;
        }
        for (const samples::Recipe& recipe : folder.recipes)
            done = make(root / folder.name, recipe) && done;
        count += folder.recipes.size();
    }
    done = make(root, samples::flatPlan) && done;
    std::printf("%zu drawings in 3 folders, and the plan %s\n", count, (root / "Flat.dwg").c_str());
    return done ? 0 : 1;
}
