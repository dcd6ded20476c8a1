// Makes a large library of small drawings for measures, all of them valid, no two with the same name and description.
//
//   make-library [--count N] [--folders N] [--formats NAME,...] DIR
//
// Without options: 100,000 drawings in 500 folders, in the formats 2000 to 2013 in turn. The same options make the same
// library, but for the files' creation times. Exit status 1 where something could not be written, 2 for a wrong
// command line.

#include "tools/library_drawings.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <thread>

namespace {

namespace fs = std::filesystem;

constexpr int firstDay = 10957, daysOfUse = 9000; ///< from the year 2000 on
constexpr std::array nouns{"Door", "Window", "Bolt", "Valve", "Lamp", "Chair", "Table", "Tree", "Pump", "Socket"};
constexpr std::array kindsOfNouns{"plain", "double", "left", "right", "narrow", "wide"};

struct Plan {
    int count = 100'000;
    int folders = 500;
    std::vector<dwg::Release> formats{dwg::Release::r2000, dwg::Release::r2004, dwg::Release::r2007,
                                      dwg::Release::r2010, dwg::Release::r2013};
    fs::path place;
};

std::string numbered(const char* pattern, int number) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), pattern, number);
    return text.data();
}

template <class List> const char* pick(const List& list, int number) {
    return list[static_cast<std::size_t>(number) % list.size()];
}

std::string titleOf(int number) {
    return std::string(pick(nouns, number * 7)) + ' ' + pick(kindsOfNouns, number * 5) + numbered(" %06d", number);
}

std::wstring commentsOf(int number) {
    const std::string text = std::string(pick(kindsOfNouns, number)) + ' ' + pick(nouns, number / 3) +
                             numbered(", %d mm", 100 + number % 9000) +
                             std::string(static_cast<std::size_t>(number % 40), '.');
    return {text.begin(), text.end()};
}

void setTimes(const fs::path& file, int day, int number) {
    const time_t seconds = day * 86'400LL + number % 86'400;
    const std::array<timespec, 2> times{timespec{seconds, 0}, timespec{seconds, 0}};
    if (utimensat(AT_FDCWD, file.c_str(), times.data(), 0) != 0)
        throw std::runtime_error("can't date " + file.string());
}

class Maker {
public:
    explicit Maker(const Plan& wanted) : plan(wanted) {
        for (const dwg::Release format : plan.formats)
            for (int kind = 0; kind < tools::libraryKinds; ++kind)
                originals.push_back({tools::drawnFile(format, kind), kind});
        for (int folder = 0; folder < plan.folders; ++folder)
            fs::create_directories(plan.place / folderName(folder));
    }

    /// By several threads. An exception of one is thrown here.
    void makeAll() {
        std::vector<std::jthread> threads;
        for (unsigned thread = 0; thread < std::max(1U, std::thread::hardware_concurrency()); ++thread)
            threads.emplace_back([this] { makeSome(); });
        threads.clear();
        if (failed)
            throw std::runtime_error(reason);
    }

private:
    static std::string folderName(int folder) { return numbered("Library %03d", folder + 1); }

    void makeSome() try {
        std::vector<tools::LibraryDrawing> own;
        for (const Original& original : originals)
            own.emplace_back(original.drawn, original.kind);
        for (int number = next++; number < plan.count && !failed; number = next++)
            make(own, number);
    } catch (const std::exception& failure) {
        if (!failed.exchange(true))
            reason = failure.what();
    }

    void make(std::vector<tools::LibraryDrawing>& own, int number) const {
        // Neighbours in a folder differ in format and kind.
        const int day = firstDay + number * 31 % daysOfUse;
        auto bytes = own[static_cast<std::size_t>(number) * 29 % own.size()].file(commentsOf(number), day);
        if (!bytes)
            throw std::runtime_error(bytes.error().reason);
        const fs::path file = plan.place / folderName(number % plan.folders) / (titleOf(number) + ".dwg");
        std::ofstream out(file, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(bytes->data()), static_cast<std::streamsize>(bytes->size()));
        out.close();
        if (!out)
            throw std::runtime_error("can't write " + file.string());
        setTimes(file, day, number);
    }

    const Plan plan;
    struct Original {
        dwg::Bytes drawn;
        int kind = 0;
    };
    std::vector<Original> originals;
    std::atomic<int> next{0};
    std::atomic<bool> failed{false};
    std::string reason;
};

int numberOf(const std::string& text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number <= 0)
        throw std::invalid_argument("\"" + text + "\" is no number above 0");
    return number;
}

std::vector<dwg::Release> formatsOf(const std::string& text) {
    std::vector<dwg::Release> formats;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find(',', at), text.size());
        const auto release = tools::releaseByName(text.substr(at, end - at));
        if (!release)
            throw std::invalid_argument("no format \"" + text.substr(at, end - at) + "\" is written");
        formats.push_back(*release);
        at = end + 1;
    }
    return formats;
}

Plan planOf(const std::vector<std::string>& arguments) {
    Plan plan;
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        const std::string& argument = arguments[at];
        if (!argument.starts_with("--")) {
            plan.place = argument;
            continue;
        }
        if (at + 1 == arguments.size())
            throw std::invalid_argument("something must follow " + argument);
        const std::string& value = arguments[++at];
        if (argument == "--count")
            plan.count = numberOf(value);
        else if (argument == "--folders")
            plan.folders = numberOf(value);
        else if (argument == "--formats")
            plan.formats = formatsOf(value);
        else
            throw std::invalid_argument("unknown option " + argument);
    }
    if (plan.place.empty())
        throw std::invalid_argument("no folder is named");
    plan.folders = std::min(plan.folders, plan.count);
    return plan;
}

} // namespace

int main(int count, char** arguments) {
    try {
        const Plan plan = planOf({arguments + 1, arguments + count});
        Maker(plan).makeAll();
        std::printf("%d drawings in %d folders\n", plan.count, plan.folders);
        return 0;
    } catch (const std::invalid_argument& wrong) {
        std::fprintf(stderr,
                     "make-library: %s\n"
                     "usage: make-library [--count N] [--folders N] [--formats NAME,...] DIR\n",
                     wrong.what());
        return 2;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "make-library: %s\n", failure.what());
        return 1;
    }
}
