#include "tests/painting/RecorderContext.h"

#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"

#include <algorithm>
#include <utility>

namespace tests {
namespace {

std::string text(const DeviceRect& place) {
    return std::to_string(place.left) + ',' + std::to_string(place.top) + ',' + std::to_string(place.right) + ',' +
           std::to_string(place.bottom);
}

std::string text(const PixelBox& box) {
    return text(DeviceRect{box.left, box.top, box.width, box.height});
}

std::string text(StretchMode mode) {
    return std::to_string(static_cast<int>(mode));
}

std::string text(const Pen& pen) {
    return hex(pen.colour) + '/' + std::to_string(pen.width);
}

} // namespace

std::string hex(Rgb colour) {
    const char* const digits = "0123456789abcdef";
    std::string out;
    for (const std::uint8_t part : {colour.red, colour.green, colour.blue}) {
        out += digits[part >> 4];
        out += digits[part & 15];
    }
    return out;
}

std::vector<std::string> RecorderContext::linesOf(const std::string& begin) const {
    std::vector<std::string> found;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
                 [&](const std::string& line) { return line.starts_with(begin); });
    return found;
}

bool RecorderContext::isAsFresh() const {
    const RecorderContext fresh;
    return pen == fresh.pen && brush == fresh.brush && textColour == fresh.textColour &&
           backColour == fresh.backColour && transparent == fresh.transparent && font == fresh.font;
}

int RecorderContext::StartDoc(const std::wstring& name) {
    lines.push_back("start doc \"" + platform::ToNarrow(name) + '"');
    return failsToStart ? -1 : 1;
}

void RecorderContext::StartPage() {
    lines.emplace_back("start page");
    font = RecorderContext().font;
}

DeviceFont RecorderContext::SelectFont(const DeviceFont& selected) {
    return std::exchange(font, selected);
}

TextExtent RecorderContext::Measure(const std::wstring& measured) const {
    return {static_cast<int>(measured.size()) * 7, measured == versionText ? versionHeight : lineHeight};
}

Rgb RecorderContext::SetTextColour(Rgb colour) {
    return std::exchange(textColour, colour);
}

Rgb RecorderContext::SetBackColour(Rgb colour) {
    return std::exchange(backColour, colour);
}

bool RecorderContext::SetTransparent(bool selected) {
    return std::exchange(transparent, selected);
}

void RecorderContext::DrawText(const std::wstring& words, const DeviceRect& place, unsigned flags) {
    lines.push_back("text \"" + platform::ToNarrow(words) + "\" " + text(place) + " flags " + std::to_string(flags) +
                    " font " + std::to_string(font.tenthsOfPoint) + ' ' + platform::ToNarrow(font.face) + " colour " +
                    hex(textColour) + (transparent ? " transparent" : " on " + hex(backColour)));
}

Pen RecorderContext::SelectPen(const Pen& selected) {
    return std::exchange(pen, selected);
}

Rgb RecorderContext::SelectBrush(Rgb selected) {
    return std::exchange(brush, selected);
}

void RecorderContext::Rectangle(const DeviceRect& place) {
    lines.push_back("rectangle " + text(place) + " pen " + text(pen) + " brush " + hex(brush));
}

void RecorderContext::Ellipse(const DeviceRect& place) {
    lines.push_back("ellipse " + text(place) + " pen " + text(pen) + " brush " + hex(brush));
}

void RecorderContext::Line(std::int64_t fromX, std::int64_t fromY, std::int64_t toX, std::int64_t toY) {
    lines.push_back("line " + text(DeviceRect{fromX, fromY, toX, toY}) + " pen " + text(pen));
}

void RecorderContext::StretchDib(const PixelBox& destination, const PreviewBytes&, std::uint64_t pixelOffset,
                                 const PixelBox& source) {
    lines.push_back("dib " + text(destination) + " from " + text(source) + " at " + std::to_string(pixelOffset) +
                    " mode " + text(mode));
}

void RecorderContext::StretchPicture(const PixelBox& destination, const Picture& picture, const PixelBox& source) {
    lines.push_back("picture " + text(destination) + " from " + text(source) + " of " + std::to_string(picture.width) +
                    'x' + std::to_string(picture.height) + " mode " + text(mode));
    pictures.push_back(picture);
}

} // namespace tests
