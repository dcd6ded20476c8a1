#include "tessaro/browser/printing/QtPrinterContext.h"

#include "tessaro/browser/preview/Dib.h"
#include "tessaro/platform/File.h"

#include <QFontMetrics>
#include <QPrinter>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace {

/// More pixels of a preview than that in one direction are not put into a document.
constexpr std::int64_t kMostPixels = 4096;

constexpr double kLeastSpacing = 1.0 / 64; ///< pixels; the least that is not none

QColor ToColour(Rgb colour) {
    return {colour.red, colour.green, colour.blue};
}

QString ToQt(const std::wstring& text) {
    return QString::fromStdWString(text);
}

/// The middle of the outermost pixels: where a pen runs whose line they are.
QRectF OutlineOf(const DeviceRect& place) {
    const auto left = static_cast<double>(std::min(place.left, place.right));
    const auto top = static_cast<double>(std::min(place.top, place.bottom));
    const auto right = static_cast<double>(std::max(place.left, place.right));
    const auto bottom = static_cast<double>(std::max(place.top, place.bottom));
    return {left + 0.5, top + 0.5, right - left - 1, bottom - top - 1};
}

bool IsEmpty(const DeviceRect& place) {
    return place.left == place.right || place.top == place.bottom;
}

int AlignmentOf(unsigned flags) {
    const auto has = [flags](unsigned flag) { return (flags & flag) != 0; };
    int alignment = has(kTextCentre) ? Qt::AlignHCenter : has(kTextRight) ? Qt::AlignRight : Qt::AlignLeft;
    alignment |= has(kTextBottom) ? Qt::AlignBottom : Qt::AlignTop;
    if (has(kTextWordBreak))
        alignment |= Qt::TextWordWrap;
    if (has(kTextSingleLine))
        alignment |= Qt::TextSingleLine;
    return alignment;
}

QImage ImageOf(const Picture& picture) {
    return {picture.pixels.data(), picture.width, picture.height, picture.width * 3, QImage::Format_RGB888};
}

/// 0, or why the file can't be written.
int WriteErrorOf(const QString& file) try {
    errno = 0;
    platform::File probe;
    const unsigned mode = platform::File::modeWrite | platform::File::modeCreate | platform::File::modeNoTruncate;
    if (probe.Open(file.toStdWString(), mode))
        return 0;
    return errno != 0 ? errno : EACCES;
} catch (const platform::FileException&) {
    return errno != 0 ? errno : EACCES;
}

} // namespace

QtPrinterContext::QtPrinterContext(QPrinter& device) : printer(device) {}

int QtPrinterContext::PageWidth() const {
    return printer.pageLayout().paintRectPixels(printer.resolution()).width();
}

int QtPrinterContext::PageHeight() const {
    return printer.pageLayout().paintRectPixels(printer.resolution()).height();
}

int QtPrinterContext::Resolution() const {
    return printer.resolution();
}

int QtPrinterContext::StartDoc(const std::wstring& name) {
    printer.setDocName(ToQt(name));
    if (!printer.outputFileName().isEmpty())
        lastError = WriteErrorOf(printer.outputFileName());
    if (lastError != 0)
        return -1;
    if (!painter.begin(&printer)) {
        lastError = EIO; // The system's own reason stays with the printer's queue.
        return -1;
    }
    painter.setRenderHint(QPainter::LosslessImageRendering);
    painter.setBackgroundMode(Qt::OpaqueMode);
    painter.setBackground(ToColour(backColour));
    painter.setBrush(ToColour(brush));
    UsePen();
    SelectFont({});
    return 1;
}

void QtPrinterContext::StartPage() {
    // The first page is there with the document.
    if (std::exchange(hasPage, true))
        printer.newPage();
}

void QtPrinterContext::EndDoc() {
    painter.end();
    hasPage = false;
}

QFont QtPrinterContext::FontOf(const DeviceFont& wanted) const {
    if (wanted == DeviceFont{})
        return QFont();
    QFont made(ToQt(wanted.face));
    made.setPixelSize(std::max(1, FontPixels(wanted.tenthsOfPoint, printer.resolution())));
    // With any spacing letters are not joined into one sign, which a search in the document would miss.
    made.setLetterSpacing(QFont::AbsoluteSpacing, kLeastSpacing);
    return made;
}

DeviceFont QtPrinterContext::SelectFont(const DeviceFont& selected) {
    painter.setFont(FontOf(selected));
    return std::exchange(font, selected);
}

int QtPrinterContext::LineHeight() const {
    return QFontMetrics(FontOf(font), &printer).height();
}

TextExtent QtPrinterContext::Measure(const std::wstring& text) const {
    const QFontMetrics metrics(FontOf(font), &printer);
    return {metrics.horizontalAdvance(ToQt(text)), metrics.height()};
}

Rgb QtPrinterContext::SetTextColour(Rgb colour) {
    return std::exchange(textColour, colour);
}

Rgb QtPrinterContext::SetBackColour(Rgb colour) {
    painter.setBackground(ToColour(colour));
    return std::exchange(backColour, colour);
}

bool QtPrinterContext::SetTransparent(bool transparent) {
    painter.setBackgroundMode(transparent ? Qt::TransparentMode : Qt::OpaqueMode);
    return std::exchange(isTransparent, transparent);
}

void QtPrinterContext::DrawText(const std::wstring& text, const DeviceRect& place, unsigned flags) {
    if (place.right <= place.left || place.bottom <= place.top)
        return;
    const QRectF box(static_cast<double>(place.left), static_cast<double>(place.top),
                     static_cast<double>(place.right - place.left), static_cast<double>(place.bottom - place.top));
    painter.setPen(ToColour(textColour));
    painter.drawText(box, AlignmentOf(flags), ToQt(text));
    UsePen();
}

void QtPrinterContext::UsePen() {
    painter.setPen(QPen(ToColour(pen.colour), std::max(1, pen.width), Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
}

Pen QtPrinterContext::SelectPen(const Pen& selected) {
    const Pen old = std::exchange(pen, selected);
    UsePen();
    return old;
}

Rgb QtPrinterContext::SelectBrush(Rgb selected) {
    painter.setBrush(ToColour(selected));
    return std::exchange(brush, selected);
}

void QtPrinterContext::Rectangle(const DeviceRect& place) {
    if (!IsEmpty(place))
        painter.drawRect(OutlineOf(place));
}

void QtPrinterContext::Ellipse(const DeviceRect& place) {
    if (!IsEmpty(place))
        painter.drawEllipse(OutlineOf(place));
}

void QtPrinterContext::Line(std::int64_t fromX, std::int64_t fromY, std::int64_t toX, std::int64_t toY) {
    painter.drawLine(QLineF(static_cast<double>(fromX) + 0.5, static_cast<double>(fromY) + 0.5,
                            static_cast<double>(toX) + 0.5, static_cast<double>(toY) + 0.5));
}

void QtPrinterContext::StretchDib(const PixelBox& destination, const PreviewBytes& preview, std::uint64_t pixelOffset,
                                  const PixelBox& source) {
    if (source.width <= 0 || source.height <= 0 || !DibPixels(preview, pixelOffset).IsDrawable())
        return;
    // The pixels go into the document as they are, and grow where it is shown; what is larger than a preview is
    // combined here.
    Picture picture(static_cast<int>(std::min(source.width, kMostPixels)),
                    static_cast<int>(std::min(source.height, kMostPixels)));
    const PixelBox whole{0, 0, picture.width, picture.height};
    ::StretchDib(picture, whole, preview, pixelOffset, source, mode);
    StretchPicture(destination, picture, whole);
}

void QtPrinterContext::StretchPicture(const PixelBox& destination, const Picture& picture, const PixelBox& source) {
    if (destination.width <= 0 || destination.height <= 0 || source.width <= 0 || source.height <= 0)
        return;
    const QRectF wanted(static_cast<double>(source.left), static_cast<double>(source.top),
                        static_cast<double>(source.width), static_cast<double>(source.height));
    const QRectF there = wanted & QRectF(0, 0, picture.width, picture.height);
    if (there.isEmpty())
        return;
    const double across = static_cast<double>(destination.width) / wanted.width();
    const double down = static_cast<double>(destination.height) / wanted.height();
    const QRectF target(static_cast<double>(destination.left) + (there.left() - wanted.left()) * across,
                        static_cast<double>(destination.top) + (there.top() - wanted.top()) * down,
                        there.width() * across, there.height() * down);
    painter.drawImage(target, ImageOf(picture), there);
}
