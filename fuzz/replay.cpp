// Runs a fuzz target without libFuzzer: every file of the folders named, whole, cut short and with single bytes
// changed, always the same way.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int kCuts = 20;
constexpr int kChanges = 80;

int run(const Bytes& input) {
    LLVMFuzzerTestOneInput(input.data(), input.size());
    return 1;
}

int runSeed(const Bytes& seed) {
    int runs = run(seed);
    if (seed.empty())
        return runs;
    std::mt19937 random(1);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    for (int cut = 0; cut < kCuts; ++cut)
        runs += run(Bytes(seed.begin(), seed.begin() + static_cast<std::ptrdiff_t>(below(seed.size()))));
    for (int change = 0; change < kChanges; ++change) {
        Bytes changed = seed;
        changed[below(seed.size())] = static_cast<std::uint8_t>(random());
        runs += run(changed);
    }
    return runs;
}

} // namespace

int main(int count, char** arguments) {
    std::vector<std::filesystem::path> seeds;
    for (int argument = 1; argument < count; ++argument)
        for (const auto& entry : std::filesystem::directory_iterator(arguments[argument]))
            if (entry.is_regular_file())
                seeds.push_back(entry.path());
    std::sort(seeds.begin(), seeds.end());
    int runs = 0;
    for (const std::filesystem::path& seed : seeds) {
        std::ifstream file(seed, std::ios::binary);
        runs += runSeed(Bytes(std::istreambuf_iterator<char>(file), {}));
    }
    std::printf("%d runs of %zu seeds\n", runs, seeds.size());
    return runs == 0 ? 1 : 0;
}
