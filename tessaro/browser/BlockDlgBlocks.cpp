// The block list: what its rows show and allow, its view, its menu, and the buttons that place a block.
#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/browser/QtText.h"
#include "tessaro/browser/SortBlocks.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Loader.h"

#include "editor/sdk/editor.h"

#include <QHeaderView>
#include <QMenu>

#include <array>

namespace {

constexpr int kFirstWithDescription = 14; ///< "R13"

std::wstring PropertiesText(const Block& block) {
    return L"Block: " + block.name + L"\nDesc: " + block.description + L"\nFile Type: " + FileTypeName(block.fileType) +
           platform::Format(L"\nSize: %ld", static_cast<long>(block.status.m_size)) + L"\nCreated: " +
           platform::FormatTime(block.created, L"%x, %X") + L"\nModified: " +
           platform::FormatTime(block.modified, L"%x, %X");
}

unsigned char ReadSwitch(const wchar_t* name) {
    resbuf value;
    return acedGetVar(name, &value) == RTNORM ? static_cast<unsigned char>(value.resval.rint) : 0;
}

void ClearSwitch(const wchar_t* name) {
    resbuf value;
    value.restype = RTSHORT;
    value.resval.rint = 0;
    acedSetVar(name, &value);
}

int PlaceNothing(Block*) {
    return 1;
}

/// Entries of a submenu with a check at one of them; the action takes the entry's value.
void AddChoices(QMenu& menu, const std::vector<std::pair<const char*, int>>& entries, int checked,
                const std::function<void(int)>& action) {
    for (const auto& [name, value] : entries) {
        QAction* entry = menu.addAction(QString::fromLatin1(name), [action, chosen = value] { action(chosen); });
        entry->setCheckable(true);
        entry->setChecked(value == checked);
    }
}

} // namespace

int BlockDlg::SelectedBlockRow() const {
    return controls->blockList->SelectedRow();
}

void BlockDlg::SelectBlockRow(int row) {
    controls->blockList->SelectRow(row);
}

void BlockDlg::SetView(int view) {
    controls->blockList->SetViewBits(view);
    controls->blockList->Arrange();
    SortBlocks(-1);
    controls->viewButton->view = view;
    controls->viewButton->repaint();
}

void BlockDlg::OnViewButton() {
    const Directory* const directory = currentDirectory;
    if (directory == nullptr)
        return;
    int view = (controls->viewButton->view + 1) & 3;
    if (view == 0 && !directory->useLargeImages)
        view = 1;
    SetView(view);
}

void BlockDlg::OnBlockSelected(int row) {
    const auto* const block = static_cast<const Block*>(controls->blockList->Rows().Data(row));
    const Directory* const directory = currentDirectory;
    if (block == nullptr || directory == nullptr)
        return;
    if (!directory->isInternal) {
        const bool readable = block->fileType <= maxFileType;
        controls->insert->setEnabled(readable);
        controls->xref->setEnabled(readable);
        controls->open->setEnabled(readable);
        controls->editDescription->setEnabled(block->fileType >= kFirstWithDescription && MayChangeCatalogue());
    }
    controls->properties->setText(ToQt(PropertiesText(*block)));
}

void BlockDlg::OnInsert() {
    Place(InsertBlockWithRelaunch);
}

void BlockDlg::OnXref() {
    Place(XrefBlock);
}

void BlockDlg::OnOpen() {
    Place(OpenBlock);
}

void BlockDlg::Place(PlacementAction action) {
    auto* const block = static_cast<Block*>(controls->blockList->Rows().Data(SelectedBlockRow()));
    if (block == nullptr)
        return;
    placementBlock = block;
    placementCallback = action;
    StoreDlgState();
    RequestClose(*this);
}

void BlockDlg::OnAmCatalog() {
    if (controls->blockList->Rows().Data(SelectedBlockRow()) == nullptr)
        return;
    placement.savedCmdDia = ReadSwitch(L"CMDDIA");
    placement.savedFileDia = ReadSwitch(L"FILEDIA");
    ClearSwitch(L"CMDDIA");
    ClearSwitch(L"FILEDIA");
    Place(PlaceNothing);
}

void BlockDlg::OnBlockMenu(QPoint place) {
    Directory* const directory = currentDirectory;
    if (directory == nullptr)
        return;
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("blockMenu"));
    const auto run = [this](void (BlockDlg::*handler)()) {
        return [this, handler] { Handle([&] { (this->*handler)(); }); };
    };
    const int row = SelectedBlockRow();
    if (row >= 0) {
        const QString name = CaptionText(controls->blockList->Rows().Text(row, 0));
        if (controls->insert->isEnabled())
            menu.addAction(QStringLiteral("Insert ") + name, run(&BlockDlg::OnInsert));
        if (controls->xref->isEnabled())
            menu.addAction(QStringLiteral("XRef ") + name, run(&BlockDlg::OnXref));
        if (controls->open->isEnabled())
            menu.addAction(QStringLiteral("Open ") + name, run(&BlockDlg::OnOpen));
        if (controls->amCatalog->isVisible())
            menu.addAction(QStringLiteral("AmCatalog ") + name, run(&BlockDlg::OnAmCatalog));
        menu.addSeparator();
    }
    if (controls->editDescription->isEnabled()) {
        menu.addAction(QStringLiteral("Edit Description"), controls->editDescription, &QAbstractButton::click);
        menu.addSeparator();
    }
    // Entry n sorts by column n, while its check reads the key n + 1: the two dates are crossed, and stay so.
    QMenu* const sort = menu.addMenu(QStringLiteral("Sort"));
    AddChoices(*sort,
               {{"Filename", 0},
                {"File Type", 1},
                {"Description", 2},
                {"Size", 3},
                {"Last Modified Time", 4},
                {"Creation Time", 5}},
               directory->sortStyle % kSortKeys - 1,
               [this](int column) { Handle([this, column] { SortBlocks(column); }); });
    std::vector<std::pair<const char*, int>> views{{"Small", 1}, {"List", 2}, {"Report", 3}};
    if (directory->useLargeImages)
        views.insert(views.begin(), {"Large", 0});
    QMenu* const view = menu.addMenu(QStringLiteral("View"));
    AddChoices(*view, views, controls->viewButton->view,
               [this](int chosen) { Handle([this, chosen] { SetView(chosen); }); });
    menu.addSeparator();
    if (!directory->isInternal) {
        QAction* refresh = menu.addAction(QStringLiteral("Refresh Directory"), [this] {
            Handle([] {
                if (Directory* const current = currentDirectory)
                    ReloadDirectory(current);
            });
        });
        refresh->setEnabled(directory->loaded);
    }
    menu.exec(controls->blockList->viewport()->mapToGlobal(place));
}

void BlockDlg::ConnectLists() {
    const auto onSelection = [this](ListView* list, void (BlockDlg::*handler)(int)) {
        connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this, list, handler] {
            const int row = list->SelectedRow();
            if (row >= 0)
                Handle([&] { (this->*handler)(row); });
        });
    };
    const auto onMenu = [this](ListView* list, void (BlockDlg::*handler)(QPoint)) {
        list->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(list, &QWidget::customContextMenuRequested, this,
                [this, handler](QPoint place) { Handle([&] { (this->*handler)(place); }); });
    };
    MyList* const blocks = controls->blockList;
    onSelection(blocks, &BlockDlg::OnBlockSelected);
    onMenu(blocks, &BlockDlg::OnBlockMenu);
    connect(blocks, &QAbstractItemView::doubleClicked, this, [this] {
        if (controls->insert->isEnabled())
            Handle([this] { OnInsert(); });
    });
    connect(blocks->Header(), &QHeaderView::sectionClicked, this,
            [this](int column) { Handle([this, column] { SortBlocks(column); }); });

    MyList2* const list = controls->directoryList;
    onSelection(list, &BlockDlg::OnDirectorySelected);
    onMenu(list, &BlockDlg::OnDirectoryMenu);
    list->Rows().mayEdit = [this](int row) {
        const Directory* const directory = DirectoryAt(row);
        return directory != nullptr && !directory->isInternal;
    };
    list->Rows().edited = [this](int row, const std::wstring& text) { Handle([&] { OnDirectoryRenamed(row, text); }); };
}
