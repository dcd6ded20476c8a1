// How long opening a large drawing keeps the window from answering, against reading it alone: twice, for the reading
// and, when the event loop has had its turn, for the picture.
#include "bench/Harness.h"
#include "bench/editor/Window.h"

#include "editor/application/editor.h"
#include "editor/window/main_window.h"

#include <QApplication>

#include <memory>
#include <stdexcept>

namespace {

using namespace editor;

// Reading itself, with what a measurement strays by; and less than that for the picture.
constexpr double kReadingBound = 1.1, kPictureBound = 1;

void measure(bench::Table& table) {
    const std::filesystem::path file = bench::SharedDrawing("2018/Dynblocks.dwg");
    if (file.empty())
        return;
    bench::StartApplication();
    Editor editor;
    MainWindow window;
    window.setInteractive(false);
    editor.setWindow(&window);
    window.show();
    const auto closeAll = [&] {
        while (Document* const open = editor.documents().current())
            editor.documents().close(*open);
        QApplication::processEvents();
    };
    const auto open = [&] {
        if (editor.documents().open(file.wstring(), true) != eOk)
            throw std::runtime_error("the drawing can't be opened");
    };
    const auto showIt = [&] {
        QApplication::processEvents();
        window.repaint();
    };
    const bench::Run opening{open, closeAll};
    const bench::Run picture{showIt, [&] {
                                 closeAll();
                                 open();
                             }};
    std::unique_ptr<AcDbDatabase> database;
    const bench::Run reading{[&] {
                                 if (database->readDwgFile(file.wstring().c_str()) != eOk)
                                     throw std::runtime_error("the drawing can't be read");
                             },
                             [&] { database = std::make_unique<AcDbDatabase>(false, false); }};
    table.Ratio("opening 2018/Dynblocks.dwg / reading it", kReadingBound, opening, reading);
    closeAll();
    table.Ratio("the picture after it / reading it", kPictureBound, picture, reading);
    closeAll();
    editor.setWindow(nullptr);
}

const bench::Rows rows("opening", measure);

} // namespace
