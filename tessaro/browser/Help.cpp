#include "tessaro/browser/BlockDlg.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/UserInterface.h"

/// Shows the user's own copy of the help file. The source's name is joined to the module's folder without a separator.
void BlockDlg::OnHelp() {
    const std::wstring source = moduleFolder + L"tessaro.chm";
    const std::wstring house = platform::Join(platform::ApplicationDataFolder(), L"Norvane");
    const std::wstring folder = platform::Join(house, L"help");
    for (const std::wstring& made : {house, folder})
        if (!platform::FolderExists(made))
            platform::CreateFolder(made);
    const auto status = platform::GetFileStatus(source);
    if (!status)
        return;
    const std::wstring copy = platform::Join(folder, L"tessaro.chm");
    const auto present = platform::GetFileStatus(copy);
    if (!present || present->modified != status->modified)
        platform::CopyFile(source, copy);
    platform::ShowHelp(copy);
}
