#include "tests/printing/Pdf.h"

#include "tests/support/Shell.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdlib>

namespace tests {
namespace {

std::string outputOf(const std::string& command) {
    return runShell(command + " 2>/dev/null").output;
}

} // namespace

bool hasPdfPrograms() {
    return std::system("command -v pdftotext pdftoppm pdfinfo > /dev/null") == 0;
}

std::string pdfText(const std::filesystem::path& file) {
    return outputOf("pdftotext -layout '" + file.string() + "' -");
}

std::string pdfWrittenText(const std::filesystem::path& file) {
    return outputOf("pdftotext -raw '" + file.string() + "' -");
}

QImage pdfPage(const std::filesystem::path& file, int page, int resolution) {
    const TemporaryFolder folder;
    const std::string number = std::to_string(page), place = (folder.path() / "page").string();
    outputOf("pdftoppm -png -singlefile -f " + number + " -r " + std::to_string(resolution) + " '" + file.string() +
             "' '" + place + "'");
    return QImage(QString::fromStdString(place + ".png"));
}

int pdfPageCount(const std::filesystem::path& file) {
    const std::string facts = outputOf("pdfinfo '" + file.string() + "'");
    const std::size_t at = facts.find("Pages:");
    return at == std::string::npos ? 0 : std::atoi(facts.c_str() + at + 6);
}

} // namespace tests
