// Reads every drawing that it is given, saves it in every release that is written, reads it again and tells where the
// two differ. With --insert it inserts every drawing into a new one and into another one instead. With --reader it also
// compares what an independent reader tells of originals and copies of release 2000. Where PEER_READER names a program
// that reads the drawing that is its only argument, it counts the copies that this program accepts.

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

/// What another reader says of files: by its exit status, and by complaints of errors.
class Peer {
public:
    void ask(const fs::path& file) {
        if (program == nullptr)
            return;
        ++asked;
        FILE* const pipe = ::popen(("'" + std::string(program) + "' '" + file.string() + "' 2>&1").c_str(), "r");
        bool complains = false;
        char line[65536];
        while (pipe != nullptr && std::fgets(line, sizeof line, pipe) != nullptr)
            complains = complains || std::strstr(line, "ERROR") != nullptr;
        const bool isAccepted = pipe != nullptr && ::pclose(pipe) == 0;
        accepted += isAccepted ? 1 : 0;
        silent += isAccepted && !complains ? 1 : 0;
    }
    void print(const char* name) const {
        if (program != nullptr)
            std::printf("PEER_READER, %s: %zu asked, %zu accepted, %zu without a complaint\n", name, asked, accepted,
                        silent);
    }
    bool acceptsAll() const { return accepted == asked; }

private:
    const char* program = std::getenv("PEER_READER");
    std::size_t asked = 0, accepted = 0, silent = 0;
};

std::string magicOf(const fs::path& file) {
    const auto source = dwg::openSource(file);
    const auto magic = source ? dwg::readMagic(**source) : dwg::Result<std::string>(source.error());
    return magic ? *magic : std::string();
}

/// The release that a drawing is saved in; null for one that isn't written.
const matrix::Target* targetOf(const std::string& magic) {
    constexpr const char* magics[] = {"AC1015", "AC1018", "AC1021", "AC1024", "AC1027", "AC1032"};
    const auto* const found = std::ranges::find(magics, magic);
    return found == std::end(magics) ? nullptr : &matrix::targets[static_cast<std::size_t>(found - magics)];
}

/// Every drawing into a new one, and into the next one of another release that is written.
bool insertAll(const std::vector<fs::path>& files, const fs::path& copy) {
    std::vector<std::string> magics;
    std::ranges::transform(files, std::back_inserter(magics), magicOf);
    Totals fresh, other;
    for (std::size_t i = 0; i < files.size(); ++i) {
        fresh.add(files[i].string() + " into a new drawing",
                  matrix::insertAndCompare(files[i], {}, copy, matrix::targets.front()));
        for (std::size_t step = 1; step < files.size(); ++step) {
            const std::size_t next = (i + step) % files.size();
            const matrix::Target* const target = targetOf(magics[next]);
            if (target == nullptr || magics[next] == magics[i])
                continue;
            other.add(files[i].string() + " into " + files[next].string(),
                      matrix::insertAndCompare(files[i], files[next], copy, *target));
            break;
        }
    }
    fresh.print("inserted into a new drawing");
    other.print("inserted into a drawing of another release");
    return fresh.equal == fresh.saves && other.equal == other.saves;
}

} // namespace

int main(int count, char** arguments) {
    std::vector<fs::path> files;
    bool asksReader = false, inserts = false;
    for (int i = 1; i < count; ++i) {
        if (std::strcmp(arguments[i], "--reader") == 0) {
            asksReader = true;
            continue;
        }
        if (std::strcmp(arguments[i], "--insert") == 0) {
            inserts = true;
            continue;
        }
        const auto found = drawingsIn(arguments[i]);
        files.insert(files.end(), found.begin(), found.end());
    }
    if (files.empty()) {
        std::fprintf(stderr, "use: drawing-matrix [--insert | --reader] FOLDER|DRAWING...\n");
        return 2;
    }
    std::string folder = (fs::temp_directory_path() / "drawing-matrix-XXXXXX").string();
    if (::mkdtemp(folder.data()) == nullptr)
        return 2;
    const fs::path copy = fs::path(folder) / "copy.dwg";
    if (inserts) {
        const bool isEqual = insertAll(files, copy);
        fs::remove_all(folder);
        return isEqual ? 0 : 1;
    }
    bool allEqual = true;
    Peer originals;
    for (const fs::path& file : files)
        originals.ask(file);
    originals.print("originals");
    for (const matrix::Target& target : matrix::targets) {
        Totals totals;
        Peer peer;
        std::size_t asked = 0, same = 0;
        for (const fs::path& file : files) {
            totals.add(file.string() + " as " + target.name, matrix::saveAndCompare(file, copy, target));
            peer.ask(copy);
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
        peer.print(target.name);
        if (asked != 0)
            std::printf("independent reader: %zu asked, %zu the same\n", asked, same);
        allEqual = allEqual && totals.equal == totals.saves && asked == same && peer.acceptsAll();
    }
    Totals rewritten;
    Peer peer;
    for (const fs::path& file : files) {
        rewritten.add(file.string() + " with another description", matrix::rewriteAndCompare(file, copy));
        peer.ask(copy);
    }
    rewritten.print("own release, another description");
    peer.print("own release, another description");
    fs::remove_all(folder);
    return allEqual && rewritten.equal == rewritten.saves && peer.acceptsAll() ? 0 : 1;
}
