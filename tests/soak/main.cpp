// Random use of the browser over a library that changes meanwhile, and whether all of it was read in the end.
//   reading_soak [--whole] [--keep-pictures] [--product] [--operations N] [--folders N] [--seed N] [--seconds N]
//                [--patience SECONDS]
// With --product what lies around the browser is used too. With --seconds, or TESSARO_SOAK_SECONDS in the environment,
// one seed after the other is used until the time is over. A failure prints its seed.

#include "tests/soak/Catalogue.h"
#include "tests/soak/Soak.h"

#include "editor/application/editor.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Text.h"

#include <QApplication>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string_view>

namespace {

int Fail(const std::string& why) {
    std::fprintf(stderr, "%s\n", why.c_str());
    return 1;
}

/// A click in the moment behind a pass shows nothing until the next one. That moment is short, and rarely met.
class LostClicks {
public:
    /// What is wrong, in words; of all seeds so far.
    std::string Add(const std::map<std::string, int>& done) {
        const auto count = [&](const char* what) { return done.contains(what) ? done.at(what) : 0; };
        lost += count("lost clicks");
        rests += count("rests");
        constexpr int rare = 1000;
        if (lost <= 1 + rests / rare)
            return {};
        return std::to_string(lost) + " of " + std::to_string(rests) + " last clicks were lost";
    }

private:
    int lost = 0, rests = 0;
};

int Run(const Soak::Plan& plan, Watchdog& watchdog, editor::Editor& host, LostClicks& clicks) {
    Soak soak(plan, watchdog, host);
    soak.Use();
    if (const std::string lost = clicks.Add(soak.Done()); !lost.empty())
        return Fail("seed " + std::to_string(plan.seed) + ": " + lost);
    if (!soak.Broken().empty())
        return Fail("seed " + std::to_string(plan.seed) + ": " + soak.Broken());
    soak.ReadAll();
    std::set<std::wstring> withoutPictures;
    const CatalogueDescription used = DescribeCatalogue(withoutPictures);
    soak.ReadAnew();
    const CatalogueDescription quiet = DescribeCatalogue(withoutPictures);

    std::printf("seed %u:", plan.seed);
    for (const auto& [what, times] : soak.Done())
        std::printf(" %d %s,", times, what.c_str());
    std::printf(" %zu lines of catalogue, %d folders lost pictures\n", used.lines.size(), used.withLostPictures);
    for (const std::wstring& complaint : soak.Complaints())
        std::fprintf(stderr, "message: %s\n", platform::ToNarrow(complaint).c_str());
    std::fflush(stdout);
    const std::string difference = FirstDifference(used.lines, quiet.lines);
    if (!difference.empty())
        return Fail("after random use and after one quiet pass the catalogue differs:\n" + difference);
    if (quiet.withLostPictures > 0 || (plan.keepsPictures && used.withLostPictures > 0))
        return Fail("pictures were lost");
    return soak.Complaints().empty() ? 0 : 1;
}

} // namespace

int main(int count, char** arguments) {
    Soak::Plan plan;
    int patience = 120;
    const char* const wanted = std::getenv("TESSARO_SOAK_SECONDS");
    int seconds = wanted == nullptr ? 0 : std::atoi(wanted);
    for (int argument = 1; argument < count; ++argument) {
        const std::string_view name = arguments[argument];
        if (name == "--whole") {
            plan.operations = 20000;
            plan.folders = 200;
            continue;
        }
        if (name == "--keep-pictures") {
            plan.keepsPictures = true;
            continue;
        }
        if (name == "--product") {
            plan.wholeProduct = true;
            continue;
        }
        const int value = argument + 1 < count ? std::atoi(arguments[++argument]) : 0;
        if (value <= 0)
            return Fail("reading_soak: a number above 0 must follow " + std::string(name));
        if (name == "--operations")
            plan.operations = value;
        else if (name == "--folders")
            plan.folders = value;
        else if (name == "--seed")
            plan.seed = static_cast<unsigned>(value);
        else if (name == "--seconds")
            seconds = value;
        else if (name == "--patience")
            patience = value;
        else
            return Fail("reading_soak: unknown argument " + std::string(name));
    }

    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" TESSARO_SOURCE_DIR "/tests/browser/screen.json");
    QApplication application(count, arguments);
    platform::SetMainThread();
    Watchdog watchdog{std::chrono::seconds(patience)};
    editor::Editor host;
    host.documents().create();

    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    LostClicks clicks;
    int result = Run(plan, watchdog, host, clicks);
    while (result == 0 && std::chrono::steady_clock::now() < end) {
        ++plan.seed;
        result = Run(plan, watchdog, host, clicks);
    }
    return result;
}
