// The main cache of 200 directories and 100,000 blocks against zlib alone, and what the records take in memory.

#include "bench/Harness.h"
#include "bench/catalogue/CacheData.h"
#include "tessaro/catalogue/MainCache.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"

#include <fstream>
#include <malloc.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace {

void Load() {
    if (const MainCacheReading read = ReadMainCache(); !read.opened || read.failed)
        throw std::runtime_error("the main cache is damaged");
}

double ResidentMegabytes() {
    malloc_trim(0);
    std::ifstream in("/proc/self/statm");
    double pages = 0, resident = 0;
    in >> pages >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

/// In a process of its own, so that nothing else comes and goes.
double RecordsMegabytes() {
    int ends[2];
    if (pipe(ends) != 0)
        throw std::runtime_error("no pipe");
    const pid_t child = fork();
    if (child == 0) {
        const double before = ResidentMegabytes();
        Load();
        const double megabytes = ResidentMegabytes() - before;
        _exit(write(ends[1], &megabytes, sizeof megabytes) == sizeof megabytes ? 0 : 1);
    }
    double megabytes = 0;
    close(ends[1]);
    const bool told = read(ends[0], &megabytes, sizeof megabytes) == sizeof megabytes;
    close(ends[0]);
    int status = 0;
    if (waitpid(child, &status, 0) != child || status != 0 || !told)
        throw std::runtime_error("the records could not be measured");
    return megabytes;
}

void Measure(bench::Table& table) {
    const bench::CacheFolder folder;
    demandLoadCache = 1;
    bench::FillCatalogue();
    WriteMainCache();
    bench::EmptyCatalogue();
    table.Value("memory of 100,000 records", RecordsMegabytes(), "MB", 60);

    bench::Stream stream(folder.path / "tessaro35.cache");
    table.Ratio("load 100,000 records to uncompress", 2.5, {Load, bench::EmptyCatalogue},
                {[&] { stream.Uncompress(); }});
    table.Ratio("save 100,000 records to compress", 1.3, {WriteMainCache}, {[&] { stream.Compress(); }});
    bench::EmptyCatalogue();
    demandLoadCache = 0;
}

const bench::Rows rows("records", Measure);

} // namespace
