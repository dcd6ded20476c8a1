#include "tessaro/browser/HelpWindow.h"

#include "tessaro/browser/HelpFile.h"
#include "tessaro/platform/File.h"

#include <QKeyEvent>
#include <QUrl>

#include <algorithm>

namespace {

constexpr std::uint64_t kLargest = 1 << 24; ///< bytes of a help file that is read
constexpr const char* kFirstPage = "/index.html";
constexpr QSize kWindowSize{680, 560};

std::string ReadFile(const std::wstring& path) {
    platform::File file;
    if (!file.Open(path, platform::File::modeRead))
        return {};
    try {
        std::string bytes(static_cast<std::size_t>(std::min(file.Length(), kLargest)), '\0');
        bytes.resize(file.Read(bytes.data(), bytes.size()));
        return bytes;
    } catch (const platform::FileException&) {
        return {};
    }
}

} // namespace

HelpWindow::HelpWindow(QWidget* owner, std::string bytes) : QTextBrowser(owner), file(std::move(bytes)) {
    setObjectName(QStringLiteral("helpWindow"));
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    setWindowTitle(QStringLiteral("Tessaro Help"));
    setAccessibleName(windowTitle());
    setAttribute(Qt::WA_DeleteOnClose);
    setOpenExternalLinks(false);
    document()->setDocumentMargin(12);
    resize(kWindowSize);
}

bool HelpWindow::Show(QWidget* owner, const std::wstring& path) {
    std::string bytes = ReadFile(path);
    if (!HelpPage(bytes, kFirstPage))
        return false;
    auto* window = owner == nullptr ? nullptr : owner->findChild<HelpWindow*>(QStringLiteral("helpWindow"));
    if (window == nullptr)
        window = new HelpWindow(owner, std::move(bytes));
    window->setSource(QUrl(QLatin1String(kFirstPage)), QTextDocument::HtmlResource);
    window->show();
    window->raise();
    window->activateWindow();
    return true;
}

QVariant HelpWindow::loadResource(int, const QUrl& name) {
    // A link between two pages arrives as it is written there.
    const QString path = name.path();
    const auto page = HelpPage(file, (path.startsWith('/') ? path : '/' + path).toStdString());
    return page ? QVariant(QByteArray::fromStdString(*page)) : QVariant();
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QTextBrowser::keyPressEvent(event);
}
