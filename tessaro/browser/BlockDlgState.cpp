// The controls' values and the state of the current directory, both ways.
#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/browser/DrawingScale.h"
#include "tessaro/browser/QtText.h"
#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"

namespace {

constexpr int kOneToOne = 0, kDrawing = 1, kPrompt = 2, kNumber = 3;

} // namespace

void BlockDlg::StoreDlgState() {
    Directory* const directory = currentDirectory;
    if (directory == nullptr || theBlockDlg == nullptr || !Exists())
        return;
    directory->schemeName = FromQt(controls->scheme->currentText());
    directory->explode = controls->explode->isChecked();
    directory->multipleInsert = controls->multipleInsert->isChecked();
    directory->repeat = controls->repeat->isChecked();
    directory->localize = controls->localize->isChecked();

    const std::wstring scale = platform::ToLower(FromQt(controls->scale->currentText()));
    if (scale == L"prompt") {
        directory->scaleMode = kPrompt;
    } else if (scale == L"1:1") {
        directory->scaleMode = kOneToOne;
    } else if (scale == L"drawing") {
        directory->scaleMode = kDrawing;
    } else {
        directory->scaleMode = kNumber;
        SetDrawingScale(platform::ToReal(scale));
    }

    const std::wstring rotation = FromQt(controls->rotation->currentText());
    if (platform::EqualNoCase(rotation, L"Prompt")) {
        directory->rotationMode = 1;
    } else {
        directory->rotationMode = 0;
        directory->rotationAngle = platform::ToReal(rotation);
    }

    directory->topIndex = controls->blockList->TopIndex();
    directory->selectedIndex = SelectedBlockRow();
    directory->viewMode = controls->viewButton->view;
    SaveIfDirty(*directory);
}

void BlockDlg::FillBlockControls(bool settings) {
    Directory* const directory = currentDirectory;
    if (directory == nullptr)
        return;
    if (settings) {
        if (!directory->imagesLoaded)
            LoadDirCache(*directory);
        controls->explode->setChecked(directory->explode);
        controls->multipleInsert->setChecked(directory->multipleInsert);
        controls->repeat->setChecked(directory->repeat);
        controls->localize->setChecked(directory->localize);
        const wchar_t* const words[]{L"1:1", L"Drawing", L"Prompt"};
        const int mode = directory->scaleMode;
        controls->scale->setEditText(
            ToQt(mode >= kOneToOne && mode <= kPrompt ? std::wstring(words[mode]) : DrawingScaleText()));
        controls->rotation->setEditText(
            ToQt(directory->rotationMode == 1 ? L"Prompt" : platform::Format(L"%f", directory->rotationAngle)));
        int scheme = controls->scheme->findText(ToQt(directory->schemeName), Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (scheme < 0) {
            directory->schemeName = L"<None>";
            scheme = controls->scheme->findText(QStringLiteral("<None>"));
        }
        controls->scheme->setCurrentIndex(scheme);
    } else {
        SetView(directory->viewMode);
        SortBlocks(-1);
        SelectBlockRow(directory->selectedIndex);
    }
    EnableDirectoryControls(directory->isInternal);
}

void BlockDlg::EnableDirectoryControls(bool isInternal) {
    controls->open->setEnabled(!isInternal);
    controls->xref->setEnabled(!isInternal);
    controls->editDescription->setEnabled(!isInternal && MayChangeCatalogue());
    controls->scheme->setEnabled(!isInternal && MayChangeCatalogue());
}
