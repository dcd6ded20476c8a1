#include "editor/application/drawing.h"
#include "editor/application/editor.h"
#include "editor/application/search_path.h"
#include "editor/application/text.h"
#include "editor/window/batch.h"
#include "editor/window/main_window.h"
#include "editor/window/program_options.h"
#include "editor/window/screen_choice.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>

#include <clocale>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

using namespace editor;

constexpr int usageError = 2;
constexpr const char* ownModule = "tessaro24-64.arx";

bool hasArgument(int count, char** arguments, const char* wanted) {
    for (int at = 1; at < count; ++at) {
        if (std::strcmp(arguments[at], wanted) == 0)
            return true;
    }
    return false;
}

// What was printed before a crash or a kill is wanted most.
void printToOutput(std::wstring_view text) {
    const std::string bytes = toUtf8(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    std::fflush(stdout);
}

bool openDrawing(Editor& running, const QString& name) {
    if (name.isEmpty()) {
        running.documents().create();
        return true;
    }
    const std::wstring file = fullPath(name.toStdWString());
    const int status = running.documents().open(file);
    if (status != eOk)
        running.console().printLine(L"Can't open \"" + file + L"\": " + statusText(status) + L".");
    return status == eOk;
}

bool loadModules(Editor& running, const ProgramOptions& options) {
    if (!options.loadModules)
        return true;
    QStringList modules = options.modules;
    const QString beside = QCoreApplication::applicationDirPath() + '/' + ownModule;
    if (modules.isEmpty() && QFileInfo(beside).isFile())
        modules << beside;
    bool loaded = true;
    for (const QString& module : modules)
        loaded &= running.linker().loadModule(fullPath(module.toStdWString()).c_str(), true);
    return loaded;
}

int runBatch(Editor& running, MainWindow& window, const ProgramOptions& options) {
    QFile script(options.script);
    if (!script.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "tessaro-editor: can't read %s\n", qPrintable(options.script));
        return usageError;
    }
    window.setInteractive(false);
    BatchUser user(QString::fromStdWString(fromNarrow(script.readAll().toStdString())), window, running.console());
    running.setUserInput(&user);
    bool carriedOut = openDrawing(running, options.drawing);
    if (carriedOut) {
        carriedOut = loadModules(running, options);
        running.run();
    }
    running.quit();
    running.setUserInput(nullptr);
    running.console().beginLine();
    for (const auto* const faults : {&running.processor().faults(), &running.console().faults(), &user.faults()}) {
        for (const auto& fault : *faults) {
            running.console().printLine(L"Not carried out: " + fault);
            carriedOut = false;
        }
    }
    return carriedOut ? EXIT_SUCCESS : EXIT_FAILURE;
}

int runInteractive(Editor& running, MainWindow& window, const ProgramOptions& options) {
    running.setUserInput(&window);
    if (!openDrawing(running, options.drawing))
        running.documents().create();
    loadModules(running, options);
    running.run();
    running.quit();
    running.setUserInput(nullptr);
    return EXIT_SUCCESS;
}

} // namespace

int main(int count, char** arguments) {
    chooseScreen(hasArgument(count, arguments, "--batch"));
    QApplication application(count, arguments);
    // Qt takes the user's locale over for the whole process; numbers in files and commands never follow it.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName("tessaro-editor");
    QApplication::setQuitOnLastWindowClosed(false);

    QString problem;
    const ProgramOptions options = parseOptions(QApplication::arguments(), problem);
    if (options.help) {
        std::fputs(qPrintable(ProgramOptions::usage()), stdout);
        return EXIT_SUCCESS;
    }
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "tessaro-editor: %s\n%s", qPrintable(problem), qPrintable(ProgramOptions::usage()));
        return usageError;
    }
    if (options.batch)
        QApplication::setCursorFlashTime(0); // a blinking cursor never comes to rest

    Editor running;
    for (const QString& folder : options.folders)
        running.addSupportFolder(fullPath(folder.toStdWString()));
    auto window = std::make_unique<MainWindow>();
    running.setWindow(window.get());
    running.console().setSink([&window, &options](std::wstring_view text) {
        if (options.batch)
            printToOutput(text);
        window->print(text);
    });
    window->show();
    const int status = options.batch ? runBatch(running, *window, options) : runInteractive(running, *window, options);
    running.console().setSink({});
    running.setWindow(nullptr);
    return status;
}
