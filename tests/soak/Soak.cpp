#include "tests/soak/Soak.h"

#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/reading/Loader.h"
#include "tessaro/reading/LoaderThreads.h"
#include "tests/soak/Invariants.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <array>
#include <memory>
#include <mutex>
#include <utility>

namespace {

constexpr unsigned kMostPerOpening = 60;

bool WorkerIsIdle() {
    const std::unique_lock queue(loader.cs, std::try_to_lock);
    return queue.owns_lock() && loader.loadQueue.empty() && loader.pause == 0 && loaderThreads.deletes == 0;
}

std::unique_ptr<MapScheme> MakeScheme() {
    auto scheme = std::make_unique<MapScheme>();
    scheme->maps.SetAt(L"*", L"SOAK");
    return scheme;
}

} // namespace

platform::MessageAnswer SoakAnswers::MessageBox(const std::wstring& text, const std::wstring&,
                                                platform::MessageButtons buttons, platform::MessageIcon) {
    if (buttons == platform::MessageButtons::YesNo)
        return platform::MessageAnswer::Yes;
    // What a user is told who picks a drawing that is damaged or has just gone.
    constexpr std::array<std::wstring_view, 5> expected{
        L"File no longer exists.", L"Could not write to file.\nDescription not saved.", L"Done Printing",
        L"The directory is not done loading. Please try again later.", L"This file cannot be xrefed"};
    if (std::ranges::find(expected, text) == expected.end())
        complaints.push_back(text);
    return platform::MessageAnswer::Ok;
}

std::optional<std::wstring> SoakAnswers::PickFolder(const std::wstring&, const std::wstring&) {
    return pick();
}

Soak* Soak::running = nullptr;

Soak::Soak(Plan wanted, Watchdog& dog, editor::Editor& editor)
    : plan(wanted), watchdog(dog), random(wanted.seed), library(wanted.folders, wanted.seed, wanted.wholeProduct),
      left(wanted.operations) {
    moduleFolder = LocalPath = platform::ExecutablePath().substr(0, platform::ExecutablePath().rfind(L'/'));
    versionText = L"soak";
    iniPath = library.Path("tessaro35.ini");
    cachePath = library.Path("tessaro35.cache");
    columnWidths = {140, 35, 150, 60, 105, 105};
    dirColumnWidths = {80, 40, 20};
    setupEvent.SetEvent();
    SetUsualLoaderWaits({std::chrono::milliseconds(2), std::chrono::milliseconds(1)});
    answers.pick = [this] { return library.AddFolder(); };
    for (const std::wstring& folder : library.Folders())
        AddToCatalogue(folder);
    if (!plan.wholeProduct)
        return;
    product.emplace(editor, random, library.Path("."));
    running = this;
    editor.commands().addCommand(L"SOAK", L"TESSARO", L"TESSARO", ACRX_CMD_MODAL,
                                 [] { running->Open([](BlockDlg& dialog) { running->UseOpening(dialog); }); });
    SetScheme(L"All on one", MakeScheme().release());
}

Soak::~Soak() {
    if (product)
        editor::Editor::instance()->commands().removeGroup(L"SOAK");
    product.reset();
    WaitForLastClose();
    DeleteSchemes();
    currentDirectory = nullptr;
    for (const Directory* directory : directories)
        delete directory;
    directories.clear();
    platform::SetUserInterface(nullptr);
}

void Soak::AddToCatalogue(const std::wstring& folder) {
    auto* const directory = new Directory;
    directory->path = folder;
    directory->description = platform::SplitPath(folder).name;
    directory->cacheFile = CacheFileName(NextCacheNumber());
    directories.push_back(directory);
}

void Soak::Open(const std::function<void(BlockDlg&)>& script) {
    watchdog.Beat("opening");
    BlockDlg dialog;
    platform::SetUserInterface(&answers);
    QTimer::singleShot(0, &dialog, [&] {
        script(dialog);
        watchdog.Beat("closing");
        if (closeArmed)
            dialog.reject();
    });
    dialog.DoModal();
    watchdog.Beat("closed");
    ++done["openings"];
}

void Soak::Use() {
    while (left > 0 && broken.empty()) {
        readDirEveryTime = Chance(50) ? 1 : 0;
        onlyCacheCurrent = Chance(30) && !plan.keepsPictures ? 1 : 0;
        delCacheMemoryOnClose = Chance(30) && !plan.keepsPictures ? 1 : 0;
        if (plan.wholeProduct)
            UseProduct();
        else
            Open([this](BlockDlg& dialog) { UseOpening(dialog); });
    }
    if (product)
        done.merge(product->done);
}

void Soak::UseProduct() {
    watchdog.Beat("using the editor");
    for (unsigned more = random() % 4; more > 0; --more)
        product->UseEditor();
    const int deletes = done["deletes"];
    // With all that the opening starts: the placement and its picks, and further openings.
    editor::Editor::instance()->execute(L"TESSARO\n");
    WaitForLastClose();
    Watch(BrokenWhenIdle(done["deletes"] == deletes));
    Watch(product->CheckSavedDrawing());
}

void Soak::Watch(std::string wrong) {
    if (broken.empty())
        broken = std::move(wrong);
}

void Soak::UseOpening(BlockDlg& dialog) {
    deletesBefore = done["deletes"];
    if (Chance(50)) {
        // One click into the passes that an opening begins with, which no later one makes good.
        for (unsigned more = random() % 40; more > 0; --more)
            ServeEvents("using");
        Click(dialog);
        Rest(dialog);
    }
    for (unsigned more = random() % kMostPerOpening; left > 0 && more > 0 && broken.empty(); --more, --left) {
        if (product && Chance(25)) {
            if (product->UseDialog(dialog))
                return;
        } else {
            Operate(dialog);
        }
        ServeEvents("using");
        Watch(BrokenInDialog(dialog));
    }
    if (broken.empty() && Chance(20))
        Rest(dialog);
}

void Soak::Operate(BlockDlg& dialog) {
    const unsigned choice = random() % 100;
    if (choice < 45) {
        Click(dialog);
    } else if (choice < 55) {
        library.ChangeSomething(!plan.keepsPictures);
        ++done["changes on disk"];
    } else if (choice < 62) {
        dialog.Controls().add->click();
        ++done["adds"];
    } else if (choice < 69) {
        Delete(dialog);
    } else if (choice < 79) {
        Reload();
    } else if (choice < 85) {
        (Chance(50) ? dialog.Controls().moveUp : dialog.Controls().moveDown)->click();
        ++done["moves"];
    } else if (choice < 91) {
        dialog.SetView(static_cast<int>(random() % 4));
        ++done["views"];
    } else if (choice < 97) {
        dialog.SortBlocks(static_cast<int>(random() % 6));
        ++done["sorts"];
    } else if (choice < 98) {
        RequeueCurrentDirectory();
        ++done["drawings closed"];
    } else {
        Rest(dialog);
    }
}

void Soak::Click(BlockDlg& dialog) {
    const int rows = dialog.DirectoryRowCount();
    if (rows == 0)
        return;
    for (unsigned clicks = 1 + (Chance(20) ? random() % 5 : 0); clicks > 0; --clicks)
        dialog.SelectDirectoryRow(static_cast<int>(random() % static_cast<unsigned>(rows)));
    ++done["clicks"];
}

void Soak::Delete(BlockDlg& dialog) {
    // One delete at a time, as a person answers its question, and some folders stay.
    if (static_cast<int>(directories.size()) < plan.folders / 2 + 1 || loaderThreads.deletes != 0)
        return;
    dialog.Controls().remove->click();
    ++done["deletes"];
}

void Soak::Reload() {
    // The menu offers it for a directory that is read. While it is waited for, a delete may take it away.
    constexpr int patience = 300;
    const auto isRead = [] {
        const Directory* const current = currentDirectory;
        return current != nullptr && current->loaded;
    };
    for (int step = 0; step < patience && currentDirectory != nullptr && !isRead(); ++step)
        ServeEvents("waiting for a directory");
    if (!isRead())
        return;
    ReloadDirectory(currentDirectory);
    ++done["reloads"];
}

void Soak::ServeEvents(const char* doing) {
    watchdog.Beat(doing);
    switch (random() % 4) {
    case 0:
        break;
    case 1:
        QCoreApplication::processEvents();
        break;
    default:
        QCoreApplication::processEvents(QEventLoop::AllEvents, static_cast<int>(random() % 3));
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 500));
    }
}

void Soak::Rest(BlockDlg& dialog) {
    const auto brokenAtRest = [&] {
        watchdog.Beat("coming to rest");
        while (!WorkerIsIdle())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        return BrokenAtRest(dialog);
    };
    ++done["rests"];
    if (brokenAtRest().empty())
        return;
    // A delete empties the list of the neighbour too, if the worker was faster.
    const bool emptied = dialog.BlockRowCount() == 0 && done["deletes"] != deletesBefore;
    if (Directory* const current = currentDirectory)
        QueueFirst(current);
    Watch(brokenAtRest());
    if (!emptied)
        ++done["lost clicks"];
}

void Soak::WaitForAll() {
    std::size_t unread = directories.size() + 1;
    for (;;) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        std::size_t now = 0;
        Directory* first = nullptr;
        for (Directory* directory : directories)
            if (!directory->loaded) {
                ++now;
                if (first == nullptr)
                    first = directory;
            }
        if (now < unread)
            watchdog.Beat("reading");
        unread = now;
        if (unread == 0 && WorkerIsIdle())
            return;
        // Put first in the moment behind another's pass, it went in that one's place.
        if (unread > 0 && WorkerIsIdle())
            QueueFirst(first);
    }
}

void Soak::ReadAll() {
    readDirEveryTime = 1;
    onlyCacheCurrent = 0;
    delCacheMemoryOnClose = 0;
    Open([this](BlockDlg&) { WaitForAll(); });
    WaitForLastClose();
}

void Soak::ReadAnew() {
    std::vector<std::wstring> folders;
    for (const Directory* directory : directories) {
        folders.push_back(directory->path);
        platform::RemoveFile(directory->cacheFile);
        delete directory;
    }
    directories.clear();
    currentDirectory = nullptr;
    for (const std::wstring& folder : folders)
        AddToCatalogue(folder);
    ReadAll();
}
