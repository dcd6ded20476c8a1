// How long opening a large drawing keeps the window from answering, against reading it alone.
#include "bench/Harness.h"
#include "bench/editor/Window.h"

#include "editor/application/editor.h"
#include "editor/window/main_window.h"

#include <QApplication>

#include <memory>
#include <stdexcept>

namespace {

using namespace editor;

// What the window does beside reading: the wireframe, the scene, the first picture.
constexpr double kBound = 1.35;

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
    const bench::Run opening{[&] {
                                 if (editor.documents().open(file.wstring(), true) != eOk)
                                     throw std::runtime_error("the drawing can't be opened");
                                 QApplication::processEvents();
                                 window.repaint();
                             },
                             closeAll};
    std::unique_ptr<AcDbDatabase> database;
    const bench::Run reading{[&] {
                                 if (database->readDwgFile(file.wstring().c_str()) != eOk)
                                     throw std::runtime_error("the drawing can't be read");
                             },
                             [&] { database = std::make_unique<AcDbDatabase>(false, false); }};
    table.Ratio("opening 2018/Dynblocks.dwg / reading it", kBound, opening, reading);
    closeAll();
    editor.setWindow(nullptr);
}

const bench::Rows rows("opening", measure);

} // namespace
