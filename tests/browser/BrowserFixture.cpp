#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Loader.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <mutex>

namespace {

constexpr int kPatience = 30'000;
constexpr int kUnanswered = 5'000; ///< between two looks at a message box

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
