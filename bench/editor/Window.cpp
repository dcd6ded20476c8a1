#include "bench/editor/Window.h"

#include "tests/support/TemporaryFolder.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

namespace bench {

void StartApplication() {
    static int count = 1;
    static char name[] = "bench_editor";
    static char* arguments[] = {name, nullptr};
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // Not taken down: what other objects of the process still hold goes with the process.
    [[maybe_unused]] static const auto* const application = new QApplication(count, arguments);
}

std::filesystem::path SharedDrawing(const char* name) {
    const std::filesystem::path folder = tests::sharedFolder("drawings");
    if (folder.empty())
        std::puts("the drawings to be measured are not there");
    return folder.empty() ? folder : folder / name;
}

} // namespace bench
