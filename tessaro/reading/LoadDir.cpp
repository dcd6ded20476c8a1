#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/ShownImages.h"
#include "tessaro/host/BrowserWindow.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Memory.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/BlockRows.h"
#include "tessaro/reading/DirectoryScan.h"
#include "tessaro/reading/DirectoryUsers.h"
#include "tessaro/reading/ExamineBlock.h"
#include "tessaro/reading/HopBudget.h"
#include "tessaro/reading/Loader.h"
#include "tessaro/reading/WorkerPriority.h"

#include <list>
#include <utility>
#include <vector>

namespace {

constexpr std::int32_t kStopped = 0;
constexpr std::int32_t kDone = 123;

/// One pass of the worker over a Directory. All that touches records or window stands inside calls on the main thread,
/// each of them short; between rows it looks at `pause`.
class DirectoryPass {
public:
    explicit DirectoryPass(Directory& read) : directory(read) {}

    std::int32_t Run() {
        Start();
        if (!ScanDirectory(directory) || !dialogOpen)
            return kStopped;
        if (PrepareFill()) {
            InsertRows();
            FillRows();
            EndFill();
        }
        Verify();
        return kDone;
    }

private:
    bool Shown() const { return IsShown(directory); }

    void SetPriority() const { SetWorkerPriority(Shown() ? WorkerPriority::Normal : WorkerPriority::Lowest); }

    void Start() const {
        if (Shown())
            platform::CallOnMainThread([this] {
                BrowserWindow* const window = theBlockDlg;
                if (window == nullptr || !Shown())
                    return;
                EmptyBlockRows(*window);
                AttachImages(*window, &directory);
            });
        else
            SetWorkerPriority(WorkerPriority::Lowest);
        CheckPause();
        if (Shown())
            SetWorkerPriority(WorkerPriority::Normal);
    }

    /// Tells the count; true where the block list is to be filled.
    bool PrepareFill() const {
        bool fill = false;
        platform::CallOnMainThread([&] {
            SetDirectoryCell(directory, kCountColumn,
                             platform::Format(L"%ld", static_cast<long>(directory.blocks.size())));
            SetDirectoryCell(directory, dirStateColumn, L"L");
            BrowserWindow* const window = theBlockDlg;
            // Rows are there only where the Directory became the shown one after the start.
            fill = window != nullptr && Shown() && window->BlockRowCount() == 0;
            if (!fill)
                return;
            window->ShowCurtain(true);
            window->ClearBlockViewBits();
            TakeBlockRows(directory);
        });
        return fill;
    }

    void InsertRows() {
        const std::wstring reserved = L"12345678";
        bool done = false;
        while (!done)
            platform::CallOnMainThread([&] {
                BrowserWindow* const window = theBlockDlg;
                const HopBudget budget;
                // A delete may have emptied the list, and freed it of its Directory, since the call before.
                TakeBlockRows(directory);
                while (window != nullptr && rows.size() < directory.blocks.size()) {
                    rows.push_back(window->InsertBlockRow(reserved));
                    if (budget.Spent())
                        return;
                }
                if (window != nullptr)
                    window->ArrangeBlocks();
                done = true;
            });
    }

    void FillRows() {
        auto row = rows.begin();
        std::list<Block*>::iterator place;
        platform::CallOnMainThread([&] { place = directory.blocks.begin(); });
        while (row != rows.end()) {
            platform::CallOnMainThread([&] {
                BrowserWindow* const window = theBlockDlg;
                const HopBudget budget;
                TakeBlockRows(directory);
                do {
                    if (window != nullptr && Shown())
                        FillRow(*window, *row, **place);
                    ++place;
                    ++row;
                } while (row != rows.end() && loader.pause < 1 && Shown() && !budget.Spent());
            });
            CheckPause();
            SetPriority();
            if (!Shown())
                return;
        }
    }

    static void FillRow(BrowserWindow& window, int row, Block& block) {
        block.listIndex = row;
        window.SetBlockRow(row, block.name, block.imageIndex, &block);
        window.SetBlockCell(row, kDescriptionColumn, block.description);
        SetFileCells(window, row, block);
    }

    static void EndFill() {
        if (!dialogOpen)
            return;
        platform::CallOnMainThread([] {
            BrowserWindow* const window = theBlockDlg;
            if (window == nullptr)
                return;
            window->FillBlockControls(false);
            window->ShowCurtain(false);
        });
    }

    void Verify() {
        CheckPause();
        bool loaded = false;
        std::list<Block*>::iterator place;
        platform::CallOnMainThread([&] {
            loaded = directory.loaded;
            SetDirectoryCell(directory, dirStateColumn, loaded ? L"" : L"V");
            place = directory.blocks.begin();
        });
        if (loaded)
            return;
        for (bool more = true; more;) {
            // Also behind a last Block that was examined: a Directory that was put first meanwhile would else be taken
            // out of the queue in this one's place.
            CheckPause();
            SetPriority();
            Changed changed;
            platform::CallOnMainThread([&] { more = CompareBlocks(place, changed); });
            if (changed.picturesMissing)
                LoadDirCache(directory); // the new picture joins the old ones
            if (changed.block != nullptr)
                ExamineBlock(directory, *changed.block);
        }
        if (BeginSave()) {
            SaveDirCache(directory);
            platform::CallOnMainThread([this] { EndSave(); });
            platform::ReturnFreedMemory();
        }
        platform::CallOnMainThread([this] {
            directory.loaded = true;
            SetDirectoryCell(directory, dirStateColumn, L"");
        });
    }

    /// True where the pictures go to their file and out of memory.
    bool BeginSave() const {
        bool save = false;
        platform::CallOnMainThread([&] {
            save = !Shown() && directory.dirty && BeginSaving(&directory);
            if (save)
                SetDirectoryCell(directory, dirStateColumn, L"S");
        });
        return save;
    }

    void EndSave() {
        EndSaving();
        directory.dirty = false;
        // It may have become the shown one meanwhile, whose pictures nobody would read again.
        if (!Shown())
            FreeImages(directory);
    }

    struct Changed {
        Block* block = nullptr;
        bool picturesMissing = false; ///< and they are needed: the Directory is not shown
    };

    /// Compares Blocks with their files from `place` on, up to one that must be examined, which is given in `changed`,
    /// or to an interruption. False where there is no Block left.
    bool CompareBlocks(std::list<Block*>::iterator& place, Changed& changed) const {
        const HopBudget budget;
        while (place != directory.blocks.end()) {
            Block& block = **place;
            ++place;
            if (!directory.isInternal && !block.checked) {
                if (!block.cached || block.cachedStatus != block.status) {
                    if (Shown())
                        ShowFileCells(block);
                    changed = {&block, !Shown() && !directory.imagesLoaded};
                    return true;
                }
                block.checked = block.cached = true;
            }
            if (loader.pause >= 1 || budget.Spent())
                return true;
        }
        return false;
    }

    void ShowFileCells(const Block& block) const {
        BrowserWindow* const window = theBlockDlg;
        if (window == nullptr)
            return;
        const int row = window->FindBlockRow(&block);
        if (row >= 0)
            SetFileCells(*window, row, block);
    }

    Directory& directory;
    std::vector<int> rows; ///< one a Block, in their order
};

} // namespace

std::int32_t LoadDir(Directory* directory) {
    return DirectoryPass(*directory).Run();
}
