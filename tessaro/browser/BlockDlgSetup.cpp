#include "tessaro/browser/Administrators.h"
#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/browser/DrawingScale.h"
#include "tessaro/browser/HostRelease.h"
#include "tessaro/browser/preview/Preview.h"
#include "tessaro/host/Log.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/reading/Loader.h"

#include "editor/sdk/editor.h"

#include <QHeaderView>

#include <array>

void SetupDlg(BlockDlg& dlg) {
    Log(L"SetupDlg\n");
    setupEvent.Wait();
    theBlockDlg = &dlg;
    AcColorSettings colours;
    acedGetCurrentColors(&colours);
    SetBackground(colours.dwGfxModelBkColor);
    dlg.ApplyColumnWidths();
    if (overlayXRef != 0)
        SetCaption(*dlg.controls->xref, L"XRef/O");
    Log(L"Grab scale from userr4\n");
    AddSorted(*dlg.controls->scale, DrawingScaleText());
    Log(L"Check TESSAROAdmin\n");
    dlg.CheckAdministrator();
    Log(L"Begin Thread for LoadDir\n");
    StartLoader();
    Log(L"ValidateDirs\n");
    ValidateDirs();
    Log(L"SetupDlg return\n");
}

void BlockDlg::ReadHostRelease() {
    resbuf value;
    if (acedGetVar(L"acadver", &value) != RTNORM || value.restype != RTSTR || value.resval.rstring == nullptr)
        return;
    const std::wstring release = value.resval.rstring;
    free(value.resval.rstring);
    maxFileType = MaxFileType(release, maxFileType);
}

void BlockDlg::InsertColumns() {
    ListModel& directoryRows = controls->directoryList->Rows();
    directoryRows.InsertColumn(L"Library");
    directoryRows.InsertColumn(L"Count", Qt::AlignRight);
    directoryRows.InsertColumn(L"Status", Qt::AlignRight);
    ListModel& blockRows = controls->blockList->Rows();
    for (const wchar_t* heading : {L"Block", L"Rel", L"Comments", L"Size", L"Created", L"Modified"})
        blockRows.InsertColumn(heading);
    constexpr std::array directoryWidths{80, 40, 20};
    constexpr std::array blockWidths{140, 45, 140, 60, 105, 105};
    for (int column = 0; column < static_cast<int>(directoryWidths.size()); ++column)
        controls->directoryList->Header()->resizeSection(column, directoryWidths[static_cast<std::size_t>(column)]);
    for (int column = 0; column < static_cast<int>(blockWidths.size()); ++column)
        controls->blockList->Header()->resizeSection(column, blockWidths[static_cast<std::size_t>(column)]);
}

void BlockDlg::ApplyColumnWidths() {
    for (int column = 0; column < static_cast<int>(columnWidths.size()); ++column)
        controls->blockList->Header()->resizeSection(column, columnWidths[static_cast<std::size_t>(column)]);
    for (int column = 0; column < static_cast<int>(dirColumnWidths.size()); ++column)
        controls->directoryList->Header()->resizeSection(column, dirColumnWidths[static_cast<std::size_t>(column)]);
}

void BlockDlg::CheckAdministrator() {
    std::array<wchar_t, 512> path{};
    if (acedFindFile(L"tessaroadmin.ini", path.data(), path.size()) != RTNORM)
        path[0] = L'\0';
    if (IsAdministrator(path.data(), platform::UserName()))
        return;
    for (QWidget* control : std::initializer_list<QWidget*>{controls->preferences, controls->scheme, controls->schemes,
                                                            controls->add, controls->remove, controls->moveUp,
                                                            controls->moveDown, controls->editDescription})
        control->setEnabled(false);
}

bool BlockDlg::MayChangeCatalogue() const {
    return controls->preferences->isEnabled();
}
