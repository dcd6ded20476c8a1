#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Loader.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <mutex>

namespace {

constexpr int kPatience = 30'000;
constexpr int kUnanswered = 5'000; ///< between two looks at a message box

/// Calls again and again until the function has found what it waits for.
void Until(const std::function<bool()>& step) {
    QTimer::singleShot(5, [step] {
        if (!step())
            Until(step);
    });
}

QString Described(const QAction& action, const QString& path) {
    QString text = path + action.text();
    if (action.isSeparator())
        text = QStringLiteral("-");
    if (action.isChecked())
        text += QLatin1Char('*');
    return action.isEnabled() || action.isSeparator() ? text : QLatin1Char('[') + text + QLatin1Char(']');
}

QAction* Visit(QMenu& menu, const QString& path, const QString& entry, QStringList& texts) {
    QAction* found = nullptr;
    for (QAction* action : menu.actions()) {
        texts << Described(*action, path);
        if (path + action->text() == entry)
            found = action;
        if (action->menu() != nullptr)
            if (QAction* inside = Visit(*action->menu(), action->text() + QLatin1Char('/'), entry, texts))
                found = inside;
    }
    return found;
}

} // namespace

Browser::Browser() {
    drawing = host.documents().create().database();
    moduleFolder = LocalPath = platform::FromNarrow(TESSARO_BIN_DIR);
    versionText = L"3.9.10";
    iniPath = (folder.path() / "tessaro35.ini").wstring();
    cachePath = (folder.path() / "tessaro35.cache").wstring();
    browseFolder = folder.path().wstring();
    columnWidths = {140, 35, 150, 60, 105, 105};
    dirColumnWidths = {80, 40, 20};
    setupEvent.SetEvent();
}

Browser::~Browser() {
    WaitForLastClose();
    loader.loadQueue.clear(); // what was left over would be taken up at the next opening
    currentDirectory = nullptr;
    for (Directory* directory : directories)
        delete directory;
    directories.clear();
    for (const auto& [name, scheme] : schemes)
        delete scheme;
    schemes.clear();
    placement = {};
    overlayXRef = 0;
}

Directory* Browser::AddFolder(const std::wstring& description, const std::vector<std::string>& names,
                              const std::string& mark) {
    const auto place = folder.path() / ("library" + std::to_string(directories.size()));
    std::filesystem::create_directories(place);
    for (const std::string& name : names)
        folder.write(place / (name + ".dwg"), mark + std::string(200 + name.size(), '\0'));
    auto* directory = new Directory;
    directory->path = place.wstring();
    directory->description = description;
    directory->cacheFile = (folder.path() / ("path" + std::to_string(directories.size()) + "_35.cache")).wstring();
    directories.push_back(directory);
    return directory;
}

void Browser::Run(const std::function<void(BlockDlg&)>& script) {
    BlockDlg dlg;
    // A box that nothing answers fails the test instead of holding it up.
    QTimer watch;
    QPointer<QMessageBox> standing;
    QObject::connect(&watch, &QTimer::timeout, [&standing] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box != nullptr && box == standing) {
            ADD_FAILURE() << "nobody answered: " << box->text().toStdString();
            box->done(QMessageBox::No);
        }
        standing = box;
    });
    watch.start(kUnanswered);
    QTimer::singleShot(0, &dlg, [&] {
        script(dlg);
        if (closeArmed)
            dlg.reject();
    });
    dlg.DoModal();
    WaitForLastClose();
}

bool Browser::WaitFor(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, kPatience);
}

bool Browser::WaitIdle() {
    return WaitFor([] {
        const std::unique_lock queue(loader.cs, std::try_to_lock);
        return queue.owns_lock() && loader.loadQueue.empty() && loader.pause == 0;
    });
}

MessageAnswer::MessageAnswer(const QString& button) : text(std::make_shared<QString>()) {
    Until([kept = text, button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr)
            return false;
        *kept = box->text();
        for (QAbstractButton* choice : box->buttons())
            if (choice->text().remove(QLatin1Char('&')) == button)
                choice->click();
        return true;
    });
}

MenuAnswer::MenuAnswer(const QString& entry) : texts(std::make_shared<QStringList>()) {
    QTimer::singleShot(0, [kept = texts, entry] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr)
            return;
        QAction* picked = Visit(*menu, {}, entry, *kept);
        menu->close();
        if (picked != nullptr)
            picked->trigger();
    });
}
