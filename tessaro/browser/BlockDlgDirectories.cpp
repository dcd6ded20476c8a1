// The directory list: showing, adding, deleting, moving and renaming.
#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/browser/SmallDialogs.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"
#include "tessaro/reading/DirectoryUsers.h"
#include "tessaro/reading/Loader.h"

#include <QMenu>

#include <algorithm>

void BlockDlg::OnDirectorySelected(int row) {
    Directory* const directory = DirectoryAt(row);
    if (directory == nullptr || directory == currentDirectory)
        return;
    controls->properties->clear();
    ShowDirectory(directory);
}

void BlockDlg::OnAdd() {
    const auto folder = platform::PickFolder(L"Select Directory", browseFolder);
    if (!folder)
        return;
    browseFolder = *folder;
    AddDirectory(*folder);
}

void BlockDlg::OnDelete() {
    const Directory* const directory = DirectoryAt(controls->directoryList->SelectedRow());
    if (directory == nullptr)
        return;
    if (directory->isInternal) {
        platform::MessageBox(L"You may not delete Internal Blocks");
        return;
    }
    const HeldDirectory held(directory);
    const std::wstring question =
        platform::Format(L"Are you sure you wish to delete '%s'?", directory->description.c_str());
    if (platform::MessageBox(question, L"Tessaro", platform::MessageButtons::YesNo, platform::MessageIcon::Question) !=
        platform::MessageAnswer::Yes)
        return;
    // An earlier delete may have moved the rows meanwhile.
    const int row = controls->directoryList->Rows().FindData(directory);
    if (DirectoryRowCount() >= 2)
        SelectDirectoryRow(row > 0 ? row - 1 : row + 1);
    else
        currentDirectory = nullptr;
    StartDeleteDirectory(row);
}

void BlockDlg::MoveDirectoryUp() {
    MoveDirectory(-1);
}

void BlockDlg::MoveDirectoryDown() {
    MoveDirectory(1);
}

void BlockDlg::MoveDirectory(int step) {
    Directory* const moved = currentDirectory;
    if (moved == nullptr)
        return;
    ListModel& rows = controls->directoryList->Rows();
    const int row = rows.FindData(moved);
    const int neighbourRow = row + step;
    Directory* const neighbour = DirectoryAt(neighbourRow);
    if (row < 0 || neighbour == nullptr)
        return;
    rows.DeleteRow(neighbourRow);
    rows.InsertRow(row, neighbour->description, neighbour);
    rows.SetText(row, 1, platform::Format(L"%ld", static_cast<long>(neighbour->blocks.size())));
    std::swap(moved->listIndex, neighbour->listIndex);
    const auto first = std::find(directories.begin(), directories.end(), moved);
    const auto second = std::find(directories.begin(), directories.end(), neighbour);
    if (first != directories.end() && second != directories.end())
        std::iter_swap(first, second);
}

void BlockDlg::OnDirectoryRenamed(int row, const std::wstring& text) {
    Directory* const directory = DirectoryAt(row);
    if (directory == nullptr || directory->isInternal)
        return;
    directory->description = text;
    SetDirectoryCell(row, 0, text);
}

void BlockDlg::OnDirectoryMenu(QPoint place) {
    StoreDlgState();
    const Directory* const directory = currentDirectory;
    if (directory == nullptr)
        return;
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("directoryMenu"));
    menu.addAction(QStringLiteral("Properties"), [this] { Handle([this] { EditDirectory(*this); }); });
    menu.addSeparator();
    QAction* reload = menu.addAction(QStringLiteral("Reload Directory"), [this] {
        Handle([] {
            if (Directory* const current = currentDirectory)
                ReloadDirectory(current);
        });
    });
    reload->setEnabled(directory->loaded && !directory->isInternal);
    menu.exec(controls->directoryList->viewport()->mapToGlobal(place));
}
