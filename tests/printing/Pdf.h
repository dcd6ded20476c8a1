#pragma once

#include <QImage>

#include <filesystem>
#include <string>

namespace tests {

/// What independent programs see in a PDF. Each needs its program, and gives nothing without it.
bool hasPdfPrograms();
/// The text of all pages, in the order of reading.
std::string pdfText(const std::filesystem::path& file);
/// The same in the order in which it was written.
std::string pdfWrittenText(const std::filesystem::path& file);
/// A page, counted from 1, at that many dots per inch.
QImage pdfPage(const std::filesystem::path& file, int page, int resolution);
/// 0 for what is no PDF.
int pdfPageCount(const std::filesystem::path& file);

} // namespace tests
