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
    static QApplication application(count, arguments);
}

std::filesystem::path SharedDrawing(const char* name) {
    const std::filesystem::path folder = tests::sharedFolder("drawings");
    if (folder.empty())
        std::puts("the drawings to be measured are not there");
    return folder.empty() ? folder : folder / name;
}

} // namespace bench
