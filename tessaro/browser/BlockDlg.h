#pragma once

#include "tessaro/host/BrowserWindow.h"

#include <QDialog>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

class QuickPic;
struct BlockDlgControls;

/// What a placement button stores, to be carried out when the window is gone. The result is not looked at.
using PlacementAction = int (*)(Block*);

/// Set when a dialog is initialised, cleared by its first close request.
extern std::atomic<bool> closeArmed;

/// The browser window: the catalogue's directories, the blocks of the current one, and the settings that a block is
/// placed with. Made anew for each opening; what survives lies in the module state and in the Directories.
///
/// Placing happens with the window gone: a button notes its action, asks for the close, and the action runs at the end
/// of DoModal. Main thread only; other threads come through platform::CallOnMainThread. While the window is up, the
/// main thread's event loop serves these calls.
class BlockDlg : public QDialog, public BrowserWindow {
public:
    /// The owner is the host's main window.
    explicit BlockDlg(QWidget* owner = nullptr);
    ~BlockDlg() override;

    /// Whether a browser's window is there, also one that is closing.
    static bool IsUp();

    /// Runs the dialog and, after its window is destroyed, the chosen placement.
    int DoModal();

    PlacementAction placementCallback = nullptr; ///< null when nothing is to be done
    Block* placementBlock = nullptr;
    int maxFileType = 21; ///< highest Block::fileType that the host reads
    std::atomic<bool> closing{false};

    /// Sorts by a column 0 to 5, or with -1 in the present order.
    void SortBlocks(int column);
    /// Looks from the top of the list, then through the other directories. False where nothing was found.
    bool QuickFind(bool searchCurrent);
    void QuickFindNext();
    /// What the list's row shows and allows is brought into the pane and the buttons.
    void OnBlockSelected(int row);
    /// The row of the block list that is selected, or -1.
    int SelectedBlockRow() const;
    /// No administrator list, or the user is on it. The state of the button "Preferences" is the record of the answer.
    bool MayChangeCatalogue() const;
    BlockDlgControls& Controls() { return *controls; }

    // BrowserWindow
    bool Exists() const override { return windowExists; }
    void EmptyBlockList() override;
    int BlockRowCount() const override;
    int InsertBlockRow(const std::wstring& text) override;
    void SetBlockRow(int row, const std::wstring& name, int image, Block* block) override;
    void SetBlockCell(int row, int column, const std::wstring& text) override;
    void SetBlockImage(int row, int image) override;
    int FindBlockRow(const Block* block) const override;
    void UpdateBlockRow(int row) override;
    void ArrangeBlocks() override;
    void SetBlockImages(const ImageList* large, const ImageList* small) override;
    void ClearBlockViewBits() override;
    void ShowCurtain(bool curtain) override;
    int DirectoryRowCount() const override;
    int InsertDirectoryRow(const std::wstring& text, Directory* directory) override;
    void DeleteDirectoryRow(int row) override;
    void SetDirectoryCell(int row, int column, const std::wstring& text) override;
    Directory* DirectoryAt(int row) const override;
    void SetDirectoryAt(int row, Directory* directory) override;
    void SelectDirectoryRow(int row) override;
    void AddScheme(const std::wstring& name) override;
    void StoreDlgState() override;
    void FillBlockControls(bool settings) override;
    void SetView(int view) override;
    std::array<int, 6> BlockColumnWidths() const override;
    std::array<int, 3> DirectoryColumnWidths() const override;
    void PostCommand(int id) override;

    /// Escape and the window's close box.
    void reject() override;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void CreateControls();
    void ConnectControls();
    void ConnectLists();
    void ConnectQuickPic();
    void OnInitDialog();
    void DestroyWindow();
    void OnCommand(int id);
    void OnCancel();

    void ReadHostRelease();
    void InsertColumns();
    void ApplyColumnWidths();
    void AddDrawingScale();
    void CheckAdministrator();
    void EnableDirectoryControls(bool isInternal);
    void ShowSortIndicator();
    void SelectBlockRow(int row);
    bool FindInOtherDirectories(const std::wstring& pattern);
    void ShowFoundDirectory(Directory* directory);

    void OnInsert();
    void OnXref();
    void OnOpen();
    void Place(PlacementAction action);
    void OnAmCatalog();
    void OnViewButton();
    void OnHelp();
    void OpenQuickPic();
    void OnPrint();
    void OnBlockMenu(QPoint place);
    void OnDirectorySelected(int row);
    void OnAdd();
    void OnSchemes();
    void OnDelete();
    void MoveDirectoryUp();
    void MoveDirectoryDown();
    /// Exchanges the current directory with its neighbour that many rows below.
    void MoveDirectory(int step);
    void OnDirectoryRenamed(int row, const std::wstring& text);
    void OnDirectoryMenu(QPoint place);

    /// Carries a handler out; an exception ends here with a message.
    void Handle(const std::function<void()>& handler);

    friend void SetupDlg(BlockDlg& dlg);
    friend void RequestClose(BlockDlg& dlg);

    std::unique_ptr<BlockDlgControls> controls;
    std::unique_ptr<QuickPic> quickPic;     ///< until it reports its end
    std::vector<std::thread> closeRequests; ///< short; joined when the window goes
    bool windowExists = false;
};

/// Prepares a dialog that is being initialised: colours, widths, the drawing's scale, who may change the catalogue, the
/// worker.
void SetupDlg(BlockDlg& dlg);
/// Begins the close and returns at once.
void RequestClose(BlockDlg& dlg);
