// make-icon DIR SIZE...: the program's icon as DIR/tessaro.svg and, for each size in pixels, DIR/SIZE.png.

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr double side = 64; ///< of the square that all shapes are told in

struct Shape {
    QPainterPath path;
    QColor colour;
    double width = 0; ///< of the line; 0 for a filled shape
};

QPainterPath tile(double x, double y) {
    QPainterPath path;
    path.addRoundedRect(x, y, 28, 28, 5, 5);
    return path;
}

QPainterPath lines(const std::vector<std::vector<QPointF>>& runs) {
    QPainterPath path;
    for (const auto& run : runs) {
        path.moveTo(run.front());
        for (const QPointF& point : run)
            path.lineTo(point);
    }
    return path;
}

/// Four tiles of a library: a chair, a lamp, a door, a window.
std::vector<Shape> icon() {
    const QColor line(Qt::white);
    QPainterPath lamp = lines({{{41.3, 11.3}, {52.7, 22.7}}, {{41.3, 22.7}, {52.7, 11.3}}});
    lamp.addEllipse(QPointF(47, 17), 8, 8);
    QPainterPath door = lines({{{10, 56}, {10, 40}}, {{10, 56}, {26, 56}}});
    door.moveTo(10, 40);
    door.arcTo(-6, 40, 32, 32, 90, -90);
    return {
        {tile(3, 3), QColor(0x2F, 0x6D, 0xB5)},
        {lines({{{12, 9}, {12, 25}}, {{12, 17}, {22, 17}, {22, 25}}}), line, 3},
        {tile(33, 3), QColor(0xC2, 0x3B, 0x3B)},
        {lamp, line, 2.5},
        {tile(3, 33), QColor(0xD9, 0x82, 0x2B)},
        {door, line, 2.5},
        {tile(33, 33), QColor(0x3E, 0x8E, 0x5A)},
        {lines({{{39, 41}, {55, 41}, {55, 53}, {39, 53}, {39, 41}}, {{39, 47}, {55, 47}}, {{47, 41}, {47, 53}}}), line,
         2.5},
    };
}

std::string svgPath(const QPainterPath& path) {
    std::string text;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element& element = path.elementAt(i);
        const char* const command = element.type == QPainterPath::MoveToElement    ? "M"
                                    : element.type == QPainterPath::LineToElement  ? "L"
                                    : element.type == QPainterPath::CurveToElement ? "C"
                                                                                   : " ";
        text += command + QString("%1 %2").arg(element.x, 0, 'g', 5).arg(element.y, 0, 'g', 5).toStdString();
    }
    return text;
}

std::string svg(const std::vector<Shape>& shapes) {
    std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 64 64\" width=\"64\" height=\"64\">\n";
    for (const Shape& shape : shapes) {
        const std::string colour = shape.colour.name().toStdString();
        text += "<path d=\"" + svgPath(shape.path) + "\" ";
        if (shape.width == 0)
            text += "fill=\"" + colour + "\"";
        else
            text += "fill=\"none\" stroke=\"" + colour + "\" stroke-linecap=\"round\" stroke-linejoin=\"round\" " +
                    "stroke-width=\"" + QString::number(shape.width).toStdString() + "\"";
        text += "/>\n";
    }
    return text + "</svg>\n";
}

QImage picture(const std::vector<Shape>& shapes, int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / side, size / side);
    for (const Shape& shape : shapes) {
        if (shape.width == 0)
            painter.fillPath(shape.path, shape.colour);
        else
            painter.strokePath(shape.path, QPen(shape.colour, shape.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
    return image;
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::fprintf(stderr, "usage: make-icon DIR SIZE...\n");
        return 2;
    }
    const std::filesystem::path folder = arguments[1];
    std::error_code ignored; // a folder that can't be made shows at the first file
    std::filesystem::create_directories(folder, ignored);
    const std::vector<Shape> shapes = icon();
    std::ofstream out(folder / "tessaro.svg");
    bool done = bool(out << svg(shapes) << std::flush);
    for (int i = 2; i < count; ++i) {
        const int size = QString(arguments[i]).toInt();
        done = size > 0 && picture(shapes, size).save(QString("%1/%2.png").arg(arguments[1]).arg(size)) && done;
    }
    if (!done)
        std::fprintf(stderr, "can't write the icon to %s\n", arguments[1]);
    return done ? 0 : 1;
}
