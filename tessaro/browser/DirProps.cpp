#include "tessaro/browser/DirProps.h"

#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/browser/DialogForm.h"
#include "tessaro/browser/ErrorReport.h"
#include "tessaro/browser/QtText.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"
#include "tessaro/reading/Loader.h"
#include "tessaro/reading/WriteDescription.h"

#include <QListWidget>

#include <array>

DirProps* theDirProps = nullptr;

namespace {

constexpr int kRefresh = 1000; ///< milliseconds
constexpr int kLargeView = 0, kReportView = 3;

} // namespace

DirProps::DirProps(BlockDlg& owner) : QDialog(&owner), mainDialog(owner) {
    const DialogForm form(*this, "DirProps", "Tessaro - Directory Properties", {258, 122});
    description = form.Edit("description", "Description", {54, 6, 197, 14});
    form.Label("Description:", {7, 6, 46, 14}, description);
    path = form.Edit("path", "Directory", {54, 24, 143, 14});
    form.Label("Directory:", {7, 24, 46, 14}, path);
    browse = form.Button("Browse", {201, 24, 50, 14});
    blockCounts = new QListWidget(this);
    blockCounts->setObjectName(QStringLiteral("blockCounts"));
    blockCounts->setAccessibleName(QStringLiteral("Blocks by file type"));
    blockCounts->setSelectionMode(QAbstractItemView::NoSelection);
    form.Place(blockCounts, {7, 54, 120, 62});
    form.Label("Blocks:", {7, 42, 60, 11}, blockCounts);
    useCache = form.Box("Cache", {135, 44, 63, 12});
    useCache->setEnabled(false);
    showInsPts = form.Box("Show Ins. Pts.", {135, 59, 63, 12});
    useLargeImages = form.Box("Use Large Images", {135, 74, 116, 12});
    savePending = form.Button("Save LSAs", {201, 42, 50, 14});
    savePending->setEnabled(false);
    reloadBlocks = form.Button("Reload Blocks", {201, 58, 50, 14});
    form.OkAndCancel({147, 101, 50, 14}, {201, 101, 50, 14});

    const auto click = [this](QAbstractButton* button, void (DirProps::*handler)()) {
        connect(button, &QAbstractButton::clicked, this,
                [this, handler] { ReportErrors([&] { (this->*handler)(); }); });
    };
    click(browse, &DirProps::OnBrowse);
    click(savePending, &DirProps::OnSavePending);
    click(reloadBlocks, &DirProps::OnReloadBlocks);
    click(useLargeImages, &DirProps::OnUseLargeImages);

    theDirProps = this;
    FillControls();
    FillBlockCounts();
    startTimer(kRefresh);
}

DirProps::~DirProps() {
    theDirProps = nullptr;
}

void DirProps::FillControls() {
    const Directory* const directory = currentDirectory;
    if (directory == nullptr)
        return;
    description->setText(ToQt(directory->description));
    path->setText(ToQt(directory->path));
    useCache->setChecked(directory->useCache);
    showInsPts->setChecked(directory->showInsPts);
    useLargeImages->setChecked(directory->useLargeImages);
    if (!directory->loaded || directory->isInternal)
        reloadBlocks->setEnabled(false);
    else if (directory->descriptionsPending)
        savePending->setEnabled(true);
    if (directory->isInternal)
        for (QWidget* control : std::initializer_list<QWidget*>{description, path, browse})
            control->setEnabled(false);
}

void DirProps::FillBlockCounts() {
    const Directory* const directory = currentDirectory;
    if (directory == nullptr)
        return;
    std::array<int, kFileTypeCount> counts{};
    for (const Block* block : directory->blocks)
        // A damaged cache may hold any number.
        ++counts[block->fileType >= 0 && block->fileType < kFileTypeCount ? static_cast<std::size_t>(block->fileType)
                                                                          : 0];
    blockCounts->clear();
    for (std::size_t type = 0; type < counts.size(); ++type)
        if (counts[type] != 0)
            blockCounts->addItem(ToQt(platform::Format(L"%s\t%d", FileTypeNames[type].c_str(), counts[type])));
    blockCounts->addItem(QStringLiteral("--------------------"));
    blockCounts->addItem(ToQt(platform::Format(L"Total\t%d", static_cast<int>(directory->blocks.size()))));
}

void DirProps::timerEvent(QTimerEvent*) {
    const Directory* const directory = currentDirectory;
    if (directory == nullptr)
        return;
    const bool ready = directory->loaded && !directory->isInternal;
    reloadBlocks->setEnabled(ready);
    savePending->setEnabled(ready && directory->descriptionsPending);
    FillBlockCounts();
}

bool DirProps::ApplyDirProps() {
    Directory* const directory = currentDirectory;
    if (directory == nullptr)
        return false;
    directory->useLargeImages = useLargeImages->isChecked();
    directory->showInsPts = showInsPts->isChecked();
    directory->useCache = useCache->isChecked();
    directory->description = FromQt(description->text());
    const std::wstring shownDescription = directory->description;
    const int row = directory->listIndex;
    const std::wstring entered = FromQt(path->text());
    const bool moved = entered != directory->path;
    if (moved) {
        directory->path = entered;
        ReloadDirectory(directory);
    }
    mainDialog.SetDirectoryCell(row, 0, shownDescription);
    return moved;
}

void DirProps::accept() {
    ReportErrors([this] { ApplyDirProps(); });
    QDialog::accept();
}

void DirProps::OnBrowse() {
    if (const auto folder = platform::PickFolder(L"Select Directory", FromQt(path->text())))
        path->setText(ToQt(*folder));
}

void DirProps::OnReloadBlocks() {
    reloadBlocks->setEnabled(false);
    if (ApplyDirProps())
        return;
    if (Directory* const directory = currentDirectory)
        ReloadDirectory(directory);
}

void DirProps::OnSavePending() {
    SavePendingDescriptions();
    savePending->setEnabled(false);
}

void DirProps::OnUseLargeImages() {
    if (!useLargeImages->isChecked() && mainDialog.Controls().viewButton->view == kLargeView)
        mainDialog.SetView(kReportView);
}
