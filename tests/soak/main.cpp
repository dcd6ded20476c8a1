// Random use of the browser over a library that changes meanwhile, and whether all of it was read in the end.
//   reading_soak [--whole] [--keep-pictures] [--operations N] [--folders N] [--seed N] [--patience SECONDS]

#include "tests/soak/Catalogue.h"
#include "tests/soak/Soak.h"

#include "editor/application/editor.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Text.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

int Fail(const std::string& why) {
    std::fprintf(stderr, "%s\n", why.c_str());
    return 1;
}

} // namespace

int main(int count, char** arguments) {
    Soak::Plan plan;
    int patience = 120;
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
        const int value = argument + 1 < count ? std::atoi(arguments[++argument]) : 0;
        if (value <= 0)
            return Fail("reading_soak: a number above 0 must follow " + std::string(name));
        if (name == "--operations")
            plan.operations = value;
        else if (name == "--folders")
            plan.folders = value;
        else if (name == "--seed")
            plan.seed = static_cast<unsigned>(value);
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

    Soak soak(plan, watchdog);
    soak.Use();
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
    const std::string difference = FirstDifference(used.lines, quiet.lines);
    if (!difference.empty())
        return Fail("after random use and after one quiet pass the catalogue differs:\n" + difference);
    if (quiet.withLostPictures > 0 || (plan.keepsPictures && used.withLostPictures > 0))
        return Fail("pictures were lost");
    return soak.Complaints().empty() ? 0 : 1;
}
