// The first pass over real drawings, and its parts by themselves.

#include "bench/Floors.h"
#include "bench/Harness.h"
#include "bench/Subject.h"
#include "bench/reading/Reading.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/reading/Examine.h"

#include <algorithm>
#include <ctime>
#include <fstream>
#include <functional>

namespace {

using bench::Examined;
using bench::Subject;

constexpr int kDrawings = 5000, kFolders = 20;
constexpr double kFirstScanBound = 1.3, kLoadBound = 0.4, kRenderBound = 0.25;
constexpr int kRepeats = 7;

double ThreadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// The median over all drawings of the least of several runs, in milliseconds.
double MedianCpu(std::vector<Subject>& subjects, const std::function<void(Subject&)>& part) {
    std::vector<double> times;
    for (Subject& subject : subjects) {
        double least = 1e9;
        for (int repeat = 0; repeat < kRepeats; ++repeat) {
            const double start = ThreadSeconds();
            part(subject);
            least = std::min(least, ThreadSeconds() - start);
        }
        times.push_back(least * 1e3);
    }
    std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2), times.end());
    return times[times.size() / 2];
}

std::uint64_t BytesRead() {
    std::ifstream in("/proc/self/io");
    std::string name;
    std::uint64_t bytes = 0;
    in >> name >> bytes;
    return bytes;
}

void Load(Subject& subject) {
    Block block;
    subject.points.clear();
    LoadDrawing(subject.path, block, true, subject.preview ? &*subject.preview : nullptr, subject.points);
}

void Render(Subject& subject) {
    if (subject.preview)
        bench::Keep(DrawThumbnails(true, subject.fileType, *subject.preview, subject.isPng, subject.points).small);
}

void Measure(bench::Table& table) {
    Reading reading;
    const auto drawings = Drawings();
    std::vector<Subject> subjects;
    for (int folder = 0; folder < kFolders; ++folder) {
        const auto place = reading.Place() / ("library" + std::to_string(folder));
        std::filesystem::create_directory(place);
        reading.Add(place);
        for (int number = folder; number < kDrawings; number += kFolders) {
            const auto& original = drawings[static_cast<std::size_t>(number) % drawings.size()];
            const auto copy = place / ("drawing" + std::to_string(number) + ".dwg");
            // Another name for the same bytes serves as well as a copy, and spares the disk.
            std::error_code refused;
            std::filesystem::create_hard_link(original, copy, refused);
            if (refused)
                std::filesystem::copy_file(original, copy);
            subjects.push_back(Examined(copy));
        }
    }
    table.Ratio("first scan of 5,000 drawings to its parts", kFirstScanBound,
                {[&] { reading.ReadAll(true); }, Reading::Empty}, {[&] {
                    for (Subject& subject : subjects) {
                        bench::ReadBareDrawing(subject.native);
                        Load(subject);
                        Render(subject);
                    }
                }});
    subjects.resize(std::min(subjects.size(), drawings.size()));
    table.Value("LoadDrawing: processor time of the median drawing", MedianCpu(subjects, Load), "ms", kLoadBound);
    table.Value("RenderThumbnail, both passes: processor time of the median drawing", MedianCpu(subjects, Render), "ms",
                kRenderBound);
    std::uint64_t bytes = 0;
    for (Subject& subject : subjects) {
        const std::uint64_t before = BytesRead();
        Load(subject);
        bytes += BytesRead() - before;
    }
    table.Note("LoadDrawing: bytes read of a drawing, on average",
               static_cast<double>(bytes) / static_cast<double>(subjects.size()), "bytes");
}

const bench::Rows rows("first-scan", Measure);

} // namespace
