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
#include "tessaro/reading/Examinations.h"
#include "tessaro/reading/HopBudget.h"
#include "tessaro/reading/Loader.h"
#include "tessaro/reading/WorkerPriority.h"

#include <list>
#include <utility>
#include <vector>

namespace {

constexpr std::int32_t kStopped = 0;
constexpr std::int32_t kDone = 123;

/// Fewer leave no more memory than the next Directory needs at once.
constexpr int kManyPictures = 1000;

/// One pass of the worker over a Directory. All that touches records or window stands in parts that run on the main
/// thread, one behind the other in the same call until its budget is spent or the worker has something to do; between
/// rows and between Blocks they look at `pause`.
class DirectoryPass {
public:
    explicit DirectoryPass(Directory& read) : directory(read), scan(read), examinations(read) {}

    std::int32_t Run() {
        Start();
        if (!scan.Read())
            return kStopped;
        for (;;) {
            platform::CallOnMainThread([this] {
                const HopBudget budget;
                while (Advance(budget) && !budget.Spent()) {
                }
            });
            switch (part) {
            case Part::Scan:
                scan.Prepare();
                break;
            case Part::Save:
                SaveDirCache(directory);
                part = Part::EndSave;
                break;
            case Part::Done:
                if (muchFreed)
                    platform::ReturnFreedMemory();
                return result;
            case Part::FillRows:
            case Part::EndFill:
            case Part::BeginVerifying:
            case Part::Verify:
                LookAndExamine();
                break;
            default:
                break;
            }
        }
    }

private:
    enum class Part {
        Scan,
        PrepareFill,
        InsertRows,
        FillRows,
        EndFill,
        BeginVerifying,
        Verify,
        End,
        Save,
        EndSave,
        Done
    };

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

    void LookAndExamine() {
        CheckPause();
        SetPriority();
        if (picturesMissing)
            LoadDirCache(directory); // the new pictures join the old ones
        picturesMissing = false;
        examinations.Run();
    }

    /// Goes on with the present part. False where the worker is to look first. Main thread, as all that follows.
    bool Advance(const HopBudget& budget) {
        switch (part) {
        case Part::Scan:
            if (!scan.Apply(budget))
                return false;
            part = Part::PrepareFill;
            return true;
        case Part::PrepareFill:
            part = PrepareFill();
            return true;
        case Part::InsertRows:
            InsertRows(budget);
            return true;
        case Part::FillRows:
            return FillRows(budget);
        case Part::EndFill:
            EndFill();
            part = Part::BeginVerifying;
            return false;
        case Part::BeginVerifying:
            return BeginVerifying();
        case Part::Verify:
            return Verify(budget);
        case Part::End:
            part = BeginSave() ? Part::Save : Part::Done;
            if (part == Part::Done)
                EndPass();
            return false;
        case Part::EndSave:
            EndSave();
            EndPass();
            part = Part::Done;
            return false;
        default:
            return false;
        }
    }

    /// Tells the count; the block list is to be filled where it is shown and empty.
    Part PrepareFill() {
        if (!dialogOpen) {
            result = kStopped;
            return Part::Done;
        }
        SetDirectoryCell(directory, kCountColumn, platform::Format(L"%ld", static_cast<long>(directory.blocks.size())));
        SetDirectoryCell(directory, dirStateColumn, L"L");
        BrowserWindow* const window = theBlockDlg;
        // Rows are there only where the Directory became the shown one after the start.
        if (window == nullptr || !Shown() || window->BlockRowCount() != 0)
            return Part::BeginVerifying;
        window->ShowCurtain(true);
        window->ClearBlockViewBits();
        TakeBlockRows(directory);
        return Part::InsertRows;
    }

    void InsertRows(const HopBudget& budget) {
        const std::wstring reserved = L"12345678";
        BrowserWindow* const window = theBlockDlg;
        // A delete may have emptied the list, and freed it of its Directory, since the call before.
        TakeBlockRows(directory);
        while (window != nullptr && rows.size() < directory.blocks.size()) {
            rows.push_back(window->InsertBlockRow(reserved));
            if (budget.Spent())
                return;
        }
        if (window != nullptr)
            window->ArrangeBlocks();
        nextRow = rows.begin();
        place = directory.blocks.begin();
        part = nextRow == rows.end() ? Part::EndFill : Part::FillRows;
    }

    bool FillRows(const HopBudget& budget) {
        if (!Shown()) {
            part = Part::EndFill;
            return true;
        }
        TakeBlockRows(directory);
        while (loader.pause < 1 && Shown() && !budget.Spent()) {
            if (BrowserWindow* const window = theBlockDlg)
                FillRow(*window, *nextRow, **place);
            ++place;
            if (++nextRow == rows.end()) {
                part = Part::EndFill;
                return false; // the worker looks behind each row
            }
        }
        return false;
    }

    static void FillRow(BrowserWindow& window, int row, Block& block) {
        block.listIndex = row;
        window.SetBlockRow(row, block.name, block.imageIndex, &block);
        window.SetBlockCell(row, kDescriptionColumn, block.description);
        SetFileCells(window, row, block);
    }

    static void EndFill() {
        BrowserWindow* const window = theBlockDlg;
        if (!dialogOpen || window == nullptr)
            return;
        window->FillBlockControls(false);
        window->ShowCurtain(false);
    }

    bool BeginVerifying() {
        if (loader.pause >= 1)
            return false;
        const bool loaded = directory.loaded;
        SetDirectoryCell(directory, dirStateColumn, loaded ? L"" : L"V");
        place = directory.blocks.begin();
        part = loaded ? Part::Done : Part::Verify;
        return true;
    }

    /// Takes over what was examined, and compares the next Blocks with their files.
    bool Verify(const HopBudget& budget) {
        picturesMissing = !examinations.Apply();
        if (loader.pause >= 1 || !examinations.Empty())
            return false;
        while (place != directory.blocks.end() && !examinations.Full()) {
            Block& block = **place;
            ++place;
            Compare(block);
            if (loader.pause >= 1 || budget.Spent())
                return false;
        }
        if (!examinations.Empty())
            return false;
        part = Part::End;
        return true;
    }

    void Compare(Block& block) {
        if (directory.isInternal || block.checked)
            return;
        if (block.cached && block.cachedStatus == block.status) {
            block.checked = true;
            return;
        }
        if (Shown())
            ShowFileCells(block);
        else
            picturesMissing = picturesMissing || !directory.imagesLoaded;
        examinations.Add(block);
    }

    void ShowFileCells(const Block& block) const {
        BrowserWindow* const window = theBlockDlg;
        if (window == nullptr)
            return;
        const int shownIn = window->FindBlockRow(&block);
        if (shownIn >= 0)
            SetFileCells(*window, shownIn, block);
    }

    /// True where the pictures go to their file and out of memory.
    bool BeginSave() const {
        if (Shown() || !directory.dirty || !BeginSaving(&directory))
            return false;
        SetDirectoryCell(directory, dirStateColumn, L"S");
        return true;
    }

    void EndSave() {
        EndSaving();
        muchFreed = directory.smallImages->Count() >= kManyPictures;
        directory.dirty = false;
        // It may have become the shown one meanwhile, whose pictures nobody would read again.
        if (!Shown())
            FreeImages(directory);
    }

    void EndPass() const {
        directory.loaded = true;
        SetDirectoryCell(directory, dirStateColumn, L"");
    }

    Directory& directory;
    DirectoryScan scan;
    Examinations examinations;
    bool picturesMissing = false; ///< and they are needed: the Directory is not shown
    bool muchFreed = false;
    Part part = Part::Scan;
    std::int32_t result = kDone;
    std::vector<int> rows; ///< one a Block, in their order
    std::vector<int>::iterator nextRow;
    std::list<Block*>::iterator place; ///< the next Block to fill or to verify
};

} // namespace

std::int32_t LoadDir(Directory* directory) {
    const std::int32_t result = DirectoryPass(*directory).Run();
    // The last look stands behind the search, the save of the pictures and the wait for the main thread, which may all
    // take long: a Directory that was put first meanwhile would else be taken out of the queue in this one's place.
    CheckPause();
    return result;
}
