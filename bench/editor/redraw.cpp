// A redraw of a large drawing against the bare painting of what is seen of it.
#include "bench/Harness.h"
#include "bench/editor/Window.h"

#include "editor/database/colours.h"
#include "editor/window/drawing_scene.h"

#include <QImage>
#include <QPainter>

#include <stdexcept>

namespace {

using namespace editor;

const QSize kSurface(1280, 800);

Projection wholeOf(const DrawingScene& scene) {
    const Extents& box = scene.extents();
    const double width = box.highest.x - box.lowest.x, height = box.highest.y - box.lowest.y;
    return {std::min(kSurface.width() / width, kSurface.height() / height),
            {box.lowest.x + width / 2, box.lowest.y + height / 2},
            kSurface};
}

void paintBare(QPainter& painter, const Wireframe& wireframe, const Projection& projection) {
    QPolygonF piece;
    for (const Stroke& stroke : wireframe.strokes) {
        piece.clear();
        for (const AcGePoint3d& point : stroke.points)
            piece << projection.toSurface(point.x, point.y);
        const Rgb rgb = colourOfIndex(stroke.colour);
        painter.setPen(QPen(QColor(rgb.red, rgb.green, rgb.blue), 1));
        painter.drawPolyline(piece);
    }
}

void measure(bench::Table& table) {
    const std::filesystem::path file = bench::SharedDrawing("2018/Dynblocks.dwg");
    if (file.empty())
        return;
    bench::StartApplication();
    AcDbDatabase database(false, false);
    if (database.readDwgFile(file.wstring().c_str()) != eOk)
        throw std::runtime_error("2018/Dynblocks.dwg can't be read");
    const Wireframe wireframe = wireframeOfModelSpace(database);
    const DrawingScene scene(wireframe);
    const Projection projection = wholeOf(scene);
    QImage image(kSurface, QImage::Format_RGB32);
    const auto clear = [&] { image.fill(Qt::black); };
    const bench::Run redraw{[&] {
                                QPainter painter(&image);
                                scene.paint(painter, projection, {Qt::black, true, {}});
                            },
                            clear};
    const bench::Run bare{[&] {
                              QPainter painter(&image);
                              painter.setRenderHint(QPainter::Antialiasing);
                              paintBare(painter, wireframe, projection);
                          },
                          clear};
    table.Note("strokes of the model space", static_cast<double>(wireframe.strokes.size()), "strokes");
    table.Ratio("redraw of 2018/Dynblocks.dwg / bare loop", 3, redraw, bare);
}

const bench::Rows rows("redraw", measure);

} // namespace
